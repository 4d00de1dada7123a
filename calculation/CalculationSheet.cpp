#include "calculation/CalculationSheet.h"

#include "calculation/SelectionSteps.h"
#include "calculation/SizingSteps.h"
#include "core/base/ApplicationNames.h"
#include "core/base/Fault.h"
#include "core/shell/Commands.h"
#include "core/shell/Screens.h"
#include "core/shell/Trap.h"
#include "core/store/JobHeader.h"
#include "core/store/Representative.h"
#include "core/store/SessionStore.h"
#include "documents/report/Imprint.h"
#include "documents/report/Reports.h"
#include "documents/submittals/ResultScreen.h"
#include "documents/submittals/SizingFacts.h"
#include "shock/ShockSizing.h"

using namespace ApplicationNames;
using namespace Catalogue;
using namespace Records;

SizedTank sizedTank(const TankLine& line) {
    SizedTank tank;
    tank.line = line;
    tank.model = findModel(line.modelNo.value_or(QString()));
    const std::vector<Model> models = modelsOf(tank.series());
    if (!models.empty())
        tank.application = applicationCoded(models.front().app.value_or(QString()).toStdString());
    if (!tank.application)
        tank.application = Session::application();
    tank.conversion = line.jobID == reservedJob();
    return tank;
}

namespace {

void addSteps(Worksheet& sheet, SizedTank& tank) {
    if (tank.conversion)
        return addConversionSteps(sheet, tank);
    if (!tank.application)
        return sheet.warn("Neither the line nor the catalogue says what the tank is for.");
    switch (*tank.application) {
    case Application::Expansion:
    case Application::Thermal:
    case Application::Hydropneumatic:
        return addTankSteps(sheet, tank);
    case Application::Shock:
        return addShockSteps(sheet, tank);
    case Application::Package: // is chosen, not sized
        sheet.section("Conditions");
        return sheet.condition("System pressure", "P", tank.line.sopMax, "psig", SiValues::kilopascals);
    }
}

void addNotes(Worksheet& sheet, const SizedTank& tank) {
    SizingNotes::Facts facts = SizingNotes::factsOf(tank.line, tank.model);
    if (tank.application == Application::Shock)
        facts.requiredConnection = ShockSizing::requiredConnection(tank.line);
    if (tank.sizes) { // those on the sheet; that the stored ones differ is said above all
        facts.requiredVolume = tank.sizes->volume;
        if (facts.requiredAcceptance)
            facts.requiredAcceptance = tank.sizes->acceptance;
    }
    if (tank.line.modelNo && !tank.model) {
        sheet.warn("The model " + *tank.line.modelNo + " is not in the catalogue.");
        facts.model.clear(); // not once more among the notes
    }
    const QStringList notes = SizingNotes::textsOf(facts);
    if (notes.isEmpty())
        return;
    sheet.section("Notes");
    for (const QString& note : notes)
        sheet.say({}, note);
}

void addCurve(Report& report, Worksheet& sheet, const SizedTank& tank) {
    const auto curve = curveOf(tank);
    if (!curve)
        return;
    sheet.section("Pressure over water");
    ReportControl& picture = report.control("imgCurve");
    picture.svg = curvePicture(*curve);
    picture.description = curveInWords(*curve);
    sheet.curve();
    sheet.say("In words", curveInWords(*curve)); // for files without pictures
}

/// The sheet of the tank line at work. A failure leaves no pages: half a sheet proves nothing.
void start(Report& report) {
    const QString tankID = Session::TankID.text();
    const auto line = findTankLine(tankID);
    if (!line)
        throw RecordGone("This tank has been deleted.");
    SizedTank tank = sizedTank(*line);
    Worksheet sheet;
    sheet.warnOfFault("The stored conditions cannot be computed", [&] { addSteps(sheet, tank); });
    addSearch(sheet, tank);
    addChoice(sheet, tank);
    addNotes(sheet, tank);
    addCurve(report, sheet, tank);
    addSite(sheet, tank);
    report.rows = sheet.rows();

    const QString job = line->jobID.value_or(QString());
    report.control("txtJob").text = job;
    report.control("txtTank").text = tankID;
    report.control("txtApplication").text = tank.conversion    ? QStringLiteral("Steel tank conversion")
                                            : tank.application ? AppName(*tank.application)
                                                               : QString();
    report.control("txtModelNo").text = line->modelNo.value_or(QString());
    report.control("txtQty").text = line->qty ? QString::number(*line->qty) : QString();
    report.control("txtMade").text = Imprint::madeLine();
    report.control("txtFoot").text = "Calculation sheet of tank " + tankID + " of job " + job;
    report.title = QStringList{report.title, tankID, line->modelNo.value_or(QString())}.join(", ");
    report.author = Imprint::maker;
    if (const auto own = ownRepresentatives(); !own.empty() && own.front().companyName)
        report.author = QString(*own.front().companyName).replace("&&", "&");
    report.fileName = tankID + " calculation";
}

/// Shows the sheet of the tank line at work.
void showCalculation() {
    if (Session::TankID.text().isEmpty() || !findTankLine(Session::TankID.text())) {
        Dialogs::current().show(
            {.text = "Please open the tank whose calculation is to be shown!", .title = "Calculation sheet"});
        return;
    }
    Submittals::showReport("rptCalculation");
}

} // namespace

void registerCalculation() {
    static constexpr ReportKind reports[] = {
        {"rptCalculation", "rptCalculation", "User", start, ReportOf::TankLine}};
    addReports(reports);
    Commands::set("mnuCalculation", [] {
        if (Screens::activeExists())
            showCalculation();
    });
}
