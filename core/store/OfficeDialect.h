#pragma once

#include "core/store/JetSql.h"

/// How an office's server expresses the program's statements, with the functions of its schema.
const SqlDialect& officeDialect();

/// The column with the program's own key of each row, which no statement shows.
inline const QString officeRow = QStringLiteral("office_row");

/// Writers of several statements take turns, as they do with a file: what one has read, such as the last
/// number of a job, still holds when it writes. The number stands for "Brennoval" in the database's locks.
inline const QString officeTurn = QStringLiteral("SELECT pg_advisory_xact_lock(4212664);");
