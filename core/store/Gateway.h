#pragma once

#include "core/store/Database.h"

namespace UtilityFunctions {

/// A closed connection to the user database ("User") or the catalogue (any other name), in the folder that
/// the session store gives. Without a folder its Open fails with 0x80040E4D. When the folder has no such
/// file, the user is told, asked for the folder, and the calling procedure ends (AlreadyReported).
Connection dbConnection(const QString& databaseName);

/// An open connection.
Connection openDatabase(const QString& databaseName);

/// The password among the connection parameters. The files have none; it is kept for the error report's
/// mask and for databases of earlier versions.
QString DatabasePassword();

} // namespace UtilityFunctions
