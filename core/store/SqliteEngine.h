#pragma once

#include "core/store/Engine.h"
#include "core/store/JetSql.h"

/// Opens a database file, which must exist. Throws DatabaseFault, whose source is the connection string.
std::unique_ptr<Engine> OpenSqlite(const QString& path, int busyMilliseconds,
                                   const QString& connectionString);

/// How the engine writes what the program's statements say.
const SqlDialect& SqliteDialect();
