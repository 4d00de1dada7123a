#include "core/store/NewTankLines.h"

#include "core/base/Numbers.h"
#include "core/store/Gateway.h"
#include "core/store/TankNumbers.h"

#include <limits>

namespace Records {

namespace {

/// Adds the lines within the caller's transaction.
QStringList add(const Connection& user, const QString& jobID, const std::vector<TankLine>& lines) {
    constexpr std::size_t keys = 3; // ID, number and job
    int number = TankNumbers::nextNumber(user, jobID);
    Recordset tanks;
    tanks.Open("tblJobData", user, CursorType::Keyset, CommandType::Table);
    QStringList added;
    for (const TankLine& line : lines) {
        const QString tankID = jobID + u'.' + QString::number(number);
        tanks.AddNew();
        tanks["TankNo"] = ToInt16(number++);
        tanks["TankID"] = tankID;
        tanks["JobID"] = jobID;
        Record::write(tanks, line, TankLine::all().subspan(keys));
        tanks.Update();
        added.append(tankID);
    }
    return added;
}

} // namespace

QStringList addTankLines(const QString& jobID, const std::vector<TankLine>& lines) {
    const Connection user = Gateway::openDatabase("User");
    Transaction write(user);
    TankNumbers::requireJob(user, jobID);
    QStringList added = add(user, jobID, lines);
    write.commit();
    return added;
}

QStringList addJobWithTankLines(const JobHeader& header, const std::vector<TankLine>& lines) {
    const Connection user = Gateway::openDatabase("User");
    Transaction write(user);
    if (!addJobHeader(header, user))
        return {};
    QStringList added = add(user, header.jobID.value_or(QString()), lines);
    write.commit();
    return added;
}

int roomForTankLines(const QString& jobID) {
    Gateway::Rows last(
        "User", "SELECT MAX(TankNo) AS Highest FROM tblJobData GROUP BY JobID HAVING JobID = ?", {jobID});
    return std::numeric_limits<std::int16_t>::max() - (last.atEnd() ? 0 : int(last["Highest"].number()));
}

} // namespace Records
