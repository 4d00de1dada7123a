#pragma once

#include "documents/export/PageGrid.h"
#include "documents/export/Workbook.h"

/// What a sheet shows of a page beside its texts: boxes, bars and pictures.
namespace SheetBoxes {

/// A row of a sheet: texts of a page, or room for a picture.
struct Row {
    GridRow texts;
    double top = 0;    // on the page, in points
    double height = 0; // in points; 0 for a row's own
};

/// The left edges of the columns: those of the texts, and those of the boxes.
QList<double> columnEdges(const Pages& pages);

/// Gives the pictures of a page rows that are high enough.
void makeRoom(const Page& page, QList<Row>& rows);

/// How the cells of each row are framed and filled, by column.
QList<QHash<int, Workbook::Frame>> framesOf(const Page& page, const QList<Row>& rows,
                                            const QList<double>& edges);

/// Adds the pictures of a page whose rows begin at a row of the last sheet.
void addPictures(const Page& page, const QList<Row>& rows, const QList<double>& edges, int firstRow,
                 PngPictures& pictures, Workbook& book);

} // namespace SheetBoxes
