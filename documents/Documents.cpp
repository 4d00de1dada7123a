#include "documents/Documents.h"

#include "core/shell/Commands.h"
#include "core/shell/Screens.h"
#include "documents/ListReports.h"
#include "documents/drawings/frmDrawing.h"
#include "documents/schedule/frmSchedule.h"
#include "documents/schedule/frmUnitTagData.h"
#include "documents/specifications/frmResultSpecs.h"
#include "documents/specifications/frmSpecs.h"
#include "documents/viewer/ReportOutput.h"
#include "documents/viewer/frmReportViewer.h"

void registerDocuments() {
    Screens::add("frmDrawing", [] { return new frmDrawing; });
    Screens::add("frmReportViewer", [] { return new frmReportViewer; });
    Screens::add("frmSpecs", [] { return new frmSpecs; });
    Screens::add("frmResultSpecs", [] { return new frmResultSpecs; });
    Screens::add("frmSchedule", [] { return new frmSchedule; });
    Screens::add("frmUnitTagData", [] { return new frmUnitTagData; });
    Commands::set("mnuSpecs", [] { Screens::open("frmSpecs"); });
    registerReportCommands();
    registerListCommands();
}
