#include "core/store/DataState.h"

#include "core/base/Fault.h"
#include "core/store/Gateway.h"

namespace Gateway {

std::optional<DataState> readDataState(const QString& jobID, const QString& tankID) {
    constexpr int maxWait = 100; // milliseconds for a lock; the next activation tries again
    try {
        Connection user = dbConnection("User");
        user.setBusyTimeout(maxWait);
        user.Open();
        const auto exists = [&](const char* table, const char* key, const QString& value) {
            if (value.isEmpty())
                return false;
            Recordset row;
            row.Open(QString("SELECT %1 FROM %2 WHERE %1 = ?").arg(key, table), user, {value});
            return !row.atEnd();
        };
        return DataState{.version = user.engine().changeCounter(),
                         .jobExists = exists("tblJobHeader", "JobID", jobID),
                         .tankExists = exists("tblJobData", "TankID", tankID)};
    } catch (const Fault&) {
        return std::nullopt;
    }
}

} // namespace Gateway
