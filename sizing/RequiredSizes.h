#pragma once

#include <optional>
#include <string_view>

/// What a tank line asks for. Temperatures in °F, gauge pressures in psig, the atmosphere in psia.
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

/// The column of the water table for a minimum temperature in °F: the next step of 5 from 40 to 100.
int ExpansionColumn(double minimumTemperature);

/// Specific volume of a glycol mixture at a temperature in °F, relative to water; nothing for another fluid.
/// The polynomials are correlations of the makers of the glycols.
std::optional<double> SpecVol(std::string_view fluid, double temperature);

/// Expansion factor of a fluid other than water between two temperatures in °F, to five decimals.
/// An unknown fluid counts as one that grows by half.
double FluidExpansionFactor(std::string_view fluid, double minimumTemperature, double maximumTemperature);

/// Share of a tank that can be filled between the two pressures (Boyle's law), to four decimals. A plain
/// steel tank, whose air is not precharged, starts from the atmosphere. Throws Fault 11 or 6.
double AcceptanceFactor(const SystemConditions& conditions, bool plainSteel);

/// Sizes for an expansion or thermal tank. Throws Fault 11 when the acceptance factor is 0.
RequiredSizes ExpansionTankSizes(const SystemConditions& conditions, double expansionFactor,
                                 double acceptanceFactor);

/// Sizes for a hydropneumatic tank, whose drawdown is its acceptance. Throws Fault 11 as above.
RequiredSizes HydropneumaticTankSizes(const SystemConditions& conditions, double acceptanceFactor);

/// Sizes of the bladder tank that replaces a plain steel tank, in whole gallons. Throws Fault 11 or 6.
RequiredSizes ConvertedTankSizes(const SystemConditions& conditions);
