#pragma once

#include "core/store/TankLine.h"

namespace Schedule {

/// Rebuilds the work table of the schedule for the session's job, one row per unit. A failure opens the error
/// dialog under the routine's name; the rows written so far stay.
void FillScheduleTable();

/// Does the same before a report if the table was last filled for another job or the data have changed since.
/// All windows and all copies of the program share the one table.
void updateScheduleTable();

/// The same for a document of which the schedule is only a part: a tank without a model, or of ten
/// units, opens no error dialog, since the page says where and why the schedule ends. Throws DatabaseFault.
void prepareScheduleTable();

/// The rows of the table with their tank lines.
constexpr const char* scheduleRows =
    "SELECT * FROM tblJobData INNER JOIN tblSchedule ON tblSchedule.TankID = tblJobData.TankID";

/// The tank of each of these rows, in their order. Throws DatabaseFault.
QStringList scheduledTanks();

/// Why the table of a job with these lines ends early, in words for a reader of the page; empty when it holds
/// every unit.
QString whyItEnds(const std::vector<TankLine>& lines);

} // namespace Schedule
