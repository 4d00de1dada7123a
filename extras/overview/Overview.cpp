#include "extras/overview/Overview.h"

#include "core/shell/Commands.h"
#include "core/shell/Screens.h"
#include "extras/overview/frmJobOverview.h"
#include "jobs/JobIDs.h"

namespace {

/// Shows the job at work.
void showOverview() {
    if (!jobAtWork("Please open the job that is to be shown!", "Job overview").isEmpty())
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
