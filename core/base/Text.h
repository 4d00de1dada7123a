#pragma once

#include "core/base/Format.h"
#include "core/base/Numbers.h"

#include <QString>

#include <string_view>

/// A number as people read it on screens and pages: the shortest decimal text, with a zero before the point.
inline QString ShownNumber(double value) {
    return QString::fromStdString(ShownNumberText(value));
}

/// A number as it goes into a statement: the shortest decimal text, ".5" for one half.
inline QString StatementNumber(double value) {
    return QString::fromStdString(NumberText(value));
}

/// A number in a display pattern such as "#,##0 gal".
inline QString FormattedNumber(double value, std::string_view pattern) {
    return QString::fromStdString(Format(value, pattern));
}

/// A text of the tables in plain C++.
inline QString ToQString(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

/// A text without its trailing blanks, which do not count where texts compare and are not stored.
inline QString WithoutTrailingBlanks(QString text) {
    while (text.endsWith(u' '))
        text.chop(1);
    return text;
}

/// The number that a text stands for. Throws Fault 13 when it is none.
inline double ToNumber(const QString& text) {
    return ToDouble(text.toStdString());
}
