#pragma once

#include "core/store/Database.h"

#include <QTemporaryDir>

#include <optional>
#include <vector>

/// Moves jobs between the user's data and a copy of it, or a single-job file, which has the same tables.
namespace JobCopies {

/// Whether the program made the file for itself, or it came from anywhere.
enum class Origin { Own, Foreign };

/// A copy open for reading. It is never changed: if its version is older, a temporary copy of it is upgraded
/// instead.
class Source {
  public:
    /// Throws DatabaseFault with a text for the user, if the file is not ours or of a newer version, and for
    /// a foreign file that is too large, damaged, or contains more than tables.
    Source(const QString& path, Origin origin);

    const Connection& data() const { return connection; }
    Origin origin() const { return comesFrom; }
    /// The file being read, which is a different one if the copy's version is older.
    QString file() const { return connection.dataSource(); }

  private:
    void bringUp();

    std::optional<QTemporaryDir> folder;
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

/// Copies jobs with every column into the user's data, in one write; jobs with the same IDs are replaced.
/// Throws DatabaseFault and then changes nothing.
void Restore(const Source& copy, const Connection& user, const QStringList& jobIDs);

/// Backs up the current data and replaces all of it with a copy's, in one write. Throws DatabaseFault and
/// then changes nothing.
void restoreAll(const Source& copy, const Connection& user);

/// Writes a job to a file of its own, which only appears once it is complete. Throws DatabaseFault, and
/// RecordGone if there is no such job.
void Export(const Connection& user, const QString& jobID, const QString& path);

} // namespace JobCopies
