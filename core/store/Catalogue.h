#pragma once

#include "core/store/Gateway.h"

#include <vector>

namespace Catalogue {

/// A pipe of the catalogue by its U.S. key. Throws DatabaseFault.
Gateway::Rows readPipe(const QString& pipeIndex);

/// The bore of a pipe in inches; 0 if the catalogue has no such key. Throws DatabaseFault.
double pipeBore(const QString& pipeIndex);

/// A pipe size with its keys.
struct PipeSize {
    QString pipeIndex;
    QString metricIndex;
    double bore; // in
};
/// The pipes of a schedule: "40", "80" or "Cu". Throws DatabaseFault.
std::vector<PipeSize> pipesOf(const QString& schedule);

/// The factor in the pressure table for two bands in psig; 0 if the table has no such row. Throws
/// DatabaseFault.
double readPressureFactor(double shockBand, double staticBand);

/// The expansion of water up to a maximum temperature in °F, from the column for a minimum temperature; 0
/// above the last row. Throws DatabaseFault.
double readExpansionFactor(int column, double maximumTemperature);

/// Inches as a whole number and a fraction with the inch mark, such as 1-1/4"; values below one stay decimal
/// (.5"). Throws DatabaseFault.
QString FractionConversion(double value);

} // namespace Catalogue
