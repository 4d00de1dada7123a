#pragma once

#include "core/store/DataState.h"
#include "core/store/SessionTask.h"

/// What a screen is loaded for. Opened for a different one, it loads again, so that it never shows one job
/// and saves to another.
enum class Subject { TankLine, Job, None };

/// The records that screens are about, as the values of their tasks have them.
namespace Subjects {

/// What these session values say about a subject; two screens with the same text show the same record.
QString textOf(Subject subject, const Session::TaskValues& values);
/// The tank ID of a subject or, while that has none, its job ID.
QString keyOf(Subject subject, const Session::TaskValues& values);
/// Whether a task that changes its values leaves the line or job of a subject. A screen opened for a new line
/// or job stays with it when it gets its key.
bool leaves(Subject subject, const Session::TaskValues& before, const Session::TaskValues& now);
/// The state of the data for a subject: its job and its tank line; nothing if the data cannot be read now.
std::optional<Gateway::DataState> stateOf(Subject subject, const Session::TaskValues& values);
/// Whether the record of a subject exists: its tank line or, while that has no key, its job.
bool exists(Subject subject, const Session::TaskValues& values, const Gateway::DataState& state);
/// Whether a subject is a tank line or, without one, whether it is a job or any line of it.
bool isOf(Subject subject, const Session::TaskValues& values, const QString& jobID, const QString& tankID);
/// Whether values are those of a new line of the reserved job, which is created on demand.
bool createJob(Subject subject, const Session::TaskValues& values);

} // namespace Subjects
