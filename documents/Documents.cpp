#include "documents/Documents.h"

#include "core/shell/Commands.h"
#include "core/shell/Screens.h"
#include "documents/drawings/frmDrawing.h"
#include "documents/lists/ListReports.h"
#include "documents/schedule/frmSchedule.h"
#include "documents/specifications/frmResultSpecs.h"
#include "documents/specifications/frmSpecs.h"
#include "documents/submittals/ResultScreen.h"
#include "documents/submittals/Submittals.h"
#include "documents/tags/frmUnitTagData.h"
#include "documents/viewer/ReportOutput.h"

void registerDocuments() {
    Screens::add("frmDrawing", [] { return new frmDrawing; });
    Screens::add("frmSpecs", [] { return new frmSpecs; });
    Screens::add("frmResultSpecs", [] { return new frmResultSpecs; });
    Screens::add("frmSchedule", [] { return new frmSchedule; });
    Screens::add("frmUnitTagData", [] { return new frmUnitTagData; });
    Commands::set("mnuSpecs", [] { Screens::open("frmSpecs"); });
    registerViewer();
    registerSubmittals();
    registerPrinting();
    registerLists();
}
