#include "core/store/TankLine.h"

#include "core/base/Fault.h"
#include "core/base/Numbers.h"
#include "core/store/SessionStore.h"
#include "core/store/SqlText.h"

namespace UtilityFunctions {

Rows ReadTankLine(const QString& tankID, CursorType cursor) {
    return {"User", "SELECT * FROM tblJobData WHERE TankID = '" + SqlEscape(tankID) + "'", cursor};
}

std::int16_t GetNextNumber() {
    return Named("GetNextNumber", []() -> std::int16_t {
        QString jobID;
        if (!Session::JobID.read(jobID))
            return 1;
        Rows rows("User", "SELECT MAX(TankNo) AS MaxTankNo FROM tblJobData GROUP BY JobID HAVING JobID = '" +
                              SqlEscape(jobID) + "'");
        return rows.AtEnd() ? std::int16_t(1) : ToInt16(rows["MaxTankNo"].number() + 1);
    });
}

bool SaveTankLine(const QString& ownerJobID, const QString& keyPrefix, const QDateTime& created,
                  const std::function<void(Recordset&, bool)>& setValues) {
    QString mode;
    if (!Session::Mode.read(mode))
        return false;
    const bool isNew = mode == Session::Modes::New;
    QString tankID;
    if (!isNew && !Session::TankID.read(tankID))
        return false;
    const int number = isNew ? GetNextNumber() : 0;
    Connection connection = openDatabase("User");
    Recordset tank;
    if (isNew) {
        tankID = keyPrefix + "." + QString::number(number);
        tank.Open("tblJobData", connection, CursorType::Keyset, CommandType::Table);
        tank.AddNew();
        tank["TankNo"] = number;
        tank["TankID"] = tankID;
        tank["JobID"] = ownerJobID;
        tank["DateCreated"] = created;
    } else {
        tank.Open("SELECT * FROM tblJobData WHERE TankID = '" + SqlEscape(tankID) + "'", connection,
                  CursorType::Keyset);
    }
    setValues(tank, isNew);
    tank.Update();
    Session::TankID.write(tankID);
    return true;
}

void CancelJobInput(const QString& jobID) {
    Named("CancelJobInput", [&] {
        QString mode;
        if (!Session::Mode.read(mode))
            return;
        Connection connection = openDatabase("User");
        Recordset tanks;
        tanks.Open(
            "SELECT * FROM tblJobData INNER JOIN tblJobHeader ON tblJobData.JobID = tblJobHeader.JobID WHERE "
            "tblJobHeader.JobID = '" +
                SqlEscape(jobID) + "'",
            connection, CursorType::Keyset);
        if (!tanks.AtEnd())
            return;
        tanks.Close();
        Recordset header;
        header.Open("SELECT * FROM tblJobHeader WHERE JobID = '" + SqlEscape(jobID) + "'", connection,
                    CursorType::Keyset);
        if (!header.AtEnd())
            header.Delete();
    });
}

} // namespace UtilityFunctions
