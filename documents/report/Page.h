#pragma once

#include <QColor>
#include <QList>
#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <QString>

#include <cstdint>
#include <optional>

/// A finished page of a report as plain data: viewer, printer and exporters only read it. All places are in
/// points (1/72 in) from the top left corner of the paper.

/// How a text is set; always in Liberation Sans, so that a page breaks the same on every machine.
struct TextStyle {
    double size = 9; // points
    bool bold = false;
    bool italic = false;
    Qt::Alignment alignment = Qt::AlignLeft | Qt::AlignTop;
    QColor color = Qt::black;
    bool operator==(const TextStyle&) const = default;
};

struct PageText {
    QRectF place;
    /// Lines are parted by a line separator where the text was wrapped and by a line feed where it breaks.
    QString text;
    TextStyle style;
    /// The number behind the text and the pattern that shows it, where it is one.
    std::optional<double> number;
    QString pattern;
    /// The text as it reads: without the breaks of wrapping.
    QString plain() const { return QString(text).replace(QChar::LineSeparator, u' '); }
    QStringList lines() const { return QString(text).replace(QChar::LineSeparator, u'\n').split(u'\n'); }
};

struct PageLine {
    QPointF from;
    QPointF to;
    double width = .5;
};

struct PageBox {
    QRectF place;
    double width = .5; // 0 for no line
    QColor fill;       // invalid for none
};

struct PageCheck {
    QRectF place;
    bool checked = false;
};

struct PagePicture {
    QRectF place;
    QString file; // an SVG file or resource, scaled into the place without distortion
};

struct Page {
    QSizeF size{612, 792}; // Letter
    QList<PageBox> boxes;
    QList<PageLine> lines;
    QList<PageText> texts;
    QList<PageCheck> checks;
    QList<PagePicture> pictures;
};

using Pages = QList<Page>;
