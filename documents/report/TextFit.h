#pragma once

#include "documents/report/Page.h"

#include <QFont>

/// Measures and breaks the texts of reports, in points, independent of any device.
namespace TextFit {

/// Texts are set this much larger than they are measured, to keep fractions of a point exact.
constexpr int fontScale = 20;

/// The font of a style, enlarged by fontScale.
const QFont& font(const TextStyle& style);
/// Width in points of one line.
double width(QStringView line, const TextStyle& style);
/// By how much two letters of Latin-1 stand closer together (negative) or further apart, in ems.
double kerning(QChar left, QChar right, const TextStyle& style);
/// Height in points of one line.
double lineHeight(const TextStyle& style);
/// From the top of a line to its baseline, in points.
double ascent(const TextStyle& style);

/// A text broken into lines by PageText::BlankBreak and PageText::WordBreak, and how much of the original
/// those lines hold.
struct Wrapped {
    QString text;
    int lines = 0;
    qsizetype taken = 0;
};
/// Wraps a text to a width in points, between words if possible and inside a word that is too long for a
/// line; stops after a number of lines.
Wrapped wrapped(const QString& text, const TextStyle& style, double width, int mostLines);

/// Finds the largest size, from the style's own down to a minimum in points, at which a text wraps into a
/// place. Returns the text wrapped at that size, and the rest that does not fit even at the smallest.
struct Fitted {
    QString text;
    TextStyle style;
    QString rest;
};
Fitted fit(const QString& text, TextStyle style, const QSizeF& place, double smallest);

} // namespace TextFit
