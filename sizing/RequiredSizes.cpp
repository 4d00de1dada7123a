#include "sizing/RequiredSizes.h"

#include "core/base/Numbers.h"

#include <algorithm>
#include <cmath>

namespace {

/// A x t^2 + B x t + C, with A and B as mantissa and power of ten, multiplied at run time.
struct GlycolCorrelation {
    std::string_view fluid;
    double a;
    double b;
    int bPower;
    double c;
};

constexpr GlycolCorrelation correlations[] = {
    {"10% Ethylene Glycol", 8.6, 3.58, -5, .9985},    {"20% Ethylene Glycol", 8.4, 5.26, -5, .9992},
    {"30% Ethylene Glycol", 8.2, 7.02, -5, 1.0},      {"40% Ethylene Glycol", 8.2, 8.37, -5, 1.001},
    {"50% Ethylene Glycol", 8.0, 1.0252, -4, 1.0031}, {"10% Propylene Glycol", 8.9, 4.11, -5, .9982},
    {"20% Propylene Glycol", 8.9, 7.215, -5, .9989},  {"30% Propylene Glycol", 8.9, 1.0295, -4, .9997},
    {"40% Propylene Glycol", 8.9, 1.308, -4, 1.0011}, {"50% Propylene Glycol", 9.4, 1.505, -4, 1.0042},
};

constexpr double smallestSize = .1; // gal

RequiredSizes withFloors(RequiredSizes sizes) {
    return {std::max(sizes.volume, smallestSize), std::max(sizes.acceptance, smallestSize)};
}

} // namespace

int expansionColumn(double minimumTemperature) {
    int column = 40;
    while (column < 100 && minimumTemperature > column)
        column += 5;
    return column;
}

std::optional<double> SpecVol(std::string_view fluid, double temperature) {
    const auto* row = std::ranges::find(correlations, fluid, &GlycolCorrelation::fluid);
    if (row == std::end(correlations))
        return std::nullopt;
    return row->a * std::pow(10.0, -7) * std::pow(temperature, 2) +
           row->b * std::pow(10.0, row->bPower) * temperature + row->c;
}

double fluidExpansionFactor(std::string_view fluid, double minimumTemperature, double maximumTemperature) {
    const double cold = SpecVol(fluid, minimumTemperature).value_or(1.0);
    const double hot = SpecVol(fluid, maximumTemperature).value_or(1.5);
    return Round(Divide(hot - cold, cold), 5);
}

double acceptanceFactor(const SystemConditions& conditions, bool plainSteel) {
    const double atmosphere = conditions.atmosphericPressure;
    const double low = atmosphere + conditions.minimumPressure;
    const double high = atmosphere + conditions.maximumPressure;
    const double factor =
        plainSteel ? Divide(atmosphere, low) - Divide(atmosphere, high) : 1 - Divide(low, high);
    return Round(factor, 4);
}

RequiredSizes expansionTankSizes(const SystemConditions& conditions, double expansionFactor,
                                 double acceptanceFactor) {
    const double expanded = conditions.volume * expansionFactor;
    return withFloors({Round(Divide(expanded, acceptanceFactor), 4), Round(expanded, 4)});
}

RequiredSizes hydropneumaticTankSizes(const SystemConditions& conditions, double acceptanceFactor) {
    return withFloors({Round(Divide(conditions.volume, acceptanceFactor), 4), Round(conditions.volume, 4)});
}

RequiredSizes convertedTankSizes(const SystemConditions& conditions) {
    const double atmosphere = conditions.atmosphericPressure;
    const double size =
        Round(Divide(atmosphere, atmosphere + conditions.minimumPressure) * conditions.volume, 0);
    return withFloors({size, size});
}
