#pragma once

#include <QColor>
#include <QList>
#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <QString>

#include <algorithm>
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
    /// How the lines of a wrapped text are parted: where a blank stood, and inside a word. A line feed parts
    /// its paragraphs.
    static constexpr QChar blankBreak{0x2028};
    static constexpr QChar wordBreak{0x200B};

    QRectF place;
    QString text;
    TextStyle style;
    /// The number behind the text and the pattern that shows it, where it is one.
    std::optional<double> number;
    QString pattern;

    /// The text as it reads: without the breaks of wrapping.
    QString plain() const { return QString(text).replace(blankBreak, u' ').remove(wordBreak); }
    /// Whether it has more than one line.
    bool breaks() const {
        return std::any_of(text.begin(), text.end(),
                           [](QChar c) { return c == u'\n' || c == blankBreak || c == wordBreak; });
    }
    QStringList lines() const {
        return QString(text).replace(blankBreak, u'\n').replace(wordBreak, u'\n').split(u'\n');
    }
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
