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

#include <algorithm>
#include <iterator>

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

/// The curve of the chosen row. One that the search does not offer is not in the report; the first stands in.
const Candidate* drawnOf(const frmCompare::Shown& shown, const std::vector<const Candidate*>& offered) {
    if (shown.chosen && shown.chosen->isOffered())
        return shown.chosen;
    return offered.empty() ? nullptr : offered.front();
}

/// Adds the curve of a row, and beside it the notes of all.
void addFoot(Report& report, const Candidate* drawn, Application application, const QStringList& notes) {
    ReportRow row{{"Band", "curve"}};
    if (const auto curve = drawn ? curveOf(*drawn, application) : std::nullopt) {
        ReportControl& picture = report.control("imgCurve");
        picture.svg = curvePicture(*curve);
        picture.description = curveInWords(*curve);
        row.insert("Text", QString("%1 × %2: pressure over water")
                               .arg(QString::number(drawn->quantity), shownText(drawn->model->modelDscrptn)));
    }
    QStringList numbered;
    for (qsizetype i = 0; i < notes.size(); ++i)
        numbered.append(QString("%1  %2").arg(i + 1).arg(notes[i]));
    row.insert("Notes", numbered.join('\n'));
    row.insert("NotesHeading", notes.isEmpty() ? QString() : QStringLiteral("Notes"));
    if (row.contains("Text") || !notes.isEmpty())
        report.rows.push_back(row);
}

/// Sets the rows so closely that they share the first page with what follows them. Where they are too many
/// for that, so widely that some go to the second page with it.
void fitRows(Layout& layout, std::size_t rows) {
    constexpr std::size_t most = 30;
    constexpr double highest = 12;   // points
    constexpr double wide = 14;      // points
    constexpr double largest = 7.5;  // points of a letter
    constexpr double smallest = 6;   // that everyone reads on paper
    constexpr double leading = 1.25; // of a row to its letters
    ReportSection* table = nullptr;
    double room = layout.paper.height() - layout.margins.top() - layout.margins.bottom();
    for (ReportSection& section : layout.sections)
        if (section.band == u"model")
            table = &section;
        else
            room -= section.height;
    if (!table || rows == 0)
        return;
    const double height = rows > most ? wide : std::min(highest, room / double(rows));
    table->height = height;
    for (ReportControl& control : table->controls) {
        control.place.setHeight(height - control.place.top());
        control.style.size = std::clamp(height / leading, smallest, largest);
    }
}

/// The open comparison, as far as the search offers it. A failure leaves no pages.
void start(Report& report) {
    const auto* screen = dynamic_cast<const frmCompare*>(Screens::find("frmCompare"));
    if (!screen)
        return;
    const frmCompare::Shown shown = screen->shown();
    std::vector<const Candidate*> offered;
    std::ranges::copy_if(shown.rows, std::back_inserter(offered), &Candidate::isOffered);
    QStringList notes; // each once; the rows tell their numbers
    for (const Candidate* candidate : offered) {
        ReportRow row{{"Band", "model"}};
        const QStringList texts = CompareTable::textsOf(*candidate, shown.application);
        for (qsizetype i = 0; i < texts.size(); ++i)
            row.insert(columns[i], texts[i]);
        QStringList numbers;
        for (const QString& note : candidate->notes) {
            if (!notes.contains(note))
                notes.append(note);
            numbers.append(QString::number(notes.indexOf(note) + 1));
        }
        row.insert("Notes", numbers.join(", "));
        report.rows.push_back(row);
    }
    addFoot(report, drawnOf(shown, offered), shown.application, notes);
    fitRows(report.layout(), offered.size());
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
