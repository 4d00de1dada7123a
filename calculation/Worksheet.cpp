#include "calculation/Worksheet.h"

#include "core/base/Fault.h"
#include "core/base/Text.h"

void Worksheet::add(const char* band, ReportRow row) {
    row.insert("Band", QString::fromLatin1(band));
    row.insert("Group", group);
    others.push_back(std::move(row));
}

void Worksheet::warn(const QString& text) {
    warnings.push_back({{"Band", "warning"}, {"Group", QStringLiteral("Check first")}, {"Text", text}});
}

void Worksheet::warnOfFault(const QString& what, const std::function<void()>& steps) {
    try {
        steps();
    } catch (const DatabaseFault&) {
        throw;
    } catch (const Fault& fault) {
        warn(what + ": " + QString::fromUtf8(fault.what()) + '.');
    }
}

void Worksheet::say(const QString& caption, const QString& text) {
    add("words", {{"Caption", caption}, {"Text", text}});
}

void Worksheet::step(const QString& caption, const QString& formula, const QString& source,
                     const QString& si) {
    add(source.isEmpty() ? "given" : "step",
        {{"Caption", caption}, {"Formula", formula}, {"Source", source}, {"Si", si}});
}

void Worksheet::condition(const QString& caption, const QString& symbol, const std::optional<double>& stored,
                          const QString& unit, QString (*convert)(double)) {
    const double value = stored.value_or(0);
    step(caption, Formulas::given(symbol, value, unit),
         stored ? QString() : QStringLiteral("Not stored; it counts as 0."), convert(value));
}

void Worksheet::asked(const QString& quantity, const QString& question, const QString& answer) {
    add("search", {{"Caption", quantity}, {"Text", question}, {"Answer", answer}});
}

void Worksheet::curve() {
    add("curve", {});
}

std::vector<ReportRow> Worksheet::rows() const {
    std::vector<ReportRow> all = warnings;
    all.insert(all.end(), others.begin(), others.end());
    return all;
}

namespace SiValues {

namespace {

QString significant(double value, const char* unit) {
    constexpr int digits = 5;
    return shownNumber(QString::number(value, 'g', digits).toDouble()) + u' ' + unit;
}

// Exact, from the inch of 25.4 mm, the gallon of 231 in3, the pound of .45359237 kg and 9.80665 m/s2.
constexpr double litersInGallon = 3.785411784;
constexpr double metersInFoot = .3048;
constexpr double millimetersInInch = 25.4;
constexpr double secondsInMinute = 60;
constexpr double joulesInFootPound = 1.3558179483314004;
constexpr double kilopascalsInPsi = 6.894757293168361;

} // namespace

QString liters(double gallons) {
    return significant(gallons * litersInGallon, "L");
}
QString kilopascals(double psi) {
    return significant(psi * kilopascalsInPsi, "kPa");
}
QString celsius(double fahrenheit) {
    return significant((fahrenheit - 32) / 1.8, "°C");
}
QString meters(double feet) {
    return significant(feet * metersInFoot, "m");
}
QString millimeters(double inches) {
    return significant(inches * millimetersInInch, "mm");
}
QString metersPerSecond(double feetPerSecond) {
    return significant(feetPerSecond * metersInFoot, "m/s");
}
QString litersPerSecond(double gallonsPerMinute) {
    return significant(gallonsPerMinute * litersInGallon / secondsInMinute, "L/s");
}
QString joules(double footPounds) {
    return significant(footPounds * joulesInFootPound, "J");
}
QString joulesPerMeter(double footPoundsPerFoot) {
    return significant(footPoundsPerFoot * joulesInFootPound / metersInFoot, "J/m");
}
QString kilojoulesPerCubicMeter(double footPoundsPerCubicFoot) {
    return significant(footPoundsPerCubicFoot * joulesInFootPound /
                           (metersInFoot * metersInFoot * metersInFoot) / 1000,
                       "kJ/m³");
}
QString squareMillimeters(double squareInches) {
    return significant(squareInches * millimetersInInch * millimetersInInch, "mm²");
}

} // namespace SiValues
