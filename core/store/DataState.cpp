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
        const Engine::Look seen =
            user.engine().look("SELECT (SELECT COUNT(*) FROM tblJobHeader WHERE JobID = ?) AS Jobs, "
                               "(SELECT COUNT(*) FROM tblJobData WHERE TankID = ?) AS Tanks",
                               {jobID, tankID});
        return DataState{.version = seen.counter,
                         .jobExists = !jobID.isEmpty() && seen.row[0].toInt() > 0,
                         .tankExists = !tankID.isEmpty() && seen.row[1].toInt() > 0};
    } catch (const Fault&) {
        return std::nullopt;
    }
}

} // namespace Gateway
