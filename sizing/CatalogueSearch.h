#pragma once

#include "sizing/ModelSearch.h"

#include <QString>

/// Searches the catalogue for a series. Sizes are in gallons. Each search opens and closes its own
/// connection, and notes its steps if wanted. All throw DatabaseFault.

/// Options that meet both the required volume and the required acceptance.
std::vector<TankOption> findModels(const QString& series, double requiredVolume, double requiredAcceptance,
                                   std::vector<SearchStep>* steps = nullptr);

/// Options to replace a steel tank: only the volume has to be met.
std::vector<TankOption> findConvertedModels(const QString& series, double requiredVolume,
                                            std::vector<SearchStep>* steps = nullptr);

/// Options for a shock arrestor tank on a pipe whose bore is given in inches. Their total volume meets the
/// required volume; with n tanks side by side, each connection is at least 0.47 bores divided by the square
/// root of n.
std::vector<TankOption> findShockModels(const QString& series, double requiredVolume, double bore,
                                        std::vector<SearchStep>* steps = nullptr);
