#include "documents/lists/ListReports.h"

#include "core/base/ApplicationNames.h"
#include "core/shell/Commands.h"
#include "core/shell/Hourglass.h"
#include "core/shell/Screens.h"
#include "core/shell/Trap.h"
#include "core/store/SessionStore.h"
#include "documents/report/Reports.h"
#include "documents/schedule/ScheduleTable.h"
#include "documents/viewer/ReportOutput.h"

using namespace ApplicationNames;
using namespace Faults;
using namespace Schedule;

namespace {

/// An application's lists: the command that shows the first, and what both add to their statements.
struct List {
    const char* command;
    QString (*application)();
    const char* report;
    const char* filter;
    const char* order; // of the first list only; the other keeps the table's order
};

const List lists[] = {
    {"mnuRptEXP", AppNameExpansion, "rptExpTankList", " WHERE tblModelMaster.App = 'EXP'",
     " ORDER BY Class, TankVolume"},
    {"mnuTHM", AppNameThermal, "rptExpTankList", " WHERE tblModelMaster.App = 'THM'",
     " ORDER BY Class, TankVolume"},
    {"mnuRptHYD", AppNameHydro, "rptExpTankList", " WHERE tblModelMaster.App = 'HYD'",
     " ORDER BY Class, TankVolume"},
    {"mnuRptSHK", AppNameShock, "rptExpTankList", " WHERE tblModelMaster.App = 'SHK'",
     " ORDER BY Class, TankVolume"},
    // No command shows packages in the first list, where this order would fail.
    {"mnuRptPKG", AppNamePackage, "rptPKGTankList", " WHERE tblModelMaster.App = 'PKG'",
     " ORDER by BY Class, TankVolume"},
};

const QString columns = QStringLiteral(
    "SELECT tblModelMaster.App, Description, Class, Bladder, ASME, ModelDscrptn, TankOD & \" X \" & OAL AS "
    "Dimensions, TankVolume, AcceptanceVolume, SysConnStd, TankWkPressure, ShipWeight");
const QString packageColumns = QStringLiteral(", MinSysPressure & \" - \" & TankWkPressure AS PressureRange, "
                                              "MakeUpCapacity & \" @ \" & TankWkPressure AS "
                                              "MUCapacity, PumpHp");
const QString tables =
    QStringLiteral(" FROM tblModelMaster INNER JOIN tblAppMaster ON tblModelMaster.App = tblAppMaster.App");

/// Filters by the session's application; without one the list covers all models.
void filter(Report& report, bool sorted) {
    QString application;
    if (!Session::TankClass.read(application))
        return;
    for (const List& list : lists) {
        if (list.application() != application)
            continue;
        report.source += QLatin1String(list.filter) + (sorted ? QLatin1String(list.order) : QLatin1String());
        report.title += ", " + application;
        report.fileName = report.title;
        return;
    }
}

// If a start routine fails, the error dialog opens and the pages show the data source unchanged.

void StartTankList(Report& report) {
    report.source = columns + tables;
    Trap("rptExpTankList", [&] { filter(report, true); });
}

void StartPackageList(Report& report) {
    report.source = columns + packageColumns + tables;
    Trap("rptPKGTankList", [&] { filter(report, false); });
}

void StartSchedule(Report& report) {
    report.source =
        "SELECT * FROM tblJobData INNER JOIN tblSchedule ON tblSchedule.TankID = tblJobData.TankID";
    Trap("rptSchedule", [&] {
        UpdateScheduleTable();
        QString job;
        if (!Session::JobID.read(job))
            return;
        report.title += ", " + job;
        report.fileName = report.title;
    });
}

constexpr ReportKind reports[] = {
    {"rptExpTankList", "rptExpTankList", "Sys", StartTankList, ReportOf::Catalogue},
    {"rptPKGTankList", "rptPKGTankList", "Sys", StartPackageList, ReportOf::Catalogue},
    {"rptSchedule", "rptSchedule", "User", StartSchedule, ReportOf::Job},
};

void show(const List& list) {
    Trap(list.command, [&list] {
        const Hourglass hourglass;
        Session::TankClass.write(list.application()); // this is how the report learns it
        ShowDocument(Report(*FindReport(list.report)).Run());
    });
}

/// Shows the schedule of the session's job without changing the session's application.
void showSchedule() {
    Trap("mnuSchedule", [] {
        if (!Screens::activeStands())
            return;
        const Hourglass hourglass;
        FillScheduleTable();
        ShowDocument(Report(*FindReport("rptSchedule")).Run());
    });
}

} // namespace

void registerLists() {
    AddReports(reports);
    for (const List& list : lists)
        Commands::set(list.command, [&list] { show(list); });
    Commands::set("mnuSchedule", showSchedule);
}
