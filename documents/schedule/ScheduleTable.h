#pragma once

namespace UtilityFunctions {

/// Rebuilds the work table of the schedule for the session's job, one row a unit. A failure ends in the error
/// dialog under the routine's name; the rows made until then stay.
void FillScheduleTable();

} // namespace UtilityFunctions
