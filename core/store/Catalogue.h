#pragma once

#include "core/store/Gateway.h"

#include <vector>

namespace Catalogue {

/// A pipe of the catalogue by its U.S. key. Throws DatabaseFault.
Gateway::Rows ReadPipe(const QString& pipeIndex);

/// The bore of a pipe in inches; 0 when the catalogue has no such key. Throws DatabaseFault.
double PipeBore(const QString& pipeIndex);

/// A size of pipe by its keys.
struct PipeSize {
    QString pipeIndex;
    QString metricIndex;
    double bore; // in
};
/// The pipes of a schedule, "40", "80" or "Cu". Throws DatabaseFault.
std::vector<PipeSize> PipesOf(const QString& schedule);

/// The factor of the pressure table for two band values in psig; 0 when it has no row for them. Throws
/// DatabaseFault.
double ReadPressureFactor(double shockBand, double staticBand);

/// The expansion of water to a maximum temperature in °F, from the table's column for a minimum one; 0 above
/// its last row. Throws DatabaseFault.
double ReadExpansionFactor(int column, double maximumTemperature);

/// Inches as whole number and fraction with the inch mark, such as 1-1/4"; a value below one stays decimal
/// (.5"). Throws DatabaseFault.
QString FractionConversion(double value);

} // namespace Catalogue
