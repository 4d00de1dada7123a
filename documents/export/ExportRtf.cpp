#include "documents/export/Export.h"
#include "documents/export/PageGrid.h"

#include <cmath>

namespace {

int twips(double points) {
    return int(std::lround(points * 20));
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
        else // signed, with a question mark for readers that know no Unicode
            out += "\\u" + QByteArray::number(qint16(c.unicode())) + "\\'3f";
    }
    return out;
}

QByteArray run(const PageText& text) {
    return "{\\fs" + QByteArray::number(std::lround(text.style.size * 2)) + (text.style.bold ? "\\b" : "") +
           (text.style.italic ? "\\i" : "") + ' ' + escaped(text.plain()) + '}';
}

QByteArray paragraph(const GridRow& row, double leftMargin) {
    QByteArray stops;
    QByteArray runs;
    bool first = true;
    for (const PageText* text : row) {
        const bool right = text->style.alignment & Qt::AlignRight;
        const bool center = text->style.alignment & Qt::AlignHCenter;
        const double at = right    ? text->place.right()
                          : center ? text->place.center().x()
                                   : text->place.left();
        const int stop = twips(at - leftMargin);
        if (stop > 0) {
            stops += (right    ? "\\tqr"
                      : center ? "\\tqc"
                               : "") +
                     QByteArray("\\tx") + QByteArray::number(stop);
            runs += "\\tab ";
        } else if (!first) {
            runs += ' ';
        }
        runs += run(*text);
        first = false;
    }
    const bool wraps = row.size() == 1 && row.first()->lines().size() > 1;
    const QByteArray indent =
        wraps ? "\\li" + QByteArray::number(twips(row.first()->place.left() - leftMargin)) : QByteArray();
    if (wraps)
        return "\\pard" + indent + ' ' + run(*row.first()) + "\\par\n";
    return "\\pard" + stops + ' ' + runs + "\\par\n";
}

QByteArray picture(const PagePicture& drawing) {
    const QByteArray width = QByteArray::number(twips(drawing.place.width()));
    const QByteArray height = QByteArray::number(twips(drawing.place.height()));
    return "\\pard\\qr{\\pict\\pngblip\\picwgoal" + width + "\\pichgoal" + height + '\n' +
           PictureAsPng(drawing).toHex() + "}\\par\n";
}

} // namespace

QByteArray Export::rtf(const Document& file) {
    constexpr double margin = 36; // points
    QByteArray document = "{\\rtf1\\ansi\\ansicpg1252\\deff0\\uc1{\\fonttbl{\\f0\\fswiss Liberation "
                          "Sans;}}{\\info{\\title " +
                          escaped(file.title) + "}{\\author Brennoval}}\n\\paperw" +
                          QByteArray::number(twips(612)) + "\\paperh" + QByteArray::number(twips(792)) +
                          "\\margl" + QByteArray::number(twips(margin)) + "\\margr" +
                          QByteArray::number(twips(margin)) + "\\margt" + QByteArray::number(twips(margin)) +
                          "\\margb" + QByteArray::number(twips(margin)) + "\\f0\n";
    bool first = true;
    for (const Page& page : file.pages) {
        if (!first)
            document += "\\page\n";
        first = false;
        for (const GridRow& row : RowsOf(page))
            document += paragraph(row, margin);
        for (const PagePicture& drawing : page.pictures)
            document += picture(drawing);
    }
    return document + "}\n";
}
