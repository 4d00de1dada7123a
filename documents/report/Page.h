#pragma once

#include <QByteArray>
#include <QColor>
#include <QList>
#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <QString>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

/// A finished page of a report as plain data, which viewer, printer and exporters only read. All positions
/// are in points (1/72 in) from the top left corner of the paper.

/// How a text is set. Always in Liberation Sans, so that a page breaks the same way on every machine.
struct TextStyle {
    double size = 9; // points
    bool bold = false;
    bool italic = false;
    Qt::Alignment alignment = Qt::AlignLeft | Qt::AlignTop;
    QColor color = Qt::black;
    QString pattern{}; // shows the number behind the text, if it is one
    QString mark{};    // in a column: the part of each text, such as the decimal point, that lines up
    bool operator==(const TextStyle&) const = default;
};

/// A style shared by all texts that use it: a long list has many texts and few styles.
class SharedStyle {
  public:
    SharedStyle() : SharedStyle(TextStyle()) {}
    SharedStyle(const TextStyle& style); // NOLINT(google-explicit-constructor): a style is a style
    operator const TextStyle&() const { return **this; } // NOLINT(google-explicit-constructor)
    const TextStyle& operator*() const;
    const TextStyle* operator->() const { return &**this; }
    bool operator==(const SharedStyle&) const = default;

  private:
    std::uint16_t index; // in the list of styles, which lives as long as the program
};

/// A rectangle in half the memory of a QRectF, for the many texts of a long list. A float resolves a position
/// on a page to a few hundred-thousandths of a point.
class TextRect {
  public:
    TextRect() = default;
    TextRect(const QRectF& rect) // NOLINT(google-explicit-constructor): a place is a place
        : x(float(rect.x())), y(float(rect.y())), w(float(rect.width())), h(float(rect.height())) {}
    operator QRectF() const { return {x, y, w, h}; } // NOLINT(google-explicit-constructor)

    double left() const { return x; }
    double top() const { return y; }
    double right() const { return double(x) + w; }
    double bottom() const { return double(y) + h; }
    double width() const { return w; }
    double height() const { return h; }
    QPointF topLeft() const { return {x, y}; }
    QPointF center() const { return QRectF(*this).center(); }
    QSizeF size() const { return {w, h}; }
    void setLeft(double left) {
        w = float(right() - left);
        x = float(left);
    }
    void setTop(double top) {
        h = float(bottom() - top);
        y = float(top);
    }
    void setRight(double right) { w = float(right - x); }
    void moveLeft(double left) { x = float(left); }
    bool operator==(const TextRect&) const = default;

  private:
    float x = 0;
    float y = 0;
    float w = 0;
    float h = 0;
};

/// The part of a layout that an item on a page comes from.
enum class Section : std::uint8_t {
    ReportHeader,
    RunningHeader, // on every page after the first, above the page header
    PageHeader,
    Continuation, // heads a page on which a text continues
    GroupHeader,
    Detail,
    PageFooter,
    ReportFooter,
};

struct PageText {
    /// Separators between the lines of a wrapped text: at a blank, and inside a word. A line feed separates
    /// paragraphs.
    static constexpr QChar BlankBreak{0x2028};
    static constexpr QChar WordBreak{0x200B};

    QString text;
    double number = std::numeric_limits<double>::quiet_NaN(); // behind the text, if isNumber()
    TextRect place;
    int field = -1; // label and values of one boxed field share a number
    SharedStyle style;
    Section section : 3 = Section::Detail;
    bool label : 1 = false;    // the same on every page, whatever the rows hold
    bool repeated : 1 = false; // already shown on an earlier page: a header, or a group that continues
    bool pageNumber : 1 = false;
    bool cell : 1 = false;    // of a table: a heading, a cell, or the heading of a group of rows
    bool starts : 1 = false;  // the first text of its section, such as a row
    std::uint8_t heading = 0; // 1 for the title, 2 for a heading below it, 0 otherwise

    bool isNumber() const { return !std::isnan(number); }

    /// The text without the breaks of wrapping.
    QString plain() const { return QString(text).replace(BlankBreak, u' ').remove(WordBreak); }
    /// The position of the character that aligns it in its column, or its end if it lacks the mark.
    qsizetype markAt() const {
        const qsizetype at = text.indexOf(style->mark);
        return at < 0 ? text.size() : at;
    }
    /// Whether it has more than one line.
    bool breaks() const {
        return std::any_of(text.begin(), text.end(),
                           [](QChar c) { return c == u'\n' || c == BlankBreak || c == WordBreak; });
    }
    QStringList lines() const {
        return QString(text).replace(BlankBreak, u'\n').replace(WordBreak, u'\n').split(u'\n');
    }
};
static_assert(sizeof(PageText) <= 56, "a list of 100,000 rows has 700,000 texts");

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

/// A check box followed by its caption.
struct PageCheck {
    QRectF place;
    bool checked = false;
    PageText caption;
    /// In words, for formats without check boxes.
    PageText inWords() const {
        PageText words = caption;
        words.place.setLeft(place.left());
        words.text = (caption.text + (checked ? " Yes" : " No")).trimmed();
        return words;
    }
};

struct PagePicture {
    QRectF place;
    QByteArray svg; // scaled into the place without distortion
    QString description;
    bool mark = false;   // replaces a word: formats without pictures write the description
    bool isText = false; // a formula: word processors also get the description in its place
    /// In words, for formats without pictures.
    PageText inWords() const {
        PageText words;
        words.place = place;
        words.text = description;
        return words;
    }
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
