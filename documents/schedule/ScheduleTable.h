#pragma once

namespace Schedule {

/// Rebuilds the work table of the schedule for the session's job, one row a unit. A failure ends in the error
/// dialog under the routine's name; the rows made until then stay.
void FillScheduleTable();

/// The same before a report, when the table was last filled for another job or the data have changed since.
/// The table is one for all windows and all copies of the program.
void UpdateScheduleTable();

} // namespace Schedule
