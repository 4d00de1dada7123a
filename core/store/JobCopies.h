#pragma once

#include "core/store/Database.h"

#include <QTemporaryDir>

#include <optional>
#include <vector>

/// Jobs that travel between the user's data and a copy of them, or a file of one job, which has the same
/// tables.
namespace JobCopies {

/// Whether a file is a copy that the program made for itself, or came from anywhere.
enum class Origin { Own, Foreign };

/// A copy that is open for reading. It is never changed: one of an older version is brought up beside.
class Source {
  public:
    /// Throws DatabaseFault with a text for the user: for a file that is none of ours, of a newer version,
    /// and a foreign one that is too large, damaged, or holds more than tables.
    Source(const QString& path, Origin origin);

    const Connection& data() const { return connection; }
    Origin origin() const { return comesFrom; }
    /// The file that is read, which is another one when the copy is of an older version.
    QString file() const { return connection.dataSource(); }

  private:
    void bringUp();

    std::optional<QTemporaryDir> folder;
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

/// Puts jobs of a copy into the user's data as they are, every column, in one write; those of the same IDs
/// go. Throws DatabaseFault; nothing is changed then.
void Restore(const Source& copy, const Connection& user, const QStringList& jobIDs);

/// Puts the present data aside and replaces all of them by those of a copy, in one write. Throws
/// DatabaseFault; nothing is changed then.
void RestoreAll(const Source& copy, const Connection& user);

/// Writes a job to a file of its own, which appears only when it is whole. Throws DatabaseFault, and
/// RecordGone when there is no such job.
void Export(const Connection& user, const QString& jobID, const QString& path);

} // namespace JobCopies
