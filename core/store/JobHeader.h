#pragma once

#include "core/store/Record.h"

/// The header of a job.
struct JobHeader {
    std::optional<QString> jobID;
    std::optional<QString> jobDscrptn;
    std::optional<QString> engineer;
    std::optional<QString> contractor;
    std::optional<QString> jobInfo;       // free-form notes
    std::optional<QDateTime> dateCreated; // of the last save, despite its name

    bool operator==(const JobHeader&) const = default;

    using Columns = std::span<const Record::Column<JobHeader>>;
    static Columns all();
    /// The columns that the user enters.
    static Columns entries();

    /// Declared maximum lengths of the columns that the user types.
    struct Sizes {
        int jobID;
        int jobDscrptn;
        int engineer;
        int contractor;
    };
};

namespace Records {

/// The job that holds the steel tank conversions. Its header is not shown for editing.
QString reservedJob();

/// Why a job cannot have an ID because one with it exists, as the screens say it.
inline constexpr const char* jobExists = "This job ID all ready exists!\nPlease change the entry";
/// Why a new job cannot have an ID; empty if it can. Throws DatabaseFault.
QString objectionToNewJob(const QString& jobID);

/// The header of a job; nothing if there is none. Throws DatabaseFault.
std::optional<JobHeader> readJobHeader(const QString& jobID);

/// Throws DatabaseFault.
JobHeader::Sizes jobHeaderSizes();

/// Adds the header of a new job; false if a job with this ID exists. Throws DatabaseFault.
bool addJobHeader(const JobHeader& header);
/// The same within the caller's transaction.
bool addJobHeader(const JobHeader& header, const Connection& user);

/// Overwrites a job's header with what the user entered. `asRead` shows whether someone else has changed it
/// in the meantime. Throws RecordGone, RecordChanged and DatabaseFault.
void updateJobHeader(const JobHeader& header, const std::optional<JobHeader>& asRead,
                     Record::IfChanged ifChanged);

/// Adds the reserved job's header if missing. Throws DatabaseFault.
void addReservedJob();

} // namespace Records
