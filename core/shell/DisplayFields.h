#pragma once

#include "core/base/Text.h"

#include <QLineEdit>

#include <initializer_list>
#include <optional>

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
