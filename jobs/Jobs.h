#pragma once

#include <QString>

/// Makes the screens and commands of this folder known.
void registerJobs();

/// The screen at which a job is edited: the reserved job of the steel conversions has no header.
QString EditScreenOf(const QString& jobID);
