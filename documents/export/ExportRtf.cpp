#include "documents/export/Export.h"
#include "documents/export/PageGrid.h"
#include "documents/report/PagePainter.h"
#include "documents/report/TextFit.h"

#include <QIODevice>
#include <QSvgRenderer>

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>
#include <vector>

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
    // Half points; never larger than on the page, where the text fits.
    return "{\\fs" + QByteArray::number(int(text.style->size * 2)) + (text.style->bold ? "\\b" : "") +
           (text.style->italic ? "\\i" : "") + ' ' + escaped(text.plain()) + '}';
}

/// Where rows of texts stand: on the page, or in a frame that is placed on it.
struct Room {
    double left;
    double top;
    double right;
    QByteArray frame; // the words that make a paragraph part of it
};

/// A wrapped text with nothing beside it: the word processor wraps it, in slightly more room than on the
/// page.
QByteArray block(const PageText& text, const Room& room) {
    constexpr double slack = 6; // points
    return "\\li" + twips(text.place.left() - room.left) + "\\ri" +
           twips(std::max(0., room.right - text.place.right() - slack)) + ' ' + run(text);
}

/// Texts side by side, each at a tab stop but for one that begins the line.
QByteArray tabbed(const GridRow& row, const Room& room) {
    QByteArray stops;
    QByteArray runs;
    for (const PageText* text : row) {
        const bool right = text->style->alignment & Qt::AlignRight;
        const bool center = text->style->alignment & Qt::AlignHCenter;
        const double at = right    ? text->place.right()
                          : center ? text->place.center().x()
                                   : text->place.left();
        if (at > room.left) {
            stops += QByteArray(right ? "\\tqr" : center ? "\\tqc" : "") + "\\tx" + twips(at - room.left);
            runs += "\\tab ";
        }
        runs += run(*text);
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

/// A row with its lower edge where it is on the page. How far down the rows reach is told on.
QByteArray paragraph(const GridRow& row, const Room& room, double& reached) {
    const auto lines = double(row.first()->lines().size());
    const bool alone = row.size() == 1 && lines > 1;
    const double reach = std::max(0.0, bottomOf(row) - reached);
    const double line = std::min(lineHeight(row), reach / (alone ? lines : 1));
    const double before = reach - line * (alone ? lines : 1);
    reached = std::max(reached, bottomOf(row));
    return "\\pard" + room.frame + "\\sb" + twips(before) + "\\sl-" + twips(line) + "\\slmult0" +
           (alone ? block(*row.first(), room) : tabbed(row, room)) + "\\par\n";
}

/// The label and the values of a boxed field, as a frame: fields side by side have lines of their own
/// heights, which the rows of a page do not.
struct Field {
    Page texts;
    QRectF place;
};

QByteArray framed(const Field& field) {
    constexpr double slack = 4; // points, up to the sides of the box
    const Room room{field.place.left(), field.place.top(), field.place.right() + slack,
                    "\\pvpg\\phpg\\posx" + twips(field.place.left()) + "\\posy" + twips(field.place.top()) +
                        "\\absw" + twips(field.place.width() + slack)};
    const PageGrid grid(field.texts, PageGrid::Lines::Split);
    QByteArray all;
    double reached = room.top;
    for (const GridRow& row : grid.rows())
        all += paragraph(row, room, reached);
    return all;
}

/// Takes the fields out of a page.
std::vector<Field> takeFields(Page& page) {
    std::map<int, Field> fields;
    QList<PageText> others;
    for (const PageText& text : std::as_const(page.texts)) {
        if (text.field < 0) {
            others.append(text);
            continue;
        }
        Field& field = fields[text.field];
        field.texts.texts.append(text);
        field.place |= QRectF(text.place);
    }
    page.texts = others;
    std::vector<Field> inOrder;
    inOrder.reserve(fields.size());
    for (auto& [number, field] : fields)
        inOrder.push_back(std::move(field));
    std::ranges::stable_sort(inOrder, {}, [](const Field& field) { return field.place.top(); });
    return inOrder;
}

/// The rows of a page, so that a page stays a page; the fields stand between those above and below them.
QByteArray paragraphs(Page page) {
    const std::vector<Field> fields = takeFields(page);
    const Room whole{edge, edge, page.size.width() - edge, {}};
    const PageGrid grid(page, PageGrid::Lines::Split);
    QByteArray document;
    double reached = edge;
    auto next = fields.begin();
    for (const GridRow& row : grid.rows()) {
        for (; next != fields.end() && next->place.top() < topOf(*row.first()); ++next)
            document += framed(*next);
        document += paragraph(row, whole, reached);
    }
    for (; next != fields.end(); ++next)
        document += framed(*next);
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
