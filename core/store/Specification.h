#pragma once

#include <QString>

/// A specification as the catalogue stores it: text, last line and description.
struct Specification {
    QString text;
    QString lastLine;
    QString description[3];
    /// As displayed: the text, a line feed, a carriage return, the last line, in this order.
    static QString shown(const QString& text, const QString& lastLine) { return text + "\n\r" + lastLine; }
};

namespace Catalogue {

/// Reads a specification by its key; an empty one when the catalogue has none. Throws DatabaseFault.
Specification readSpecification(const QString& key);

/// The report that a submittal is printed with; empty when the catalogue has none. Throws DatabaseFault.
QString reportOf(const QString& submittal);

} // namespace Catalogue
