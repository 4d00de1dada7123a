#pragma once

#include <QByteArray>
#include <QList>
#include <QRectF>
#include <QString>

/// An entry of a PDF's outline.
struct OutlineEntry {
    QString title;
    int depth = 0;  // 0 for the top level; at most one more than the entry before
    int sheet = 0;  // counted from 0
    double top = 0; // points from the lower edge of the sheet
};

/// A text that leads to another place of a PDF.
struct PdfLink {
    int sheet = 0; // counted from 0
    QRectF place;  // points from the lower left corner of the sheet
    int target = 0;
    double top = 0; // points from the lower edge of the target's sheet
};

/// The entries as objects of a PDF, given the objects of its sheets. Number `first` is the root of the
/// outline, the entries follow in order.
QList<QByteArray> outlineObjects(const QList<OutlineEntry>& entries, const QList<QByteArray>& sheets,
                                 int first);

/// A PDF of Qt's writer with an outline and links, which that writer has no way to make. Empty if the PDF is
/// not built as expected.
QByteArray withOutline(QByteArray pdf, const QList<OutlineEntry>& entries, const QList<PdfLink>& links);
