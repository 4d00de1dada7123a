#pragma once

#include "core/store/Gateway.h"

namespace UtilityFunctions {

/// A model of the catalogue by its name. Throws DatabaseFault.
Rows ReadModel(const QString& model);

/// A pipe of the catalogue by its U.S. key. Throws DatabaseFault.
Rows ReadPipe(const QString& pipeIndex);

/// The bore of a pipe in inches; 0 when the catalogue has no such key. Throws DatabaseFault.
double PipeBore(const QString& pipeIndex);

/// Inches as whole number and fraction with the inch mark, such as 1-1/4"; a value below one stays decimal
/// (.5"). Throws DatabaseFault.
QString FractionConversion(double value);

} // namespace UtilityFunctions
