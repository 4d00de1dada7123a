#include "core/base/ApplicationNames.h"
#include "core/base/Text.h"
#include "core/shell/Commands.h"
#include "core/shell/DisplayFields.h"
#include "core/shell/Screens.h"
#include "documents/report/Imprint.h"
#include "documents/report/Reports.h"
#include "extras/compare/Compare.h"
#include "extras/compare/CompareTable.h"
#include "extras/compare/frmCompare.h"

using namespace ApplicationNames;

namespace {

/// The columns of the layout, in the order of the table.
const char* const columns[] = {
    "Series",   "Qty",    "ModelNo",   "Volume", "Acceptance",      "VolumeReserve", "AcceptanceReserve",
    "Diameter", "Height", "FloorArea", "Weight", "WorkingPressure", "MaxTemp",       "ASME",
    "Notes"};

/// The conditions in one sentence; what a line does not have is left out.
QString inWords(const frmCompare::Shown& shown) {
    const TankLine& line = shown.conditions;
    const bool drawdown = shown.application == Application::Hydropneumatic;
    QStringList parts;
    const auto add = [&](const char* name, const std::optional<double>& value, const char* unit) {
        if (value)
            parts.append(QString("%1 %2 %3").arg(name, shownNumber(*value), unit));
    };
    if (shown.application == Application::Shock) {
        parts.append("pipe " + shownText(line.pipeIndex));
        add("length", line.pipeLength, "ft");
        add("flow", line.flowRate, "gpm");
        add("flow pressure", line.flowPressure, "psig");
        add("static pressure", line.staticPressure, "psig");
        add("shock pressure", line.shockPressure, "psig");
        add("required volume", line.requiredVolume, "gal");
    } else {
        add(drawdown ? "drawdown" : "system volume", line.totSysVolume, "gal");
        if (!drawdown) {
            parts.append(shownText(line.sysFluidType));
            add("minimum temperature", line.sotMin, "°F");
            add("maximum temperature", line.sotMax, "°F");
        }
        add("minimum pressure", line.sopMin, "psig");
        add("maximum pressure", line.sopMax, "psig");
    }
    add("atmospheric pressure", line.atmPressure, "psia");
    return "Conditions: " + parts.join(", ") + '.';
}

void addCurve(Report& report, const frmCompare::Shown& shown) {
    const auto curve = shown.chosen ? curveOf(*shown.chosen, shown.application) : std::nullopt;
    if (!curve)
        return;
    ReportControl& picture = report.control("imgCurve");
    picture.svg = curvePicture(*curve);
    picture.description = curveInWords(*curve);
    report.rows.push_back({{"Band", "curve"},
                           {"Text", QString("%1 × %2: pressure over water")
                                        .arg(QString::number(shown.chosen->quantity),
                                             shownText(shown.chosen->model->modelDscrptn))}});
}

/// The open comparison, as far as the search offers it. A failure leaves no pages.
void start(Report& report) {
    const auto* screen = dynamic_cast<const frmCompare*>(Screens::find("frmCompare"));
    if (!screen)
        return;
    const frmCompare::Shown shown = screen->shown();
    for (const Candidate* candidate : shown.rows) {
        if (!candidate->isOffered())
            continue;
        ReportRow row{{"Band", "model"}};
        const QStringList texts = CompareTable::textsOf(*candidate, shown.application);
        for (qsizetype i = 0; i < texts.size(); ++i)
            row.insert(columns[i], texts[i]);
        report.rows.push_back(row);
    }
    addCurve(report, shown);
    report.control("txtApplication").text = AppName(shown.application);
    report.control("txtConditions").text = inWords(shown);
    report.control("txtMade").text = Imprint::madeLine();
    report.title = "Alternatives, " + AppName(shown.application);
    report.fileName = report.title;
    report.author = Imprint::maker;
}

constexpr ReportKind reports[] = {{"rptCompare", "rptCompare", "Sys", start, ReportOf::Catalogue}};

} // namespace

void registerCompare() {
    Screens::add("frmCompare", [] { return new frmCompare; });
    Commands::set("mnuCompare", [] { Screens::open("frmCompare"); });
    addReports(reports);
}
