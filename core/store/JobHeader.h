#pragma once

#include "core/store/Record.h"

/// The header of a job.
struct JobHeader {
    std::optional<QString> jobID;
    std::optional<QString> jobDscrptn;
    std::optional<QString> engineer;
    std::optional<QString> contractor;
    std::optional<QString> jobInfo;       // free notes
    std::optional<QDateTime> dateCreated; // of the last save, despite its name

    using Columns = std::span<const Record::Column<JobHeader>>;
    static Columns all();
    /// What the user enters.
    static Columns entries();

    /// The longest texts, as declared, of the columns that are typed.
    struct Sizes {
        int jobID;
        int jobDscrptn;
        int engineer;
        int contractor;
    };
};

namespace Records {

/// The job under which the conversions of steel tanks stand. It has no header for the user to edit.
QString ReservedJob();

/// The header of a job; nothing when there is none. Throws DatabaseFault.
std::optional<JobHeader> ReadJobHeader(const QString& jobID);

/// Throws DatabaseFault.
JobHeader::Sizes JobHeaderSizes();

/// Adds the header of a new job; false when there is a job of that ID. Throws DatabaseFault.
bool AddJobHeader(const JobHeader& header);

/// Stores what the user entered over the header of its job. What was read before tells whether someone else
/// has changed it since. Throws RecordGone, RecordChanged and DatabaseFault.
void UpdateJobHeader(const JobHeader& header, const std::optional<JobHeader>& asRead,
                     Record::IfChanged ifChanged);

/// Adds the header of the reserved job when it is not there. Throws DatabaseFault.
void AddReservedJob();

} // namespace Records
