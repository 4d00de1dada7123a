#pragma once

#include "core/store/Database.h"

/// Faults in the user's data that no write of the program causes: another program's work, or a repaired or
/// damaged file.
namespace DataCheck {

struct Findings {
    QString damage;          // of the file; empty if it is sound
    QStringList orphanJobs;  // IDs of jobs with tank lines but no header
    QStringList sharedTanks; // jobs with two tank lines of the same number, as "A.3"
    QStringList equalNames;  // keys that differ only in case, as "Öl / öl"

    bool isEmpty() const {
        return damage.isEmpty() && orphanJobs.isEmpty() && sharedTanks.isEmpty() && equalNames.isEmpty();
    }
    /// One sentence per finding, for the user.
    QStringList sentences() const;
};

/// Checks open user data; reports at most the first hundred findings of each kind. Throws DatabaseFault.
Findings check(const Connection& user);

/// The last check's findings, for whoever shows them. Only for use from one thread.
const Findings& latestFindings();
void setLatestFindings(const Findings& findings);

/// Gives orphaned tank lines a header again. False if the job already has one. Throws DatabaseFault.
bool giveHeaderBack(const Connection& user, const QString& jobID);

} // namespace DataCheck
