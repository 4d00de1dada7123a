#include "core/store/TankNumbers.h"

#include "core/base/Fault.h"
#include "core/base/Numbers.h"

namespace TankNumbers {

void requireJob(const Connection& connection, const QString& jobID) {
    Recordset header;
    header.Open("SELECT JobID FROM tblJobHeader WHERE JobID = ?", connection, {jobID});
    if (header.atEnd())
        throw RecordGone("This job has been deleted.");
}

std::int16_t nextNumber(const Connection& connection, const QString& jobID) {
    Recordset rows;
    rows.Open("SELECT MAX(TankNo) AS MaxTankNo FROM tblJobData GROUP BY JobID HAVING JobID = ?", connection,
              {jobID});
    return rows.atEnd() ? std::int16_t(1) : ToInt16(rows["MaxTankNo"].number() + 1);
}

} // namespace TankNumbers
