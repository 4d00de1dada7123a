#include "documents/lists/ListReports.h"

#include "core/base/ApplicationNames.h"
#include "core/shell/Commands.h"
#include "core/shell/Hourglass.h"
#include "core/shell/Screens.h"
#include "core/shell/Trap.h"
#include "core/store/SessionStore.h"
#include "core/store/TankLine.h"
#include "documents/report/Reports.h"
#include "documents/schedule/ScheduleTable.h"
#include "documents/viewer/ReportOutput.h"

using namespace ApplicationNames;
using namespace Faults;
using namespace Schedule;

namespace {

/// An application's list: the command that shows it, its report, and the order it adds to the statement.
struct List {
    const char* command;
    const char* report;
    const char* order =
        " ORDER BY Class, TankVolume"; // of the first list only; the other keeps the table's order
};

List listOf(Application application) {
    switch (application) {
    case Application::Expansion:
        return {"mnuRptEXP", "rptExpTankList"};
    case Application::Thermal:
        return {"mnuTHM", "rptExpTankList"};
    case Application::Hydropneumatic:
        return {"mnuRptHYD", "rptExpTankList"};
    case Application::Shock:
        return {"mnuRptSHK", "rptExpTankList"};
    case Application::Package: // no command shows packages in the first list, where this order would fail
        return {"mnuRptPKG", "rptPKGTankList", " ORDER by BY Class, TankVolume"};
    }
    throw Fault(Fault::InternalError, "No list of such an application");
}

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
    const auto application = Session::application();
    if (!application)
        return;
    const ApplicationInfo& info = infoOf(*application);
    report.source += " WHERE tblModelMaster.App = ?";
    report.parameters = {toQString(info.code)};
    if (sorted)
        report.source += QLatin1String(listOf(*application).order);
    report.title += ", " + toQString(info.name);
    report.fileName = report.title;
}

// If a start routine fails, the error dialog opens and the pages show the data source unchanged.

void startTankList(Report& report) {
    report.source = columns + tables;
    runTrapped("rptExpTankList", [&] { filter(report, true); });
}

void startPackageList(Report& report) {
    report.source = columns + packageColumns + tables;
    runTrapped("rptPKGTankList", [&] { filter(report, false); });
}

void startSchedule(Report& report) {
    report.source = scheduleRows;
    runTrapped("rptSchedule", [&] {
        updateScheduleTable();
        QString job;
        if (!Session::JobID.read(job))
            return;
        report.title += ", " + job;
        for (const char* name : {"txtJobID", "txtRunningJob"}) { // which no row tells when there is none
            report.control(name).column.clear();
            report.control(name).text = job;
        }
        const QString incomplete = whyItEnds(Records::tankLinesOf(job));
        if (!incomplete.isEmpty())
            report.title += " (incomplete)";
        report.control("txtIncomplete").text = incomplete;
        report.fileName = report.title;
    });
}

constexpr ReportKind reports[] = {
    {"rptExpTankList", "rptExpTankList", "Sys", startTankList, ReportOf::Catalogue},
    {"rptPKGTankList", "rptPKGTankList", "Sys", startPackageList, ReportOf::Catalogue},
    {"rptSchedule", "rptSchedule", "User", startSchedule, ReportOf::Job},
};

void show(Application application) {
    const List list = listOf(application);
    runTrapped(list.command, [&] {
        const Hourglass hourglass;
        Session::TankClass.write(AppName(application)); // which is how the report learns it
        showDocument(Report(*findReport(list.report)).Run());
    });
}

/// Shows the schedule of the session's job without changing the session's application.
void showSchedule() {
    runTrapped("mnuSchedule", [] {
        if (!Screens::activeExists())
            return;
        const Hourglass hourglass;
        FillScheduleTable();
        showDocument(Report(*findReport("rptSchedule")).Run());
    });
}

} // namespace

void registerLists() {
    addReports(reports);
    for (const ApplicationInfo& info : allApplications)
        Commands::set(listOf(info.application).command, [&info] { show(info.application); });
    Commands::set("mnuSchedule", showSchedule);
}
