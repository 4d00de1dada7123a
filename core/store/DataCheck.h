#pragma once

#include "core/store/Database.h"

/// What may be wrong in the user's data though every write of the program was whole: another program's work,
/// or a file that was mended or damaged.
namespace DataCheck {

struct Findings {
    QString damage;          // of the file; an empty text when it is sound
    QStringList orphanJobs;  // IDs of jobs whose tank lines have no header
    QStringList sharedTanks; // jobs with two tank lines of one number, as "A.3"
    QStringList equalNames;  // keys that differ in the case of a letter alone, as "Öl / öl"

    bool isEmpty() const {
        return damage.isEmpty() && orphanJobs.isEmpty() && sharedTanks.isEmpty() && equalNames.isEmpty();
    }
    /// Each as a sentence for the user.
    QStringList sentences() const;
};

/// Looks through open user data; of a large file only the first hundred of a kind are told. Throws
/// DatabaseFault.
Findings Check(const Connection& user);

/// What the last check found, for whoever shows it; of one thread.
const Findings& Latest();
void SetLatest(const Findings& findings);

/// Gives tank lines without a header one again. False when the job has a header by now. Throws DatabaseFault.
bool GiveHeaderBack(const Connection& user, const QString& jobID);

} // namespace DataCheck
