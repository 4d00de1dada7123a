#include "core/store/DataCheck.h"

#include "core/base/Fault.h"
#include "core/store/Schema.h"
#include "core/store/StoredRows.h"

#include <QDateTime>

namespace DataCheck {

namespace {

constexpr qsizetype maxReported = 100;

QStringList textsOf(const Connection& user, const QString& statement) {
    QStringList texts;
    Recordset rows;
    for (rows.Open(statement, user); !rows.atEnd() && texts.size() < maxReported; rows.moveNext())
        texts.append(rows["V"].text());
    return texts;
}

Findings& latest() {
    static Findings findings;
    return findings;
}

} // namespace

const Findings& latestFindings() {
    return latest();
}

void setLatestFindings(const Findings& findings) {
    latest() = findings;
}

QStringList Findings::sentences() const {
    QStringList all;
    if (!damage.isEmpty())
        all.append("The file of your data is damaged: " + damage + ". Please restore a backup.");
    for (const QString& job : orphanJobs)
        all.append("The tanks of the job " + job + " have no job header.");
    for (const QString& tank : sharedTanks)
        all.append("Two tanks are number " + tank + ".");
    for (const QString& names : equalNames)
        all.append("These names differ only in the case of a letter: " + names +
                   ". Until one of them is deleted, such letters are told apart in your data.");
    return all;
}

Findings check(const Connection& user) {
    Findings found;
    found.damage = user.engine().findDamage(Engine::Check::Quick);
    if (!found.damage.isEmpty())
        return found;
    found.orphanJobs = textsOf(user, "SELECT DISTINCT JobID AS V FROM tblJobData WHERE JobID NOT IN "
                                     "(SELECT JobID FROM tblJobHeader)");
    found.sharedTanks =
        textsOf(user, "SELECT JobID & '.' & TankNo AS V FROM tblJobData WHERE TankNo IS NOT NULL "
                      "GROUP BY JobID, TankNo HAVING COUNT(*) > 1");
    if (!user.isOffice() && Schema::versionOf(user) < Schema::currentVersion())
        found.equalNames = Schema::collidingNames(user).mid(0, maxReported);
    return found;
}

bool giveHeaderBack(const Connection& user, const QString& jobID) {
    Transaction write(user);
    if (Gateway::hasRow(user, "tblJobHeader", "JobID", jobID))
        return false;
    Recordset header;
    header.Open("tblJobHeader", user, CursorType::Keyset, CommandType::Table);
    header.AddNew();
    header["JobID"] = jobID;
    header["JobDscrptn"] = "Header given back";
    header["DateCreated"] = QDateTime::currentDateTime();
    header.Update();
    write.commit();
    return true;
}

} // namespace DataCheck
