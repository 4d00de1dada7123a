#include "calculation/SizingSteps.h"

#include "core/base/Text.h"
#include "core/store/Catalogue.h"
#include "sizing/FluidLimits.h"
#include "sizing/TankSizing.h"

#include <cmath>

using namespace Formulas;
using namespace SiValues;

namespace {

const QString boyle = QStringLiteral("Boyle's law, absolute pressures");

void addConditions(Worksheet& sheet, const SizedTank& tank) {
    sheet.section("Conditions");
    const TankLine& line = tank.line;
    const bool drawdown = tank.application == Application::Hydropneumatic;
    if (!drawdown)
        sheet.say("Fluid", line.sysFluidType.value_or(QString()));
    sheet.condition(drawdown ? "Drawdown" : "System volume", drawdown ? "D" : "V", line.totSysVolume, "gal",
                    liters);
    if (!drawdown) {
        sheet.condition("Minimum temperature", "T_min", line.sotMin, "°F", celsius);
        sheet.condition("Maximum temperature", "T_max", line.sotMax, "°F", celsius);
    }
    sheet.condition("Minimum operating pressure", "P_min", line.sopMin, "psig", kilopascals);
    sheet.condition("Maximum operating pressure", "P_max", line.sopMax, "psig", kilopascals);
    sheet.condition("Atmospheric pressure", "P_a", line.atmPressure, "psia", kilopascals);
}

void addWaterFactor(Worksheet& sheet, const SystemConditions& conditions) {
    const int column = expansionColumn(conditions.minimumTemperature);
    const auto found = Catalogue::readExpansion(column, conditions.maximumTemperature);
    if (!found) {
        sheet.step("Expansion factor", "E = 0",
                   "The table of water ends below " + figure(conditions.maximumTemperature) + " °F.");
        return;
    }
    QStringList raised;
    if (conditions.minimumTemperature < column)
        raised.append("T_min raised to the next column");
    if (conditions.maximumTemperature < found->row)
        raised.append(raised.isEmpty() ? "T_max raised to the next row" : "T_max to the next row");
    if (conditions.minimumTemperature > column)
        raised.prepend("the last column, T_min is above it");
    sheet.step("Expansion factor", "E = " + figure(found->factor),
               "Table of water, column " + QString::number(column) + " °F, row " + figure(found->row) +
                   " °F" + (raised.isEmpty() ? QString() : ": " + raised.join(", ")));
}

void addGlycolFactor(Worksheet& sheet, const QString& fluid, const SystemConditions& conditions,
                     double factor) {
    const auto correlation = correlationOf(fluid.toStdString());
    if (!correlation) {
        sheet.step("Expansion factor", "E = " + figure(factor),
                   "A fluid that is neither water nor one of the glycols counts with this factor.");
        return;
    }
    const auto power = [](double mantissa, int exponent) {
        return figure(mantissa) + " * 10^" + QString::number(exponent);
    };
    const auto volume = [&](const QString& caption, Id id, const char* symbol, double at) {
        sheet.step(caption,
                   worked(id,
                          {{"A", power(correlation->a, -7)},
                           {"B", power(correlation->b, correlation->bPower)},
                           {symbol, operand(at)},
                           {"C", figure(correlation->c)}},
                          SpecVol(correlation->fluid, at).value_or(0), {}),
                   "Correlation of the mixture, relative to itself when cold");
        return SpecVol(correlation->fluid, at).value_or(0);
    };
    const double cold =
        volume("Specific volume, cold", Id::SpecificVolumeCold, "T_min", conditions.minimumTemperature);
    const double hot =
        volume("Specific volume, hot", Id::SpecificVolumeHot, "T_max", conditions.maximumTemperature);
    sheet.step("Expansion factor",
               worked(Id::FluidFactor, {{"v_min", figure(cold)}, {"v_max", figure(hot)}}, factor, {},
                      unroundedFluidExpansionFactor(correlation->fluid, conditions.minimumTemperature,
                                                    conditions.maximumTemperature)));
}

double addAcceptanceFactor(Worksheet& sheet, const SizedTank& tank, const SystemConditions& conditions) {
    sheet.section("Acceptance factor");
    const auto absolute = [&](const QString& caption, const QString& symbol, const QString& gauge,
                              double value) {
        const double sum = conditions.atmosphericPressure + value;
        sheet.step(caption,
                   symbol + " = P_a + " + gauge + " = " + operand(conditions.atmosphericPressure) + " + " +
                       operand(value) + " = " + figure(sum) + " \"psia\"",
                   {}, kilopascals(sum));
    };
    absolute("Minimum, absolute", "P_1", "P_min", conditions.minimumPressure);
    absolute("Maximum, absolute", "P_2", "P_max", conditions.maximumPressure);
    const bool steel = TankSizing::isPlainSteel(tank.series());
    const double factor = acceptanceFactor(conditions, steel);
    sheet.step("Acceptance factor",
               worked(steel ? Id::SteelAcceptanceFactor : Id::AcceptanceFactor, pressuresOf(conditions),
                      factor, {}, unroundedAcceptanceFactor(conditions, steel)),
               steel ? boyle + ", from atmospheric pressure" : boyle);
    return factor;
}

void compareSizes(Worksheet& sheet, const SizedTank& tank) {
    compare(sheet, "required acceptance", tank.line.requiredAcceptance, tank.sizes->acceptance, "gal");
    compare(sheet, "required volume", tank.line.requiredVolume, tank.sizes->volume, "gal");
}

} // namespace

Values pressuresOf(const SystemConditions& conditions) {
    return {{"P_a", operand(conditions.atmosphericPressure)},
            {"P_min", operand(conditions.minimumPressure)},
            {"P_max", operand(conditions.maximumPressure)}};
}

void compare(Worksheet& sheet, const QString& name, const std::optional<double>& stored, double computed,
             const QString& unit, double tolerance) {
    if (!stored)
        return sheet.warn("The line has no " + name + "; its conditions give " + figure(computed) + ' ' +
                          unit + '.');
    if (std::abs(*stored - computed) > tolerance)
        sheet.warn("The stored " + name + " is " + figure(*stored) + ' ' + unit +
                   ", but the stored conditions and this catalogue give " + figure(computed) + ' ' + unit +
                   '.');
}

void addTankSteps(Worksheet& sheet, SizedTank& tank) {
    const SystemConditions conditions = TankSizing::conditionsOf(tank.line);
    addConditions(sheet, tank);
    const bool drawdown = tank.application == Application::Hydropneumatic;
    const double expansion = drawdown ? 0 : TankSizing::expansionFactor(tank.line);
    if (!drawdown) {
        sheet.section("Expansion");
        if (const QString fluid = tank.line.sysFluidType.value_or(QString()); fluid == waterFluid)
            addWaterFactor(sheet, conditions);
        else
            addGlycolFactor(sheet, fluid, conditions, expansion);
    }
    if (tank.series().isEmpty())
        return sheet.say("Required sizes", "No series has been chosen yet.");
    const double acceptance = addAcceptanceFactor(sheet, tank, conditions);
    sheet.section("Required sizes");
    tank.sizes = TankSizing::sizesOf(tank.line, *tank.application, tank.series());
    const RequiredSizes unrounded = drawdown ? unroundedHydropneumaticTankSizes(conditions, acceptance)
                                             : unroundedExpansionTankSizes(conditions, expansion, acceptance);
    const Values values{{drawdown ? "D" : "V", operand(conditions.volume)},
                        {"E", operand(expansion)},
                        {"AF", operand(acceptance)}};
    sheet.step("Required acceptance",
               worked(drawdown ? Id::Drawdown : Id::ExpansionAcceptance, values, tank.sizes->acceptance,
                      "gal", unrounded.acceptance),
               "Rounded to four decimals, halves to even, at least 0.1 gal", liters(tank.sizes->acceptance));
    sheet.step("Required volume",
               worked(drawdown ? Id::DrawdownVolume : Id::ExpansionVolume, values, tank.sizes->volume, "gal",
                      unrounded.volume),
               "Rounded to four decimals, halves to even, at least 0.1 gal", liters(tank.sizes->volume));
    compareSizes(sheet, tank);
}

void addConversionSteps(Worksheet& sheet, SizedTank& tank) {
    const SystemConditions conditions = TankSizing::conditionsOf(tank.line);
    sheet.section("Conditions");
    sheet.condition("Volume of the steel tank", "V", tank.line.totSysVolume, "gal", liters);
    sheet.condition("Minimum operating pressure", "P_min", tank.line.sopMin, "psig", kilopascals);
    sheet.condition("Atmospheric pressure", "P_a", tank.line.atmPressure, "psia", kilopascals);
    if (tank.series().isEmpty())
        return sheet.say("Required size", "No series has been chosen yet.");
    sheet.section("Required size");
    tank.sizes = convertedTankSizes(conditions);
    const double ratio = steelTankRatio(conditions);
    Values values = pressuresOf(conditions);
    sheet.step("Share filled by air", worked(Id::SteelRatio, values, ratio, {}),
               boyle + ": the air of the steel tank at the minimum pressure");
    values.append({"V", operand(conditions.volume)});
    sheet.step("Required volume",
               worked(Id::ConvertedVolume, values, tank.sizes->volume, "gal", ratio * conditions.volume),
               "In whole gallons, halves to even; also stored as the required acceptance",
               liters(tank.sizes->volume));
    compareSizes(sheet, tank);
}
