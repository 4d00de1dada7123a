#pragma once

#include "sizing/ModelSearch.h"

#include <QString>

/// The searches of the catalogue for a series. Sizes in gallons; each opens and closes its own connection.
/// They throw DatabaseFault.

/// Options that reach the required volume and the required acceptance.
std::vector<TankOption> FindModels(const QString& series, double requiredVolume, double requiredAcceptance);

/// Options for the replacement of a steel tank: those that reach the volume alone.
std::vector<TankOption> FindConvertedModels(const QString& series, double requiredVolume);

/// Options for a shock arrestor tank on a pipe whose bore is given in inches: their joint volume reaches the
/// required one, and with n tanks side by side the connection of each 0.47 bores over the root of n.
std::vector<TankOption> FindShockModels(const QString& series, double requiredVolume, double bore);
