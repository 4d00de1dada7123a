#include "jobs/Jobs.h"

#include "core/shell/BrennovalMain.h"
#include "core/shell/Commands.h"
#include "core/shell/Screens.h"
#include "core/shell/Status.h"
#include "core/store/SessionStore.h"
#include "jobs/StartPage.h"
#include "jobs/frmClassSelect.h"
#include "jobs/frmDelete.h"
#include "jobs/frmEngContMaster.h"
#include "jobs/frmJobHeader.h"
#include "jobs/frmOneColumnLookup.h"
#include "jobs/frmTankIDSearch.h"
#include "jobs/frmjobsearchdialog.h"

namespace {

void newJob() {
    Screens::unload("frmjobsearchdialog");
    if (!Screens::unload("frmJobHeader")) // the user keeps the open one
        return;
    // Only now, because closing the old header may have saved its record and its job.
    Session::Mode.write(Session::Modes::New);
    Session::JobID.write("");
    Session::TankID.write("");
    Screens::open("frmJobHeader");
    StatusBar::setStatusText("Spec a new job");
}

void searchJob(const QString& mode, const QString& status) {
    Session::Mode.write(mode);
    Screens::open("frmjobsearchdialog");
    StatusBar::setStatusText(status);
}

void maintain(const QString& list) {
    if (const Screen* open = Screens::find("frmEngContMaster"); // it shows a name of the other list
        open && open->Tag != list && !Screens::unload(open->name()))
        return;
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
    BrennovalMain::setBackground([](QWidget* area) { return new StartPage(area); });
    Commands::set("mnuNewJob", newJob);
    Commands::set("mnuEditJob", [] { searchJob(Session::Modes::Edit, "Select a job to edit or delete"); });
    Commands::set("mnuDeleteJob", [] { searchJob(Session::Modes::Delete, "Delete Job/Tanks"); });
    Commands::set("mnuEngineers", [] { maintain(Session::Modes::Engineers); });
    Commands::set("mnuContractors", [] { maintain(Session::Modes::Contractors); });
}
