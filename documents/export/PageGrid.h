#pragma once

#include "documents/report/Page.h"

/// The texts of a page as rows from top to bottom, each from left to right: how the formats without free
/// places see a page.
using GridRow = QList<const PageText*>;
QList<GridRow> RowsOf(const Page& page);

/// The left edges, in points and rising, at which texts of the pages begin; edges closer than a few points
/// count as one.
QList<double> ColumnEdges(const Pages& pages);
/// The place among rising edges of the one that a text begins at.
int ColumnOf(const QList<double>& edges, const PageText& text);

/// The pictures of a page as PNG, for formats that take no vectors: the bytes of one at 200 dpi.
QByteArray PictureAsPng(const PagePicture& picture);
