#pragma once

#include "core/store/Database.h"

#include <QStringList>

#include <functional>

/// Deletes jobs and tank lines, and undoes that.
namespace Deletion {

/// Backs up the data, then deletes a job with all its tank lines. Throws DatabaseFault.
void DeleteJob(const QString& jobID);

/// Deletes the rows of a job within the caller's transaction. Throws DatabaseFault.
void RemoveJobRows(const Connection& user, const QString& jobID);

/// Backs up the data, then deletes tank lines one by one: after a failure the earlier ones stay deleted.
/// Throws DatabaseFault.
void DeleteTankLines(const QStringList& tankIDs);

/// The latest deletion of this run that has not been undone, such as "job A" or "2 tanks"; empty if there is
/// none.
QString UndoableDeletion();

/// Undoes that deletion: restores every column of every row, or nothing. Returns the obstacle as a text for
/// the user; empty on success. Throws DatabaseFault.
QString UndoDeletion();

/// Sets the listener for changes in what can be undone.
void OnUndoableChanged(std::function<void()> listener);

/// Deletes the header of a job that has no tank lines. Throws DatabaseFault.
void CancelJobInput(const QString& jobID);

/// Sets the listener for deletions of a job or a single tank line; the tank is empty for a whole job.
void OnDeleted(std::function<void(const QString& jobID, const QString& tankID)> listener);

/// Reports that a job's contents are gone, as when another version replaces it.
void TellDeleted(const QString& jobID);

} // namespace Deletion
