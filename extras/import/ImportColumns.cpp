#include "extras/import/ImportColumns.h"

#include "estimates/MetricConversions.h"

#include <QRegularExpression>

#include <algorithm>

using namespace MetricConversions;

namespace ImportColumns {

namespace {

constexpr double bar = 100;                      // kPa
constexpr double megapascal = 1000;              // kPa
constexpr double millibar = .1;                  // kPa
constexpr double cubicMetre = 1000;              // L
constexpr double litrePerSecond = 60;            // L/min
constexpr double cubicMetrePerHour = 1000. / 60; // L/min
constexpr double millimetre = .001;              // m

const Unit units[] = {
    {Quantity::Volume, "|gal|gallon|gallons|usgal|"},
    {Quantity::Volume, "|l|liter|liters|litre|litres|", 1, LitersToGallons},
    {Quantity::Volume, "|m3|", cubicMetre, LitersToGallons},
    {Quantity::Temperature, "|f|"},
    {Quantity::Temperature, "|c|", 1, CelsiusToFahrenHeit},
    {Quantity::GaugePressure, "|psi|psig|psi(g)|"},
    {Quantity::GaugePressure, "|kpa|kpag|kpa(g)|", 1, kPaToPSI},
    {Quantity::GaugePressure, "|bar|barg|bar(g)|", bar, kPaToPSI},
    {Quantity::GaugePressure, "|mpa|", megapascal, kPaToPSI},
    {Quantity::AbsolutePressure, "|psi|psia|psi(a)|"},
    {Quantity::AbsolutePressure, "|kpa|kpaa|kpa(a)|", 1, kPaToPSI},
    {Quantity::AbsolutePressure, "|bar|bara|bar(a)|", bar, kPaToPSI},
    {Quantity::AbsolutePressure, "|mbar|hpa|", millibar, kPaToPSI},
    {Quantity::Length, "|ft|feet|"},
    {Quantity::Length, "|m|meter|meters|metre|metres|", 1, MetersToFeet},
    {Quantity::Length, "|mm|", millimetre, MetersToFeet},
    {Quantity::Flow, "|gpm|gal/min|"},
    {Quantity::Flow, "|l/min|lpm|", 1, LitersToGallons},
    {Quantity::Flow, "|l/s|", litrePerSecond, LitersToGallons},
    {Quantity::Flow, "|m3/h|", cubicMetrePerHour, LitersToGallons},
};

bool isAmong(const QString& text, const char* names) {
    return !text.isEmpty() && QString::fromUtf8(names).contains(u'|' + text + u'|');
}

/// Lower case, without points, with single blanks.
QString plain(const QString& text) {
    return QString(text).remove(u'.').replace(u'_', u' ').replace(u'-', u' ').simplified().toLower();
}

const Column* columnOf(const QString& text) {
    const QString wanted = plain(text);
    const auto found = std::ranges::find_if(all(), [&](const Column& column) {
        return plain(column.name) == wanted || isAmong(wanted, column.others);
    });
    return found == all().end() ? nullptr : &*found;
}

QString plainUnit(const QString& text) {
    static const QRegularExpression leftOut(QStringLiteral("[\\s.°º]|deg(rees)?"));
    return text.toLower().remove(leftOut).replace(QStringLiteral("³"), QStringLiteral("3"));
}

/// The units of a quantity as they are written, for a message.
QString unitsOf(Quantity quantity) {
    switch (quantity) {
    case Quantity::Volume:
        return "gal, L or m³";
    case Quantity::Temperature:
        return "°F or °C";
    case Quantity::GaugePressure:
        return "psig, kPa, bar or MPa, above the atmosphere";
    case Quantity::AbsolutePressure:
        return "psia, kPa, bar or mbar";
    case Quantity::Length:
        return "ft, m or mm";
    case Quantity::Flow:
        return "gpm, L/min, L/s or m³/h";
    case Quantity::Text:
        break;
    }
    return "none";
}

struct Parts {
    QString name;
    QString unit;
};

/// Splits "Volume [L]", "Volume (L)" or "Volume, L".
Parts partsOf(const QString& heading) {
    static const QRegularExpression forms[] = {
        QRegularExpression(QStringLiteral(R"(^([^\[]*)\[(.*)\]$)")),
        QRegularExpression(QStringLiteral(R"(^([^(]*)\((.*)\)$)")),
        QRegularExpression(QStringLiteral(R"(^([^,]*),(.*)$)")),
    };
    for (const QRegularExpression& form : forms)
        if (const auto match = form.match(heading); match.hasMatch())
            return {match.captured(1).trimmed(), match.captured(2).trimmed()};
    return {heading, {}};
}

} // namespace

const std::vector<Column>& all() {
    static const std::vector<Column> columns = {
        {"Tag", "Tag", "|unit tag|tag id|tags|", Quantity::Text},
        {"Application", "Application", "|tank|use|", Quantity::Text},
        {"Series", "Series", "|tank series|", Quantity::Text},
        {"cmboFluidType", "Fluid", "|fluid type|system fluid|", Quantity::Text},
        {"txtTotSysFluid", "Volume", "|system volume|total system fluid content|total system fluid|drawdown|",
         Quantity::Volume},
        {"txtSOTMin", "Minimum temperature", "|min temperature|min temp|temperature min|",
         Quantity::Temperature},
        {"txtSOTMax", "Maximum temperature", "|max temperature|max temp|temperature max|",
         Quantity::Temperature},
        {"txtSOPMin", "Minimum pressure", "|min pressure|pressure min|", Quantity::GaugePressure},
        {"txtSOPMax", "Maximum pressure", "|max pressure|pressure max|", Quantity::GaugePressure},
        {"txtAtmPressure", "Atmospheric pressure", "|atm pressure|atmosphere|", Quantity::AbsolutePressure},
        {"PipeIndex", "Pipe", "|pipe size|pipe index|", Quantity::Text},
        {"PipeLength", "Pipe length", "|length|length of pipe|", Quantity::Length},
        {"FlowRate", "Flow rate", "|flow|", Quantity::Flow},
        {"FlowPressure", "Flow pressure", "|", Quantity::GaugePressure},
        {"StaticPressure", "Static pressure", "|", Quantity::GaugePressure},
        {"ShockPressure", "Shock pressure", "|", Quantity::GaugePressure},
    };
    return columns;
}

const Column* named(const QString& box) {
    const auto found = std::ranges::find_if(all(), [&](const Column& column) { return box == column.box; });
    return found == all().end() ? nullptr : &*found;
}

Heading readHeading(const QString& text) {
    if (const Column* column = columnOf(text))
        return {.column = column};
    const Parts parts = partsOf(text);
    const Column* column = columnOf(parts.name);
    if (!column)
        return {.problem = QStringLiteral("There is no column \"%1\".").arg(text)};
    const QString wanted = plainUnit(parts.unit);
    const auto* unit = std::ranges::find_if(units, [&](const Unit& each) {
        return each.quantity == column->quantity && isAmong(wanted, each.names);
    });
    if (unit == std::end(units))
        return {.problem = QStringLiteral("\"%1\": the unit \"%2\" is unknown here (units: %3).")
                               .arg(text, parts.unit, unitsOf(column->quantity))};
    return {.column = column, .unit = unit->convert ? unit : nullptr};
}

QString headingOf(const Column& column) {
    const auto unit = [&]() -> QString {
        switch (column.quantity) {
        case Quantity::Volume:
            return "gal";
        case Quantity::Temperature:
            return "°F";
        case Quantity::GaugePressure:
            return "psig";
        case Quantity::AbsolutePressure:
            return "psia";
        case Quantity::Length:
            return "ft";
        case Quantity::Flow:
            return "gpm";
        case Quantity::Text:
            break;
        }
        return {};
    }();
    return unit.isEmpty() ? column.name : QStringLiteral("%1 [%2]").arg(column.name, unit);
}

} // namespace ImportColumns
