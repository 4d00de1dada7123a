#pragma once

#include "core/base/Applications.h"

#include <QString>

#include <optional>

/// Which screens a stored tank line is worked on with.
namespace TankWork {

/// The screens with the conditions and with the results of a job's line. A line without an application is one
/// of the three that share their screens.
QString conditionsScreenOf(const QString& jobID, const std::optional<Application>& application);
QString resultsScreenOf(const QString& jobID, const std::optional<Application>& application);

} // namespace TankWork
