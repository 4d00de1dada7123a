#pragma once

#include "documents/report/Page.h"

#include <QHash>
#include <QSize>

#include <deque>
#include <utility>

using GridRow = QList<const PageText*>;

/// The texts of a page as rows from top to bottom, each from left to right, for formats that cannot place
/// text freely. Check boxes and marks are included as words.
class PageGrid {
  public:
    enum class Lines : std::uint8_t { Whole, Split };
    /// Split puts each line of a wrapped text into the row at that height, unless the text has nothing beside
    /// it.
    explicit PageGrid(const Page& page, Lines lines = Lines::Whole);
    PageGrid(const PageGrid&) = delete;
    PageGrid& operator=(const PageGrid&) = delete;

    const QList<GridRow>& rows() const { return allRows; }
    /// The texts in reading order: a field's label, then its values.
    QList<const PageText*> readingOrder() const;

  private:
    std::deque<PageText> own; // words and single lines
    QList<GridRow> allRows;
};

/// The distance from the top of the page to the start of a text, in points.
double topOf(const PageText& text);

/// The left edges of the texts on the pages, in points, ascending; edges within a few points of each other
/// count as one.
QList<double> columnEdges(const Pages& pages);
/// Left edges in points, ascending, each but once.
QList<double> distinctEdges(QList<double> lefts);
/// The index, among ascending edges, of the one at which a text begins.
int columnOf(const QList<double>& edges, const PageText& text);

/// The pictures of pages as PNG at 200 dpi, for formats without vector graphics. Each is made once for all
/// its places of the same size, as the logo that each document of a package has.
class PngPictures {
  public:
    const QByteArray& of(const PagePicture& picture);

  private:
    QHash<std::pair<QByteArray, QSize>, QByteArray> known;
};
