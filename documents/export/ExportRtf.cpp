#include "documents/export/Export.h"
#include "documents/export/PageGrid.h"
#include "documents/report/PagePainter.h"
#include "documents/report/TextFit.h"

#include <QIODevice>
#include <QSvgRenderer>

#include <cmath>

namespace {

constexpr double edge = 18; // points around the page: word processors set text slightly wider or taller

QByteArray twips(double points) {
    return QByteArray::number(int(std::lround(points * 20)));
}

QByteArray escaped(const QString& text) {
    QByteArray out;
    for (const QChar c : text) {
        if (c == '\n')
            out += "\\line ";
        else if (c == '\\' || c == '{' || c == '}')
            out += '\\' + QByteArray(1, c.toLatin1());
        else if (c.unicode() < 0x80)
            out += c.toLatin1();
        else // signed, with a question mark for readers without Unicode
            out += "\\u" + QByteArray::number(qint16(c.unicode())) + "\\'3f";
    }
    return out;
}

QByteArray run(const PageText& text) {
    return "{\\fs" + QByteArray::number(std::lround(text.style->size * 2)) + (text.style->bold ? "\\b" : "") +
           (text.style->italic ? "\\i" : "") + ' ' + escaped(text.plain()) + '}';
}

/// A wrapped text with nothing beside it: the word processor wraps it, in slightly more room than on the
/// page.
QByteArray block(const PageText& text, double paperWidth) {
    constexpr double slack = 6; // points
    return "\\li" + twips(text.place.left() - edge) + "\\ri" +
           twips(paperWidth - edge - text.place.right() - slack) + ' ' + run(text);
}

/// Texts side by side, each at a tab stop.
QByteArray tabbed(const GridRow& row) {
    QByteArray stops;
    QByteArray runs;
    for (const PageText* text : row) {
        const bool right = text->style->alignment & Qt::AlignRight;
        const bool center = text->style->alignment & Qt::AlignHCenter;
        const double at = right    ? text->place.right()
                          : center ? text->place.center().x()
                                   : text->place.left();
        stops += QByteArray(right ? "\\tqr" : center ? "\\tqc" : "") + "\\tx" + twips(at - edge);
        runs += "\\tab " + run(*text);
    }
    return stops + ' ' + runs;
}

double lineHeight(const GridRow& row) {
    double height = 0;
    for (const PageText* text : row)
        height = std::max(height, TextFit::lineHeight(text->style));
    return height;
}

double bottomOf(const GridRow& row) {
    double bottom = 0;
    for (const PageText* text : row)
        bottom =
            std::max(bottom, topOf(*text) + TextFit::lineHeight(text->style) * double(text->lines().size()));
    return bottom;
}

/// The rows of a page, each with its lower edge where it is on the page, so that a page stays a page.
QByteArray paragraphs(const Page& page) {
    const PageGrid grid(page, PageGrid::Lines::Split);
    QByteArray document;
    double reached = edge;
    for (const GridRow& row : grid.rows()) {
        const auto lines = double(row.first()->lines().size());
        const bool alone = row.size() == 1 && lines > 1;
        const double reach = std::max(0.0, bottomOf(row) - reached);
        const double line = std::min(lineHeight(row), reach / (alone ? lines : 1));
        const double before = reach - line * (alone ? lines : 1);
        document += "\\pard\\sb" + twips(before) + "\\sl-" + twips(line) + "\\slmult0" +
                    (alone ? block(*row.first(), page.size.width()) : tabbed(row)) + "\\par\n";
        reached = std::max(reached, bottomOf(row));
    }
    return document;
}

QByteArray property(const char* name, const QByteArray& value) {
    return QByteArray("{\\sp{\\sn ") + name + "}{\\sv " + value + "}}";
}

/// A shape behind the texts. Colours are numbers with blue in front; widths are in EMU, of which a point has
/// 12,700.
QByteArray shape(int kind, const QRectF& place, double lineWidth, const QColor& fill) {
    constexpr double emuPerPoint = 12700;
    const auto color = [](const QColor& one) {
        return QByteArray::number(one.red() + 256 * (one.green() + 256 * one.blue()));
    };
    return "{\\shp{\\*\\shpinst\\shpleft" + twips(place.left()) + "\\shptop" + twips(place.top()) +
           "\\shpright" + twips(place.right()) + "\\shpbottom" + twips(place.bottom()) +
           "\\shpbxpage\\shpbypage\\shpwr3\\shpfblwtxt1" + property("shapeType", QByteArray::number(kind)) +
           property("fFilled", fill.isValid() ? "1" : "0") +
           (fill.isValid() ? property("fillColor", color(fill)) : QByteArray()) +
           property("fBehindDocument", "1") + property("fLine", lineWidth > 0 ? "1" : "0") +
           property("lineWidth", QByteArray::number(std::lround(lineWidth * emuPerPoint))) + "}}\n";
}

/// The boxes and lines of a page.
QByteArray shapes(const Page& page) {
    constexpr int rectangle = 1;
    constexpr int straightLine = 20;
    QByteArray all;
    for (const PageBox& box : page.boxes)
        all += shape(rectangle, box.place, box.width, box.fill);
    for (const PageLine& line : page.lines)
        all += shape(straightLine, QRectF(line.from, line.to).normalized(), line.width, {});
    return all;
}

/// A picture at its place on the page.
QByteArray picture(const PagePicture& drawing, PngPictures& pictures) {
    const QRectF place = picturePlace(QSvgRenderer(drawing.svg).defaultSize(), drawing.place);
    return "\\pard\\pvpg\\phpg\\posx" + twips(place.left()) + "\\posy" + twips(place.top()) + "\\absw" +
           twips(place.width()) + "\\absh" + twips(place.height()) + "{\\pict\\pngblip\\picwgoal" +
           twips(place.width()) + "\\pichgoal" + twips(place.height()) + '\n' + pictures.of(drawing).toHex() +
           "}\\par\n";
}

/// Begins a page as a section of its own: it may lie the other way than the one before, and its header holds
/// its boxes and lines, for only there does every word processor keep them behind the texts.
QByteArray section(const Page& page) {
    QByteArray begun =
        "\\sectd\\sbkpage\\pgwsxn" + twips(page.size.width()) + "\\pghsxn" + twips(page.size.height());
    if (page.size.width() > page.size.height())
        begun += "\\lndscpsxn";
    for (const char* side : {"\\marglsxn", "\\margrsxn", "\\margtsxn", "\\margbsxn"})
        begun += side + twips(edge);
    return begun + "\\headery0{\\header\\pard\\sl-20\\slmult0\\fs2 " + shapes(page) + "\\par}\\pard\n";
}

} // namespace

void Export::rtf(const Document& document, QIODevice& file, const GoOn& goOn) {
    const QSizeF paper = document.pages.isEmpty() ? Page().size : document.pages.first().size;
    file.write("{\\rtf1\\ansi\\ansicpg1252\\deff0\\uc1{\\fonttbl{\\f0\\fswiss Liberation "
               "Sans;}}{\\info{\\title " +
               escaped(document.title) + "}{\\author " + escaped(document.author) + "}}\n\\paperw" +
               twips(paper.width()) + "\\paperh" + twips(paper.height()) +
               (paper.width() > paper.height() ? "\\landscape" : ""));
    for (const char* side : {"\\margl", "\\margr", "\\margt", "\\margb"})
        file.write(side + twips(edge));
    file.write("\\f0\n");
    qsizetype written = 0;
    PngPictures pictures;
    for (const Page& page : document.pages) {
        ask(goOn, written, document.pages.size());
        if (written++ > 0)
            file.write("\\sect");
        file.write(section(page));
        for (const PagePicture& drawing : page.pictures)
            if (!drawing.isText && !drawing.mark) // those are in words
                file.write(picture(drawing, pictures));
        file.write(paragraphs(page));
    }
    file.write("}\n");
}
