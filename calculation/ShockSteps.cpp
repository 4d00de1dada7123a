#include "calculation/SizingSteps.h"
#include "core/base/Numbers.h"
#include "shock/ShockSizing.h"

using namespace Formulas;
using namespace SiValues;

namespace {

void addConditions(Worksheet& sheet, const TankLine& line, const ShockConditions& conditions) {
    sheet.section("Conditions");
    sheet.step("Bore of the pipe", given("ID", conditions.bore, "in"),
               "Catalogue, pipe " + line.pipeIndex.value_or(QString()), millimeters(conditions.bore));
    sheet.condition("Length of the pipe", "L", line.pipeLength, "ft", meters);
    sheet.condition("Flow rate", "Q", line.flowRate, "gpm", litersPerSecond);
    sheet.condition("Flow pressure", "P_f", line.flowPressure, "psig", kilopascals);
    sheet.condition("Static pressure", "P_s", line.staticPressure, "psig", kilopascals);
    sheet.condition("Shock pressure", "P_k", line.shockPressure, "psig", kilopascals);
    sheet.condition("Atmospheric pressure", "P_a", line.atmPressure, "psia", kilopascals);
}

/// The bands and the factor that is read for them.
double addPressureFactor(Worksheet& sheet, const ShockConditions& conditions) {
    sheet.section("Pressure factor");
    const double shock = shockPressureBand(conditions.shockPressure);
    const double still = staticPressureBand(conditions.staticPressure);
    const auto band = [&](const QString& caption, const QString& symbol, double entered, double top) {
        sheet.step(caption, given(symbol, top, "psig"),
                   top == entered ? "As entered"
                                  : "Raised from " + figure(entered) + " psig to the top of its band",
                   kilopascals(top));
    };
    band("Shock pressure, as looked up", "P_kt", conditions.shockPressure, shock);
    band("Static pressure, as looked up", "P_st", conditions.staticPressure, still);
    const double factor = ShockSizing::pressureFactor(shock, still);
    if (tableHasPressureFactor(shock, still))
        sheet.step("Pressure factor", given("F", factor, "ft·lbf/ft³"),
                   "Table of pressure factors, row " + figure(shock) + " psig, column " + figure(still) +
                       " psig",
                   kilojoulesPerCubicMeter(factor));
    else
        sheet.step("Pressure factor",
                   worked(Id::PressureFactor, {{"P_kt", operand(shock)}, {"P_st", operand(still)}}, factor,
                          "ft·lbf/ft³"),
                   "Fitted polynomial above the table", kilojoulesPerCubicMeter(factor));
    return factor;
}

} // namespace

void addShockSteps(Worksheet& sheet, SizedTank& tank) {
    const ShockConditions conditions = ShockSizing::conditionsOf(tank.line);
    addConditions(sheet, tank.line, conditions);
    const double acceptance = shockAcceptanceFactor(conditions.flowPressure, conditions.staticPressure,
                                                    conditions.atmosphericPressure);
    const double factor = ShockSizing::pressureFactor(shockPressureBand(conditions.shockPressure),
                                                      staticPressureBand(conditions.staticPressure));
    const ShockSizes sizes = computeShockSizes(conditions, factor);
    tank.sizes = RequiredSizes{Round(sizes.requiredVolume, storedDecimals),
                               Round(sizes.requiredAcceptance, storedDecimals)};

    sheet.section("Velocity and energy");
    sheet.step("Water velocity",
               worked(Id::Velocity, {{"Q", operand(conditions.flowRate)}, {"ID", operand(conditions.bore)}},
                      sizes.waterVelocity, "ft/s"),
               "Stored to eight decimals, as are the energies and the required sizes",
               metersPerSecond(sizes.waterVelocity));
    sheet.step("Kinetic energy",
               worked(Id::KineticEnergy,
                      {{"ID", operand(conditions.bore)}, {"v", operand(sizes.waterVelocity)}},
                      sizes.kineticEnergy, "ft·lbf/ft"),
               "A foot of pipe; pi as 22/7, half the density of water (0.97 lbf·s²/ft⁴) as 1",
               joulesPerMeter(sizes.kineticEnergy));
    sheet.step("Total kinetic energy",
               worked(Id::TotalEnergy,
                      {{"L", operand(conditions.length)}, {"e", operand(sizes.kineticEnergy)}},
                      sizes.totalKineticEnergy, "ft·lbf"),
               {}, joules(sizes.totalKineticEnergy));
    addPressureFactor(sheet, conditions);

    sheet.section("Required sizes");
    sheet.step("Acceptance factor",
               worked(Id::ShockAcceptanceFactor,
                      {{"P_f", operand(conditions.flowPressure)},
                       {"P_s", operand(conditions.staticPressure)},
                       {"P_a", operand(conditions.atmosphericPressure)}},
                      acceptance, {}),
               "Boyle's law, pressures as entered; the tank is charged to nine tenths of the flow pressure");
    sheet.step("Required acceptance",
               worked(Id::ShockAcceptance,
                      {{"e_tot", operand(sizes.totalKineticEnergy)}, {"F", operand(factor)}},
                      sizes.requiredAcceptance, "gal"),
               "7.48 gal in a cubic foot", liters(sizes.requiredAcceptance));
    sheet.step("Required volume",
               worked(Id::ShockVolume,
                      {{"V_acc", operand(sizes.requiredAcceptance)}, {"AF", operand(acceptance)}},
                      sizes.requiredVolume, "gal"),
               {}, liters(sizes.requiredVolume));

    const TankLine& line = tank.line;
    compare(sheet, "water velocity", line.waterVelocity, sizes.waterVelocity, "ft/s", halfStoredDecimal);
    compare(sheet, "kinetic energy", line.kineticEnergy, sizes.kineticEnergy, "ft·lbf/ft", halfStoredDecimal);
    compare(sheet, "total kinetic energy", line.totalKineticEnergy, sizes.totalKineticEnergy, "ft·lbf",
            halfStoredDecimal);
    compare(sheet, "required acceptance", line.requiredAcceptance, sizes.requiredAcceptance, "gal",
            halfStoredDecimal);
    compare(sheet, "required volume", line.requiredVolume, sizes.requiredVolume, "gal", halfStoredDecimal);
}
