#pragma once

#include "core/base/Format.h"
#include "core/base/Numbers.h"

#include <QDate>
#include <QString>

#include <string_view>

/// A number for screens and pages: the shortest decimal text, with a zero before the point.
inline QString shownNumber(double value) {
    return QString::fromStdString(shownNumberText(value));
}

/// A number for an SQL statement: the shortest decimal text, ".5" for one half.
inline QString statementNumber(double value) {
    return QString::fromStdString(NumberText(value));
}

/// A number in a display pattern such as "#,##0 gal".
inline QString formattedNumber(double value, std::string_view pattern) {
    return QString::fromStdString(formatted(value, pattern));
}

/// Converts the UTF-8 text of the plain C++ tables.
inline QString toQString(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

/// Trailing blanks are ignored in comparisons and never stored.
inline QString withoutTrailingBlanks(QString text) {
    while (text.endsWith(u' '))
        text.chop(1);
    return text;
}

/// A date for lists and the foot of the main window, such as "01/15/26".
inline QString shownDate(const QDate& date) {
    return date.toString("MM/dd/yy");
}

/// The number in a text. Throws Fault 13 if it is not one.
inline double toNumber(const QString& text) {
    return toDouble(text.toStdString());
}
