#include "sizing/RequiredSizes.h"

#include "core/base/Applications.h"
#include "core/base/Numbers.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr GlycolCorrelation correlations[] = {
    {"10% Ethylene Glycol", 8.6, 3.58, -5, .9985},    {"20% Ethylene Glycol", 8.4, 5.26, -5, .9992},
    {"30% Ethylene Glycol", 8.2, 7.02, -5, 1.0},      {"40% Ethylene Glycol", 8.2, 8.37, -5, 1.001},
    {"50% Ethylene Glycol", 8.0, 1.0252, -4, 1.0031}, {"10% Propylene Glycol", 8.9, 4.11, -5, .9982},
    {"20% Propylene Glycol", 8.9, 7.215, -5, .9989},  {"30% Propylene Glycol", 8.9, 1.0295, -4, .9997},
    {"40% Propylene Glycol", 8.9, 1.308, -4, 1.0011}, {"50% Propylene Glycol", 9.4, 1.505, -4, 1.0042},
};

/// Rounded to a number of decimals, and raised to the smallest size.
RequiredSizes finished(const RequiredSizes& sizes, int decimals) {
    return {std::max(Round(sizes.volume, decimals), smallestSize),
            std::max(Round(sizes.acceptance, decimals), smallestSize)};
}

} // namespace

int expansionColumn(double minimumTemperature) {
    int column = 40;
    while (column < 100 && minimumTemperature > column)
        column += 5;
    return column;
}

std::optional<GlycolCorrelation> correlationOf(std::string_view fluid) {
    const auto* row = std::ranges::find(correlations, fluid, &GlycolCorrelation::fluid);
    return row == std::end(correlations) ? std::nullopt : std::optional(*row);
}

std::optional<double> SpecVol(std::string_view fluid, double temperature) {
    const auto row = correlationOf(fluid); // a and b times their powers of ten, multiplied at run time
    if (!row)
        return std::nullopt;
    return row->a * std::pow(10.0, -7) * std::pow(temperature, 2) +
           row->b * std::pow(10.0, row->bPower) * temperature + row->c;
}

double unroundedFluidExpansionFactor(std::string_view fluid, double minimumTemperature,
                                     double maximumTemperature) {
    const double cold = SpecVol(fluid, minimumTemperature).value_or(1.0);
    const double hot = SpecVol(fluid, maximumTemperature).value_or(1.5);
    return Divide(hot - cold, cold);
}

double fluidExpansionFactor(std::string_view fluid, double minimumTemperature, double maximumTemperature) {
    return Round(unroundedFluidExpansionFactor(fluid, minimumTemperature, maximumTemperature), 5);
}

double unroundedAcceptanceFactor(const SystemConditions& conditions, bool plainSteel) {
    const double atmosphere = conditions.atmosphericPressure;
    const double low = atmosphere + conditions.minimumPressure;
    const double high = atmosphere + conditions.maximumPressure;
    return plainSteel ? Divide(atmosphere, low) - Divide(atmosphere, high) : 1 - Divide(low, high);
}

double acceptanceFactor(const SystemConditions& conditions, bool plainSteel) {
    return Round(unroundedAcceptanceFactor(conditions, plainSteel), 4);
}

double waterTaken(const SystemConditions& conditions, bool plainSteel, double tankVolume, double mostWater) {
    const double water = tankVolume * unroundedAcceptanceFactor(conditions, plainSteel);
    return plainSteel ? water : std::min(water, mostWater);
}

RequiredSizes unroundedExpansionTankSizes(const SystemConditions& conditions, double expansionFactor,
                                          double acceptanceFactor) {
    const double expanded = conditions.volume * expansionFactor;
    return {Divide(expanded, acceptanceFactor), expanded};
}

RequiredSizes expansionTankSizes(const SystemConditions& conditions, double expansionFactor,
                                 double acceptanceFactor) {
    return finished(unroundedExpansionTankSizes(conditions, expansionFactor, acceptanceFactor), 4);
}

RequiredSizes unroundedHydropneumaticTankSizes(const SystemConditions& conditions, double acceptanceFactor) {
    return {Divide(conditions.volume, acceptanceFactor), conditions.volume};
}

RequiredSizes hydropneumaticTankSizes(const SystemConditions& conditions, double acceptanceFactor) {
    return finished(unroundedHydropneumaticTankSizes(conditions, acceptanceFactor), 4);
}

double reserve(double offered, double required) {
    return (offered / required - 1) * 100;
}

double steelTankRatio(const SystemConditions& conditions) {
    const double atmosphere = conditions.atmosphericPressure;
    return Divide(atmosphere, atmosphere + conditions.minimumPressure);
}

RequiredSizes convertedTankSizes(const SystemConditions& conditions) {
    const double size = steelTankRatio(conditions) * conditions.volume;
    return finished({size, size}, 0);
}
