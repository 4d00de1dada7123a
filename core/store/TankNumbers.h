#pragma once

#include "core/store/Database.h"

#include <cstdint>

/// The numbers of tank lines in their jobs, for all that add lines.
namespace TankNumbers {

/// Throws RecordGone if a job's header does not exist, and DatabaseFault.
void requireJob(const Connection& connection, const QString& jobID);
/// The next free number of a job. Throws DatabaseFault, and Fault 6 past 32,767.
std::int16_t nextNumber(const Connection& connection, const QString& jobID);

} // namespace TankNumbers
