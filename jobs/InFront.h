#pragma once

#include "core/store/TankLine.h"

#include <QString>

#include <optional>

/// What the screen in front of the main window shows. The session alone does not tell: it keeps the job and
/// line of earlier work.
namespace InFront {

/// The job ID; empty if the screen shows no job, as a look-up or a list of names.
QString job();
/// The tank line; nothing if the screen shows none, or one of a steel conversion. Throws DatabaseFault.
std::optional<TankLine> tank();

} // namespace InFront
