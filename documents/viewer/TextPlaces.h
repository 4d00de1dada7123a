#pragma once

#include "documents/report/Page.h"

#include <compare>

/// A place between the letters of a report's texts.
struct TextPlace {
    int page = -1;
    int text = -1; // on the page
    int letter = 0;
    auto
    operator<=>(const TextPlace&) const = default; // NOLINT(modernize-use-nullptr): takes the 0 in it for one
};

/// Letters of one text, the last one excluded.
struct TextRange {
    TextPlace from;
    int to = 0;
};

/// The place nearest to a point of a page, in points; the text of a page without texts is -1.
TextPlace PlaceAt(const Pages& pages, int page, const QPointF& point);

/// Whether a point of a page lies on a text.
bool IsOnText(const Page& page, const QPointF& point);

/// Where letters of a text stand on its page, one rectangle a line.
QList<QRectF> PlacesOf(const PageText& text, int from, int to);

/// All places at which a text occurs, without regard to case or to how the pages wrap it.
QList<TextRange> FindAll(const Pages& pages, const QString& wanted);

/// What stands between two places as plain text, a line for each text.
QString TextBetween(const Pages& pages, const TextPlace& from, const TextPlace& to);
