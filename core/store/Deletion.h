#pragma once

#include "core/store/Database.h"

#include <QStringList>

#include <functional>

/// What takes jobs and tank lines away.
namespace Deletion {

/// Deletes a job with all its tank lines, after a copy of the data was put aside. Throws DatabaseFault.
void DeleteJob(const QString& jobID);

/// Deletes the rows of a job in a transaction of the caller's. Throws DatabaseFault.
void RemoveJobRows(const Connection& user, const QString& jobID);

/// Deletes tank lines, after a copy of the data was put aside. Each goes by itself: a failure leaves what is
/// done. Throws DatabaseFault.
void DeleteTankLines(const QStringList& tankIDs);

/// What the last deletion took away that has not been brought back since the program began, such as "job A"
/// or "2 tanks"; an empty text when there is nothing.
QString UndoableDeletion();

/// Brings the rows of that deletion back, all columns of all of them, or none. What stands in the way, as a
/// text for the user; an empty one when they are back. Throws DatabaseFault.
QString UndoDeletion();

/// Sets what hears that there is something else to undo, or nothing.
void OnUndoableChanged(std::function<void()> listener);

/// Deletes the header of a job that has no tank lines. Throws DatabaseFault.
void CancelJobInput(const QString& jobID);

/// Sets what hears that a job, or one tank line, was deleted here; the tank is empty for a whole job.
void OnDeleted(std::function<void(const QString& jobID, const QString& tankID)> listener);

/// Tells that what a job held is no more, as when another version of it takes its place.
void TellDeleted(const QString& jobID);

} // namespace Deletion
