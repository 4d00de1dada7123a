#pragma once

#include <QByteArray>
#include <QSizeF>
#include <QString>
#include <QStringList>

/// Formulas as one line of text, such as "V_req = V * E / AF = 1000 * 0.04847 / 0.4027", set with fraction
/// bars, raised powers and lowered indices. A name may have an index behind an underscore; / makes a fraction
/// of the product before it and the factor behind it; sqrt(x) draws a root; texts in double quotes, such as
/// units, stay upright.
namespace Formula {

/// The formula for those who cannot see it, in typographic characters: "V_req = V × E / AF".
QString inWords(const QString& formula);
/// The same, broken before equal signs into lines that are no wider than a width in points where possible.
QStringList linesInWords(const QString& formula, double size, double width);

/// A formula as a picture. Lines longer than the width in points break before an equal sign; what is still
/// too wide is set smaller.
struct Picture {
    QByteArray svg;
    QSizeF size; // points
};
/// Sets a formula in a font size in points. Throws std::runtime_error naming what it cannot read.
Picture picture(const QString& formula, double size, double width);

} // namespace Formula
