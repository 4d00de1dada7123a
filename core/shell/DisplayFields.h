#pragma once

#include "core/base/Text.h"
#include "core/store/Database.h"

#include <QLineEdit>

#include <initializer_list>

/// A column in a display pattern such as "#,##0 gal"; an empty text for null.
inline QString FormattedField(const Recordset::Field& field, const char* pattern) {
    return field.isNull() ? QString() : FormattedNumber(field.number(), pattern);
}

/// A box that shows a column: in a display pattern, or as it is stored.
struct DisplayField {
    QLineEdit* box;
    const char* column;
    const char* pattern = nullptr;
};

/// Shows columns of the current row in their boxes, from the start of each text.
inline void ShowFields(Recordset& row, std::initializer_list<DisplayField> fields) {
    for (const DisplayField& field : fields) {
        const Recordset::Field value = row[field.column];
        field.box->setText(field.pattern ? FormattedField(value, field.pattern) : value.text());
        field.box->setCursorPosition(0);
    }
}
