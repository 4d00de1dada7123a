#pragma once

#include "core/base/EntryRules.h"
#include "core/store/TankLine.h"
#include "shock/ShockSizes.h"

#include <QHash>

/// Sizes a stored shock arrestor line with the arithmetic of ShockSizes and the tables of the catalogue.
namespace ShockSizing {

/// The conditions stored with a line, and the bore of its pipe; zeros for what is missing. Throws
/// DatabaseFault.
ShockConditions conditionsOf(const TankLine& tank);
/// The same with a known bore in inches.
ShockConditions conditionsOf(const TankLine& tank, double bore);

/// The pressure factor for two band values in psig; 0 when the table has no row for them. Throws
/// DatabaseFault.
double pressureFactor(double shockBand, double staticBand);

/// The atmospheric pressure in psia with which shock arrestors are sized: the user's, or that at sea level.
/// Throws DatabaseFault.
double atmosphericPressure();

/// The sizes for conditions; `objection` receives why they cannot be right. Throws Fault 11 when a factor is
/// 0, and DatabaseFault.
ShockSizes sizesOf(const ShockConditions& conditions, std::optional<std::string_view>& objection);

/// A tank line with conditions and sizes as they are stored, to eight decimals. The key is left out.
TankLine lineOf(const ShockConditions& conditions, const QString& pipeIndex, const ShockSizes& sizes);

/// What the boxes of the conditions, by their names on that screen, cannot be sized with. An empty list means
/// that `conditionsIn` can read them.
Objections objectionsTo(const QHash<QString, QString>& boxes);
/// The conditions in the boxes at an atmospheric pressure in psia, with the bore of the pipe, which is 0 for
/// an unknown one. Throws Fault 13 for text that is not a number, and DatabaseFault.
ShockConditions conditionsIn(const QHash<QString, QString>& boxes, double atmosphere);

/// The texts of the boxes for a line's conditions.
QHash<QString, QString> boxesOf(const TankLine& line);

/// The connection in inches that a line's pipe demands of each of its tanks. Throws DatabaseFault.
double requiredConnection(const TankLine& line);
/// The same with a known bore in inches.
double requiredConnection(const TankLine& line, double bore);

/// What a choice of tanks achieves, as the list of options shows it.
struct Outcome {
    double leakLoad = 0; // fraction
    double delay = 0;    // seconds before the pump must start
    QString leakLoadText{};
    QString delayText{};
};
/// The outcome with a number of tanks of a volume in gallons each. Throws Fault 11.
Outcome outcomeOf(const ShockConditions& conditions, double tankVolume, int quantity);
/// Writes an outcome into a line: the figures as shown, to one decimal.
void setOutcome(TankLine& line, const Outcome& outcome);

} // namespace ShockSizing
