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
        DataState state{.version = user.engine().changeCounter()}; // first, so that no change is missed
        if (jobID.isEmpty() && tankID.isEmpty())
            return state;
        Recordset found; // in one statement: an office is a way off
        found.Open("SELECT (SELECT COUNT(*) FROM tblJobHeader WHERE JobID = ?) AS Jobs, "
                   "(SELECT COUNT(*) FROM tblJobData WHERE TankID = ?) AS Tanks",
                   user, {jobID, tankID});
        state.jobExists = !jobID.isEmpty() && found["Jobs"].number() > 0;
        state.tankExists = !tankID.isEmpty() && found["Tanks"].number() > 0;
        return state;
    } catch (const Fault&) {
        return std::nullopt;
    }
}

} // namespace Gateway
