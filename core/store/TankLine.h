#pragma once

#include "core/store/Database.h"

namespace UtilityFunctions {

/// The statement that reads a tank line by its key.
QString TankQuery(const QString& tankID);

/// Opens the table of tank lines with a new row that has its number, key and job, and waits for the rest.
void AddTankLine(Recordset& tank, Connection& connection, int number, const QString& tankID,
                 const QString& jobID);

} // namespace UtilityFunctions
