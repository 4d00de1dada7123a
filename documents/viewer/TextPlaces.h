#pragma once

#include "documents/report/Page.h"

#include <compare>

/// A position between the characters of a report's texts.
struct TextPlace {
    int page = -1;
    int text = -1; // on the page
    int letter = 0;
    auto
    operator<=>(const TextPlace&) const = default; // NOLINT(modernize-use-nullptr): takes the 0 in it for one
};

/// A range of characters in one text, the end excluded.
struct TextRange {
    TextPlace from;
    int to = 0;
};

/// The position nearest to a point of a page, in points; text is -1 on a page without texts.
TextPlace placeAt(const Pages& pages, int page, const QPointF& point);

/// Whether a point of a page lies on a text.
bool isOnText(const Page& page, const QPointF& point);

/// The rectangles that a range of a text covers on its page, one per line.
QList<QRectF> placesOf(const PageText& text, int from, int to);

/// All occurrences of a text, ignoring case and the way the pages wrap it.
QList<TextRange> findAll(const Pages& pages, const QString& wanted);

/// The text between two positions as plain text, one line per text.
QString textBetween(const Pages& pages, const TextPlace& from, const TextPlace& to);
