#pragma once

#include <QString>

#include <functional>

/// What takes jobs and tank lines away.
namespace UtilityFunctions {

/// Deletes a job with all its tank lines. Throws DatabaseFault.
void DeleteJob(const QString& jobID);

/// Deletes a tank line. Throws DatabaseFault.
void DeleteTankLine(const QString& tankID);

/// Deletes the header of a job that has no tank lines. Throws DatabaseFault.
void CancelJobInput(const QString& jobID);

/// Sets what hears that a job, or one tank line, was deleted here; the tank is empty for a whole job.
void OnDeleted(std::function<void(const QString& jobID, const QString& tankID)> listener);

} // namespace UtilityFunctions
