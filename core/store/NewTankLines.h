#pragma once

#include "core/store/JobHeader.h"
#include "core/store/TankLine.h"

#include <vector>

namespace Records {

/// Adds tank lines to a job, numbered in their order, in one transaction: all of them or none. Everything but
/// keys and numbers is taken from the lines. Returns their keys. Throws RecordGone if the job does not exist,
/// Fault 6 past number 32,767, and DatabaseFault.
QStringList addTankLines(const QString& jobID, const std::vector<TankLine>& lines);

/// Adds a new job with its tank lines in the same way: the job and all lines, or nothing. Returns the lines'
/// keys; none if a job with this ID exists. Throws as above.
QStringList addJobWithTankLines(const JobHeader& header, const std::vector<TankLine>& lines);

/// How many tank lines can still be added to a job, for each has a number and those end at 32,767. Throws
/// DatabaseFault.
int roomForTankLines(const QString& jobID);

} // namespace Records
