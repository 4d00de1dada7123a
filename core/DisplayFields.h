#pragma once

#include "core/Database.h"
#include "core/Format.h"

/// A column in a display pattern such as "#,##0 gal"; an empty text for null.
inline QString FormattedField(const Recordset::Field& field, const char* pattern) {
    return field.isNull() ? QString() : QString::fromStdString(Format(field.number(), pattern));
}
