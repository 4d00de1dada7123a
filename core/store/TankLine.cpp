#include "core/store/TankLine.h"

#include "core/shell/FieldChecks.h"

namespace UtilityFunctions {

QString TankQuery(const QString& tankID) {
    return "SELECT * FROM tblJobData WHERE TankID = '" + SqlEscape(tankID) + "'";
}

void AddTankLine(Recordset& tank, Connection& connection, int number, const QString& tankID,
                 const QString& jobID) {
    tank.Open("tblJobData", connection, CursorType::Keyset, LockType::Optimistic, CommandType::Table);
    tank.AddNew();
    tank["TankNo"] = number;
    tank["TankID"] = tankID;
    tank["JobID"] = jobID;
}

} // namespace UtilityFunctions
