#pragma once

#include "documents/report/Page.h"

/// Puts the parts of a page into the order in which a person reads them.
namespace PdfReading {

/// What is read in one piece: a text with its label, a picture, or a check box.
struct Piece {
    QRectF at;
    QList<const PageText*> texts;
    const PagePicture* picture = nullptr;
    const PageCheck* check = nullptr;

    /// Of the heading in it, 0 if it has none.
    int heading() const;
};

/// One row of a table: its headings, its cells, or the heading of a group.
struct Row {
    Section section = Section::Detail;
    QList<const PageText*> texts;
    QList<const PageCheck*> checks;
};

/// A part of a page from its left to its right edge: rows of a table, or pieces in reading order.
struct Strip {
    QList<Row> rows;
    QList<Piece> pieces;
};

/// The strips of a page from top to bottom, without what only repeats.
QList<Strip> stripsOf(const Page& page);

/// Headers and footers, which are the same on every page and not part of the text.
bool isFurniture(const PageText& text);

} // namespace PdfReading
