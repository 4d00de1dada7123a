#pragma once

#include "core/base/Text.h"
#include "core/store/Database.h"

#include <QLineEdit>

#include <initializer_list>
#include <optional>

/// A column in a display pattern such as "#,##0 gal"; empty for null.
inline QString formattedField(const Recordset::Field& field, const char* pattern) {
    return field.isNull() ? QString() : formattedNumber(field.number(), pattern);
}

/// A record value for display; empty if there is none.
inline QString shownText(const std::optional<QString>& text) {
    return text.value_or(QString());
}
inline QString shownText(const std::optional<double>& number) {
    return number ? shownNumber(*number) : QString();
}
inline QString shownText(const std::optional<int>& number) {
    return number ? QString::number(*number) : QString();
}
/// The same in a display pattern.
inline QString shownText(const std::optional<double>& number, const char* pattern) {
    return number ? formattedNumber(*number, pattern) : QString();
}

/// A box and the text that it shows.
struct ShownText {
    QLineEdit* box;
    QString text;
};
/// Shows texts in their boxes, scrolled to the start.
inline void showTexts(std::initializer_list<ShownText> texts) {
    for (const ShownText& shown : texts) {
        shown.box->setText(shown.text);
        shown.box->setCursorPosition(0);
    }
}

/// A box that shows a column, either in a display pattern or as stored.
struct DisplayField {
    QLineEdit* box;
    const char* column;
    const char* pattern = nullptr;
};

/// Shows columns of the current row in their boxes, scrolled to the start.
inline void showFields(Recordset& row, std::initializer_list<DisplayField> fields) {
    for (const DisplayField& field : fields) {
        const Recordset::Field value = row[field.column];
        field.box->setText(field.pattern ? formattedField(value, field.pattern) : value.text());
        field.box->setCursorPosition(0);
    }
}
