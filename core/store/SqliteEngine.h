#pragma once

#include "core/store/Engine.h"
#include "core/store/JetSql.h"

/// How to open a file.
struct SqliteOptions {
    int busyMilliseconds = 0;
    bool readOnly = false;
    QString connectionString; // reported as the source of faults
};

/// Opens an existing database file. Throws DatabaseFault.
std::unique_ptr<Engine> openSqlite(const QString& path, const SqliteOptions& options);

/// How SQLite expresses the program's statements.
const SqlDialect& sqliteDialect();
