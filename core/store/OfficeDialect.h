#pragma once

#include "core/store/JetSql.h"

/// How an office's server expresses the program's statements, with the functions of its schema.
const SqlDialect& officeDialect();

/// The column with the program's own key of each row, which no statement shows.
inline const QString officeRow = QStringLiteral("office_row");
