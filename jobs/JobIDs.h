#pragma once

#include <QString>

/// The ID of the session's job; empty, after the user was asked to open one, if there is none. Throws
/// DatabaseFault.
QString jobAtWork(const QString& request, const QString& title);

/// Asks for the ID of a job that is to be added. Empty if the user cancels, or was told why there cannot be
/// such a job. Throws DatabaseFault.
QString askForJobID(const QString& title, const QString& prompt);

/// Tells the user why there cannot be such a job.
void refuseJobID(const QString& objection);
