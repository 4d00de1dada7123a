#include "extras/overview/Overview.h"

#include "core/shell/Commands.h"
#include "core/shell/Dialogs.h"
#include "core/shell/Screens.h"
#include "core/store/JobHeader.h"
#include "core/store/SessionStore.h"
#include "extras/overview/frmJobOverview.h"

namespace {

/// Shows the job at work.
void showOverview() {
    const QString jobID = Session::JobID.text();
    if (jobID.isEmpty() || !Records::readJobHeader(jobID)) {
        Dialogs::current().show(
            {.text = "Please open the job that is to be shown!", .title = "Job overview"});
        return;
    }
    Screens::open("frmJobOverview");
}

} // namespace

void registerOverview() {
    Screens::add("frmJobOverview", [] { return new frmJobOverview; });
    Commands::set("mnuOverview", [] {
        if (Screens::activeExists())
            showOverview();
    });
}
