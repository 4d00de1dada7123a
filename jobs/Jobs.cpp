#include "jobs/Jobs.h"

#include "core/shell/BrennovalMain.h"
#include "core/store/SessionStore.h"
#include "jobs/frmClassSelect.h"
#include "jobs/frmDelete.h"
#include "jobs/frmEngContMaster.h"
#include "jobs/frmJobHeader.h"
#include "jobs/frmOneColumnLookup.h"
#include "jobs/frmTankIDSearch.h"
#include "jobs/frmjobsearchdialog.h"

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

void searchJob(const QString& mode, const QString& status) {
    Session::Mode.write(mode);
    Screens::open("frmjobsearchdialog");
    UtilityFunctions::SetStatusText(status);
}

void maintain(const QString& list) {
    Session::Mode.write(list);
    auto* screen = dynamic_cast<frmEngContMaster*>(Screens::load("frmEngContMaster"));
    if (!screen)
        return;
    screen->Maintain(list);
    Screens::show(screen->name());
}

} // namespace

void registerJobs() {
    Screens::add("frmJobHeader", [] { return new frmJobHeader; });
    Screens::add("frmClassSelect", [] { return new frmClassSelect; });
    Screens::add("frmjobsearchdialog", [] { return new frmjobsearchdialog; });
    Screens::add("frmTankIDSearch", [] { return new frmTankIDSearch; });
    Screens::add("frmDelete", [] { return new frmDelete; });
    Screens::add("frmEngContMaster", [] { return new frmEngContMaster; });
    Screens::add("frmOneColumnLookup", [] { return new frmOneColumnLookup; });
    Commands::set("mnuNewJob", newJob);
    Commands::set("mnuEditJob", [] { searchJob("Edit", "Select a job to edit or delete"); });
    Commands::set("mnuDeleteJob", [] { searchJob("Delete", "Delete Job/Tanks"); });
    Commands::set("mnuEngineers", [] { maintain("Engineers"); });
    Commands::set("mnuContractors", [] { maintain("Contractors"); });
}
