#pragma once

#include "core/base/Applications.h"
#include "core/store/TankLine.h"
#include "documents/submittals/SizingNotes.h"
#include "sizing/RequiredSizes.h"

/// Sizes a stored tank line with the arithmetic of RequiredSizes and the water table of the catalogue.
namespace TankSizing {

/// The conditions stored with a line; zeros for what is not stored.
SystemConditions conditionsOf(const TankLine& tank);

/// The expansion factor of a line's fluid between its two temperatures; for water from the table, and 0 above
/// its last row. Throws DatabaseFault.
double expansionFactor(const TankLine& tank);

/// Whether a series is the plain steel tank, which has no precharge.
bool isPlainSteel(const QString& series);

/// The required sizes of a line in an application and series. Throws Fault 11 when the pressures leave no
/// acceptance, and DatabaseFault.
RequiredSizes sizesOf(const TankLine& tank, Application application, const QString& series);

/// Adds the sizes that a line's conditions give in its own series now, if they give any. Throws
/// DatabaseFault.
void addSizes(SizingNotes::Facts& facts, const TankLine& tank);

} // namespace TankSizing
