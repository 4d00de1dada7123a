#pragma once

#include "documents/report/Page.h"

#include <deque>

using GridRow = QList<const PageText*>;

/// The texts of a page as rows from top to bottom, each from left to right: how the formats without free
/// places see a page. Check boxes and marks are among them as words.
class PageGrid {
  public:
    enum class Lines : std::uint8_t { Whole, Split };
    /// Split puts each line of a wrapped text into the row where it stands, unless the text stands alone
    /// there.
    explicit PageGrid(const Page& page, Lines lines = Lines::Whole);
    PageGrid(const PageGrid&) = delete;
    PageGrid& operator=(const PageGrid&) = delete;

    const QList<GridRow>& rows() const { return allRows; }
    /// The texts as they are read aloud: a field's label, then its values.
    QList<const PageText*> readingOrder() const;

  private:
    std::deque<PageText> own; // words and single lines
    QList<GridRow> allRows;
};

/// From the top of the page to where a text begins, in points.
double TopOf(const PageText& text);

/// The left edges, in points and rising, at which texts of the pages begin; edges closer than a few points
/// count as one.
QList<double> ColumnEdges(const Pages& pages);
/// The place among rising edges of the one that a text begins at.
int ColumnOf(const QList<double>& edges, const PageText& text);

/// The pictures of a page as PNG, for formats that take no vectors: the bytes of one at 200 dpi.
QByteArray PictureAsPng(const PagePicture& picture);
