#pragma once

#include <QString>

/// Opens the overview of a job in the task at work, which leaves its tank line for that.
void openOverviewOf(const QString& jobID);
