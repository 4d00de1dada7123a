#pragma once

#include "core/store/Database.h"
#include "core/store/StoredRows.h"

#include <vector>

/// Moves jobs between the user's data and a copy of it, or a single-job file, which has the same tables.
namespace JobCopies {

/// Whether the program made the file for itself, or it came from anywhere.
enum class Origin { Own, Foreign };

/// A copy open for reading. It is never changed: if its version is older, a copy of it in memory is upgraded
/// instead.
class Source {
  public:
    /// Throws DatabaseFault with a text for the user, if the file is not ours or of a newer version, and for
    /// a foreign file that is too large, damaged, or contains more than tables.
    Source(const QString& path, Origin origin);

    const Connection& data() const { return connection; }
    Origin origin() const { return comesFrom; }
    /// The file that was opened.
    const QString& file() const { return path; }

  private:
    void bringUp();

    QString path;
    Connection connection;
    Origin comesFrom;
};

/// How an item of a copy compares with today's data.
enum class Today { Missing, Differs, Same, Only };

struct Job {
    QString jobID;
    QString description;
    int tanks = 0; // in the copy
    Today today = Today::Same;
};

struct Tank {
    QString tankID;
    QString modelNo;
    QString quantity;
    Today today = Today::Same;
};

/// The jobs of a copy that are missing or different in today's data, ordered by ID. Throws DatabaseFault.
std::vector<Job> changedJobs(const Source& copy, const Connection& user);

/// All jobs of a copy. Throws DatabaseFault.
std::vector<Job> allJobs(const Source& copy, const Connection& user);

/// The tank lines of a job, from both the copy and today. Throws DatabaseFault.
std::vector<Tank> tanksOf(const Source& copy, const Connection& user, const QString& jobID);

/// Which of some jobs are in the user's data, even if only as tank lines without a header. Throws
/// DatabaseFault.
QStringList existing(const QStringList& jobIDs, const Connection& user);

/// Copies jobs with every column into the user's data, in one write. Jobs with the same IDs are replaced if
/// they are in the list of the replaced; any other was added in the meantime and stops it. Throws
/// DatabaseFault and then changes nothing.
void Restore(const Source& copy, const Connection& user, const QStringList& jobIDs,
             const QStringList& replaced);

/// Backs up the current data and replaces all of it with a copy's, in one write. Throws DatabaseFault and
/// then changes nothing.
void restoreAll(const Source& copy, const Connection& user);

/// Gives the rows of a job, with its tank lines, another ID; the keys of the lines follow.
void giveID(Gateway::StoredRows& header, Gateway::StoredRows& lines, const QString& jobID,
            const QString& newID);

/// Adds a copy of a job under another ID, with its tank lines and their tags, in one write; false if there is
/// such a job. Throws RecordGone if the job is gone, and DatabaseFault.
bool duplicate(const Connection& user, const QString& jobID, const QString& copyID);

/// Writes a job to a file of its own, which only appears once it is complete. It never replaces a database (a
/// name that ends in "mdb"). Throws DatabaseFault, and RecordGone if there is no such job.
void Export(const Connection& user, const QString& jobID, const QString& path);

} // namespace JobCopies
