#include "jobs/Jobs.h"

#include "core/shell/Commands.h"
#include "core/shell/Screens.h"
#include "core/shell/Status.h"
#include "core/store/SessionStore.h"
#include "jobs/frmClassSelect.h"
#include "jobs/frmJobHeader.h"

namespace {
void newJob() {
    Screens::unload("frmjobsearchdialog");
    if (!Screens::unload("frmJobHeader")) // the user keeps the one that is open
        return;
    // Only now: the header that went may have saved its record, and its job.
    Session::Mode.write(Session::Modes::New);
    Session::JobID.write("");
    Session::TankID.write("");
    Screens::open("frmJobHeader");
    UtilityFunctions::SetStatusText("Spec a new job");
}
} // namespace

void registerJobs() {
    Screens::add("frmJobHeader", [] { return new frmJobHeader; });
    Screens::add("frmClassSelect", [] { return new frmClassSelect; });
    Commands::set("mnuNewJob", newJob);
}
