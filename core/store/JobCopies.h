#pragma once

#include "core/store/Database.h"

#include <vector>

/// Jobs that travel between the user's data and a copy of them, or a file of one job, which has the same
/// tables.
namespace JobCopies {

/// Whether a file is a copy that the program made for itself, or came from anywhere.
enum class Origin { Own, Foreign };

/// A copy that is open for reading. It is never changed: one of an older version is brought up in memory.
class Source {
  public:
    /// Throws DatabaseFault with a text for the user: for a file that is none of ours, of a newer version,
    /// and a foreign one that is too large, damaged, or holds more than tables.
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

/// What of a copy stands otherwise today.
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

/// The jobs of a copy that today's data lack or hold otherwise, in the order of their IDs. Throws
/// DatabaseFault.
std::vector<Job> ChangedJobs(const Source& copy, const Connection& user);

/// All jobs of a copy. Throws DatabaseFault.
std::vector<Job> AllJobs(const Source& copy, const Connection& user);

/// The tank lines of a job, of the copy and of today. Throws DatabaseFault.
std::vector<Tank> TanksOf(const Source& copy, const Connection& user, const QString& jobID);

/// Which of some jobs stand in the user's data, if only with tank lines that have no header. Throws
/// DatabaseFault.
QStringList StandingOf(const QStringList& jobIDs, const Connection& user);

/// Puts jobs of a copy into the user's data as they are, every column, in one write. Those of the same IDs go
/// if they are among the replaced; any other has come meanwhile, and ends it. Throws DatabaseFault; nothing
/// is changed then.
void Restore(const Source& copy, const Connection& user, const QStringList& jobIDs,
             const QStringList& replaced);

/// Puts the present data aside and replaces all of them by those of a copy, in one write. Throws
/// DatabaseFault; nothing is changed then.
void RestoreAll(const Source& copy, const Connection& user);

/// Writes a job to a file of its own, which appears only when it is whole. A database of ours, whose name
/// ends in "mdb", is not replaced by it. Throws DatabaseFault, and RecordGone when there is no such job.
void Export(const Connection& user, const QString& jobID, const QString& path);

} // namespace JobCopies
