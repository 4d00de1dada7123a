#pragma once

#include <optional>
#include <string_view>

/// The requirements of a tank line. Temperatures in °F, gauge pressures in psig, the atmosphere in psia.
struct SystemConditions {
    double minimumTemperature = 0;
    double maximumTemperature = 0;
    double minimumPressure = 0;
    double maximumPressure = 0;
    double atmosphericPressure = 0;
    double volume =
        0; // gal: system fluid, for hydropneumatic tanks the drawdown, for a conversion the steel tank
};

/// Required sizes in gallons.
struct RequiredSizes {
    double volume = 0;
    double acceptance = 0;
};

/// What tanks offer beyond what is required, in per cent of that; both in gallons, `required` above 0.
double reserve(double offered, double required);

/// The column of the water table for a minimum temperature in °F: the next step of 5, from 40 to 100.
int expansionColumn(double minimumTemperature);

/// The specific volume of a glycol mixture at t °F, relative to itself when cold: a x 10^-7 x t^2 + b x
/// 10^bPower x t + c.
struct GlycolCorrelation {
    std::string_view fluid;
    double a;
    double b;
    int bPower;
    double c;
};
/// The correlation of a glycol mixture; nothing for other fluids.
std::optional<GlycolCorrelation> correlationOf(std::string_view fluid);

/// The specific volume of a glycol mixture at a temperature in °F, relative to itself when cold; nothing
/// for other fluids.
std::optional<double> SpecVol(std::string_view fluid, double temperature);

/// The expansion factor of a fluid other than water between two temperatures in °F, to five decimals. An
/// unknown fluid is assumed to grow by half.
double fluidExpansionFactor(std::string_view fluid, double minimumTemperature, double maximumTemperature);

/// The same before it is rounded.
double unroundedFluidExpansionFactor(std::string_view fluid, double minimumTemperature,
                                     double maximumTemperature);

/// The fraction of a tank that can fill between the two pressures (Boyle's law), to four decimals. A plain
/// steel tank has no precharge and starts from atmospheric pressure. Throws Fault 11 or 6.
double acceptanceFactor(const SystemConditions& conditions, bool plainSteel);
/// The same before it is rounded.
double unroundedAcceptanceFactor(const SystemConditions& conditions, bool plainSteel);

/// The water in gallons that tanks take between the two pressures (Boyle's law), as long as a bladder or
/// diaphragm holds that much: `mostWater` gallons, which does not count for a plain steel tank. Throws as
/// above.
double waterTaken(const SystemConditions& conditions, bool plainSteel, double tankVolume, double mostWater);

/// Sizes an expansion or thermal tank. Throws Fault 11 when the acceptance factor is 0.
RequiredSizes expansionTankSizes(const SystemConditions& conditions, double expansionFactor,
                                 double acceptanceFactor);
/// The same before they are rounded and raised to the smallest size.
RequiredSizes unroundedExpansionTankSizes(const SystemConditions& conditions, double expansionFactor,
                                          double acceptanceFactor);

/// Sizes a hydropneumatic tank, whose acceptance is its drawdown. Throws Fault 11 as above.
RequiredSizes hydropneumaticTankSizes(const SystemConditions& conditions, double acceptanceFactor);
/// The same before they are rounded and raised to the smallest size.
RequiredSizes unroundedHydropneumaticTankSizes(const SystemConditions& conditions, double acceptanceFactor);

/// Sizes the bladder tank that replaces a plain steel tank, in whole gallons. Throws Fault 11 or 6.
RequiredSizes convertedTankSizes(const SystemConditions& conditions);
/// The share of a plain steel tank that its air fills at the minimum pressure. Throws as above.
double steelTankRatio(const SystemConditions& conditions);
