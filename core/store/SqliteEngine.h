#pragma once

#include "core/store/Engine.h"
#include "core/store/JetSql.h"

/// How a file is opened.
struct SqliteOptions {
    int busyMilliseconds = 0;
    bool readOnly = false;
    QString connectionString; // the source of its faults
};

/// Opens a database file, which must exist. Throws DatabaseFault.
std::unique_ptr<Engine> OpenSqlite(const QString& path, const SqliteOptions& options);

/// How the engine writes what the program's statements say.
const SqlDialect& SqliteDialect();
