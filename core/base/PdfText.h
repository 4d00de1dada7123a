#pragma once

#include <QByteArray>
#include <QString>

/// Text as PDF stores it: UTF-16 in hexadecimal.
inline QByteArray pdfText(const QString& text) {
    QByteArray digits = "<feff";
    for (const QChar c : text)
        digits += QByteArray::number(c.unicode(), 16).rightJustified(4, '0');
    return digits + '>';
}
