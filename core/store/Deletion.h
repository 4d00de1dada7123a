#pragma once

#include "core/store/Database.h"

#include <QStringList>

#include <functional>

/// Deletes jobs and tank lines, and undoes that.
namespace Deletion {

/// Backs up the data, then deletes a job with all its tank lines. Throws DatabaseFault.
void deleteJob(const QString& jobID);

/// Deletes the rows of a job within the caller's transaction. Throws DatabaseFault.
void removeJobRows(const Connection& user, const QString& jobID);

/// Backs up the data, then deletes tank lines one by one: after a failure the earlier ones stay deleted.
/// Throws DatabaseFault.
void deleteTankLines(const QStringList& tankIDs);

/// The latest deletion of this run that has not been undone, such as "job A" or "2 tanks"; empty if there is
/// none.
QString undoableDeletion();

/// Undoes that deletion: restores every column of every row, or nothing. Returns the obstacle as a text for
/// the user; empty on success. Throws DatabaseFault.
QString undoDeletion();

/// Sets the listener for changes in what can be undone.
void onUndoableChanged(std::function<void()> listener);

/// Deletes the header of a job that has no tank lines. Throws DatabaseFault.
void CancelJobInput(const QString& jobID);

/// Sets the listener for deletions of a job or a single tank line; the tank is empty for a whole job.
void onDeleted(std::function<void(const QString& jobID, const QString& tankID)> listener);

/// Reports that a job's contents are gone, as when another version replaces it.
void tellDeleted(const QString& jobID);

} // namespace Deletion
