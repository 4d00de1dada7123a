#pragma once

#include "documents/report/Page.h"

#include <QFont>

/// Measures and breaks the texts of reports, in points and independent of any device.
namespace TextFit {

/// How much larger a text is set than it is measured: keeps fractions of a point exact.
constexpr int fontScale = 20;

/// The font of a style, enlarged by fontScale.
const QFont& font(const TextStyle& style);
/// Width in points of one line.
double width(QStringView line, const TextStyle& style);
/// Height in points of one line.
double lineHeight(const TextStyle& style);
/// From the top of a line to its baseline, in points.
double ascent(const TextStyle& style);

/// A text broken into lines by PageText::blankBreak and PageText::wordBreak, and how much of the original the
/// lines hold.
struct Wrapped {
    QString text;
    int lines = 0;
    qsizetype taken = 0;
};
/// Wraps a text to a width in points, between words where it can and inside a word that is too long for a
/// line; stops after a number of lines.
Wrapped wrapped(const QString& text, const TextStyle& style, double width, int mostLines);

/// The largest size, from the style's own down to a smallest in points, at which a text wraps into a place.
/// The text comes back wrapped at that size; what does not fit even at the smallest comes back as the rest.
struct Fitted {
    QString text;
    TextStyle style;
    QString rest;
};
Fitted fit(const QString& text, TextStyle style, const QSizeF& place, double smallest);

} // namespace TextFit
