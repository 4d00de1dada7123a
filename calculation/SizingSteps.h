#pragma once

#include "calculation/SizedTank.h"
#include "calculation/Worksheet.h"

/// The conditions of a line and the steps from them to its required sizes, in the functions that sized it.
/// Each fills in the sizes, and warns where a stored result differs from the computed one. All throw
/// DatabaseFault, and Fault 6 and 11 as the functions of the sizing.

void addTankSteps(Worksheet& sheet, SizedTank& tank);
void addConversionSteps(Worksheet& sheet, SizedTank& tank);
void addShockSteps(Worksheet& sheet, SizedTank& tank);

/// The three pressures under their names in the formulas.
Formulas::Values pressuresOf(const SystemConditions& conditions);

/// Warns if a stored figure is not the computed one.
void compare(Worksheet& sheet, const QString& name, const std::optional<double>& stored, double computed,
             const QString& unit, double tolerance = 0);
