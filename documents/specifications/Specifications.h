#pragma once

#include <QString>

/// A specification of the catalogue as it is stored: the text, its last line and the description.
struct Specification {
    QString text;
    QString lastLine;
    QString description[3];
    /// As it shows: the text, a line feed, a carriage return, the last line, in this order.
    static QString shown(const QString& text, const QString& lastLine) { return text + "\n\r" + lastLine; }
};

/// Reads a specification by its key, as it goes into the statement; an empty one when the catalogue has none.
/// Throws DatabaseFault.
Specification ReadSpecification(const QString& key);
