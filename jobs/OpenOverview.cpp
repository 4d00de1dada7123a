#include "jobs/OpenOverview.h"

#include "core/shell/Screens.h"
#include "core/store/SessionStore.h"

void openOverviewOf(const QString& jobID) {
    Session::Mode.write(Session::Modes::Edit);
    Session::JobID.write(jobID);
    Session::TankID.write("");
    Screens::open("frmJobOverview");
}
