#include "extras/import/ConditionTable.h"

#include "core/base/ApplicationNames.h"
#include "core/base/Fault.h"
#include "core/base/Numbers.h"
#include "core/base/Text.h"
#include "estimates/MetricConversions.h"
#include "extras/import/TextTable.h"
#include "shock/ShockSizing.h"
#include "sizing/ConditionRules.h"
#include "sizing/FluidLimits.h"
#include "sizing/Series.h"

#include <QHash>
#include <QRegularExpression>

#include <algorithm>
#include <array>
#include <span>

using namespace ApplicationNames;
using namespace MetricConversions;

namespace ConditionTable {

namespace {

/// A unit in the heading of a column, in small letters, and how its values become the program's.
struct Unit {
    const char* name;
    double (*convert)(double) = nullptr; // nothing for the program's own unit
};

constexpr Unit volumes[] = {{"gal"},
                            {"l", LitersToGallons},
                            {"m3", [](double cubicMeters) { return LitersToGallons(cubicMeters * 1000); }},
                            {"m³", [](double cubicMeters) { return LitersToGallons(cubicMeters * 1000); }}};
constexpr Unit temperatures[] = {{"°f"}, {"f"}, {"°c", CelsiusToFahrenHeit}, {"c", CelsiusToFahrenHeit}};
constexpr Unit gaugePressures[] = {
    {"psig"}, {"psi"}, {"kpa", kPaToPSI}, {"bar", [](double bar) { return kPaToPSI(bar * 100); }}};
constexpr Unit absolutePressures[] = {
    {"psia"}, {"psi"}, {"kpa", kPaToPSI}, {"bar", [](double bar) { return kPaToPSI(bar * 100); }}};
constexpr Unit lengths[] = {{"ft"}, {"m", MetersToFeet}};
constexpr Unit flows[] = {
    {"gpm"},
    {"lpm", LitersToGallons},
    {"l/min", LitersToGallons},
    {"l/s", [](double litersPerSecond) { return LitersToGallons(litersPerSecond * 60); }}};

/// A column: its heading, the box that it fills in, and the units it may have.
struct Column {
    const char* heading;
    const char* box; // empty for what no box of the conditions holds
    std::span<const Unit> units{};
    const char* otherHeading = "";
};

const std::array<Column, 16> columns = {{
    {"Application", ""},
    {"Series", ""},
    {"Tag", ""},
    {"Fluid", "cmboFluidType"},
    {"Volume", "txtTotSysFluid", volumes, "drawdown"},
    {"Minimum temperature", "txtSOTMin", temperatures},
    {"Maximum temperature", "txtSOTMax", temperatures},
    {"Minimum pressure", "txtSOPMin", gaugePressures},
    {"Maximum pressure", "txtSOPMax", gaugePressures},
    {"Atmospheric pressure", "txtAtmPressure", absolutePressures},
    {"Pipe", "PipeIndex"},
    {"Pipe length", "PipeLength", lengths},
    {"Flow rate", "FlowRate", flows},
    {"Flow pressure", "FlowPressure", gaugePressures},
    {"Static pressure", "StaticPressure", gaugePressures},
    {"Shock pressure", "ShockPressure", gaugePressures},
}};

/// A column of the table that was read.
struct Heading {
    const Column* column = nullptr;
    const Unit* unit = nullptr;
};

Heading headingOf(const QString& text, QStringList& problems) {
    static const QRegularExpression form(R"(^(.*?)\s*(?:[\[(]\s*(.*?)\s*[\])])?$)");
    const auto parts = form.match(text.simplified().toLower());
    const QString name = parts.captured(1);
    const QString unitName = parts.captured(2);
    const auto* column = std::ranges::find_if(columns, [&](const Column& one) {
        return name == QString(one.heading).toLower() || (name == one.otherHeading && !name.isEmpty());
    });
    if (column == columns.end()) {
        problems.append(QStringLiteral("The column \"%1\" is not known.").arg(text));
        return {};
    }
    if (unitName.isEmpty())
        return {column, column->units.empty() ? nullptr : &column->units.front()};
    const auto unit = std::ranges::find(column->units, unitName,
                                        [](const Unit& one) { return QString::fromUtf8(one.name); });
    if (unit == column->units.end()) {
        QStringList known;
        for (const Unit& one : column->units)
            known.append(QString::fromUtf8(one.name));
        problems.append(
            QStringLiteral("%1 has no unit \"%2\". Known: %3.")
                .arg(column->heading, unitName, known.isEmpty() ? QStringLiteral("none") : known.join(", ")));
        return {};
    }
    return {column, &*unit};
}

std::optional<Application> applicationNamed(const QString& text) {
    constexpr qsizetype shortest = 3;
    for (const ApplicationInfo& info : allApplications) {
        const QString name = toQString(info.name);
        const bool begins = text.size() >= shortest && name.startsWith(text, Qt::CaseInsensitive);
        if (begins || text.compare(toQString(info.code), Qt::CaseInsensitive) == 0)
            return info.application;
    }
    return std::nullopt;
}

/// Reads one row.
class RowReader {
  public:
    RowReader(const TextTable::Row& row, const std::vector<Heading>& columnHeadings, bool commas)
        : headings(columnHeadings), decimalCommas(commas) {
        tank.row = row.number;
        for (std::size_t i = 0; i < headings.size(); ++i)
            if (headings[i].column)
                take(headings[i], row.cells.value(qsizetype(i)));
        if (row.cells.size() > qsizetype(headings.size()))
            tank.problems.append("There are more cells than headings.");
    }

    ImportedTank read(double atmosphere) {
        tank.application = applicationNamed(named.value("Application"));
        if (!tank.application)
            tank.problems.append("Application: " + (named.value("Application").isEmpty()
                                                        ? QString(EntryRules::nothingEntered)
                                                        : named["Application"] + " is not known."));
        else if (*tank.application == Application::Package)
            tank.problems.append("Application: packages are chosen, not sized.");
        else if (tank.problems.isEmpty())
            *tank.application == Application::Shock ? takeShock() : takeTank(atmosphere);
        takeSeries();
        takeTag();
        return tank;
    }

  private:
    /// A metric value becomes the text that its pad would put into the box.
    void take(const Heading& heading, const QString& cell) {
        QString text = cell;
        if (heading.unit && decimalCommas && text.contains(u','))
            text = withPoint(heading, text);
        if (heading.unit && heading.unit->convert && !text.isEmpty()) {
            const auto value = parseNumber(text.toStdString());
            if (value)
                text = shownNumber(heading.unit->convert(*value));
        }
        if (*heading.column->box)
            boxes.insert(heading.column->box, text);
        else
            named.insert(heading.column->heading, text);
    }

    /// "1,250" in a table with decimal commas may be one and a quarter or a thousand and more.
    QString withPoint(const Heading& heading, const QString& text) {
        static const QRegularExpression ambiguous(R"(^[-+]?\d{1,3},\d{3}$)");
        if (ambiguous.match(text).hasMatch())
            tank.problems.append(
                QStringLiteral("%1: is %2 less than a thousand or more? Write it without the "
                               "comma, or with another decimal.")
                    .arg(heading.column->heading, text));
        return QString(text).replace(u',', u'.');
    }

    void addProblems(const Objections& objections) {
        for (const Objection& objection : objections) {
            const auto* column = std::ranges::find_if(
                columns, [&](const Column& one) { return objection.box == QLatin1String(one.box); });
            tank.problems.append((column == columns.end() ? objection.box : QString(column->heading)) + ": " +
                                 objection.text);
        }
    }

    void takeTank(double atmosphere) {
        if (boxes.value("txtAtmPressure").isEmpty())
            boxes.insert("txtAtmPressure", shownNumber(atmosphere));
        if (boxes.value("cmboFluidType").isEmpty())
            boxes.insert("cmboFluidType", toQString(fluidLimits.front().fluid));
        boxes.insert(ConditionRules::hiddenBoxes(*tank.application));
        QString& fluid = boxes["cmboFluidType"];
        const auto* row = std::ranges::find_if(fluidLimits, [&](const FluidLimits& one) {
            return toQString(one.fluid).compare(fluid, Qt::CaseInsensitive) == 0;
        });
        if (row == fluidLimits.end())
            return tank.problems.append("Fluid: " + fluid + " is not known.");
        fluid = toQString(row->fluid);
        addProblems(ConditionRules::objectionsTo(boxes, *tank.application));
        if (tank.isGood())
            tank.line = ConditionRules::lineOf(boxes);
    }

    void takeShock() {
        addProblems(ShockSizing::objectionsTo(boxes));
        if (!tank.isGood())
            return;
        try {
            const ShockConditions conditions = ShockSizing::conditionsIn(boxes);
            std::optional<std::string_view> objection;
            tank.line = ShockSizing::lineOf(conditions, boxes.value("PipeIndex"),
                                            ShockSizing::sizesOf(conditions, objection));
            tank.bore = conditions.bore;
            if (objection)
                tank.problems.append(toQString(*objection));
        } catch (const DatabaseFault&) {
            throw;
        } catch (const Fault& fault) {
            tank.problems.append(QStringLiteral("These conditions cannot be sized: %1.").arg(fault.what()));
        }
    }

    void takeSeries() {
        const QString series = named.value("Series").toUpper();
        if (series.isEmpty() || !tank.application || tank.line.tankClass == series)
            return;
        const auto* row = std::ranges::find(allSeries, series.toStdString(), &Series::code);
        if (row == allSeries.end() || row->application != *tank.application)
            tank.problems.append(
                QStringLiteral("Series: %1 is none of %2.").arg(series, AppName(*tank.application)));
        else
            tank.line.tankClass = series;
    }

    void takeTag() {
        const QString tag = named.value("Tag");
        if (tag.isEmpty())
            return;
        static const int longest = Records::tankLineTextSize("TagID01");
        if (tag.size() > longest)
            tank.problems.append(QStringLiteral("Tag: longer than %1 characters.").arg(longest));
        else
            tank.line.tags[0] = tag;
    }

    const std::vector<Heading>& headings;
    bool decimalCommas;
    QHash<QString, QString> boxes;
    QHash<QString, QString> named;
    ImportedTank tank;
};

} // namespace

Systems systemsIn(const QString& text, double atmosphere) {
    const TextTable table = TextTable::read(text);
    Systems systems;
    if (table.headings.isEmpty())
        systems.problems.append("There is nothing to read.");
    if (table.unfinishedQuotes)
        systems.problems.append("A quoted cell has no end.");
    std::vector<Heading> headings;
    for (const QString& heading : table.headings) {
        headings.push_back(heading.isEmpty() ? Heading() : headingOf(heading, systems.problems));
        const Column* column = headings.back().column;
        if (column && std::ranges::count(headings, column, &Heading::column) > 1)
            systems.problems.append(QStringLiteral("The column \"%1\" is there twice.").arg(column->heading));
    }
    if (!systems.problems.isEmpty())
        return systems;
    if (std::ranges::none_of(headings, [](const Heading& one) { return one.column == &columns.front(); }))
        systems.problems.append("The column \"Application\" is missing.");
    else
        for (const TextTable::Row& row : table.rows)
            systems.tanks.push_back(RowReader(row, headings, table.decimalCommas).read(atmosphere));
    return systems;
}

QString sample() {
    return QStringLiteral(
        "Application,Series,Tag,Fluid,Volume [gal],Minimum temperature [°F],Maximum temperature [°F],"
        "Minimum pressure [psig],Maximum pressure [psig],Atmospheric pressure [psia],Pipe,Pipe length [ft],"
        "Flow rate [gpm],Flow pressure [psig],Static pressure [psig],Shock pressure [psig]\r\n"
        "Expansion Tank,RCB,ET-1,Water,1000,50,200,12,30,14.7,,,,,,\r\n"
        "Thermal Expansion Tank,GWB,TE-1,,200,50,140,55,120,14.7,,,,,,\r\n"
        "Hydropneumatic Tank,JW,HT-1,,50,,,40,60,14.7,,,,,,\r\n"
        "Shock Arrestor Tank,,SA-1,,,,,,,,2 in Sch 40,200,100,40,60,225\r\n");
}

} // namespace ConditionTable
