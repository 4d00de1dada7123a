#pragma once

#include "core/base/Applications.h"
#include "core/base/EntryRules.h"
#include "core/store/TankLine.h"

#include <QHash>

/// The rules of the conditions of expansion, thermal and hydropneumatic tanks, for all screens on which they
/// are entered. Boxes go by their names on the conditions screen.
namespace ConditionRules {

/// The temperatures in °F allowed for a fluid in an application; for an unknown fluid those of water.
TemperatureLimits limitsOf(Application application, const QString& fluid);

/// The texts of the boxes that an application hides: fluid and temperatures that pass the checks.
QHash<QString, QString> hiddenBoxes(Application application);

/// What is wrong with the boxes. An empty list means that `lineOf` can read them.
Objections objectionsTo(const QHash<QString, QString>& boxes, Application application);

/// The texts of the boxes for a line's conditions.
QHash<QString, QString> boxesOf(const TankLine& line);

/// A tank line with the conditions in the boxes. Throws Fault 13 for text that is not a number.
TankLine lineOf(const QHash<QString, QString>& boxes);

} // namespace ConditionRules
