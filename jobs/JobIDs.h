#pragma once

#include <QString>

/// Asks for the ID of a job that is to be added. Empty if the user cancels, or was told why there cannot be
/// such a job. Throws DatabaseFault.
QString askForJobID(const QString& title, const QString& prompt);

/// Tells the user why there cannot be such a job.
void refuseJobID(const QString& objection);
