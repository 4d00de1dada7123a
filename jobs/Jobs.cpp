#include "jobs/Jobs.h"

#include "core/shell/BrennovalMain.h"
#include "core/store/SessionStore.h"
#include "jobs/frmClassSelect.h"
#include "jobs/frmJobHeader.h"

namespace {
void newJob() {
    Session::Mode.write("New");
    Session::JobID.write("");
    Session::TankID.write("");
    Screens::unload("frmjobsearchdialog");
    Screens::unload("frmJobHeader");
    Screens::open("frmJobHeader");
    UtilityFunctions::SetStatusText("Spec a new job");
}
} // namespace

void registerJobs() {
    Screens::add("frmJobHeader", [] { return new frmJobHeader; });
    Screens::add("frmClassSelect", [] { return new frmClassSelect; });
    Commands::set("mnuNewJob", newJob);
}
