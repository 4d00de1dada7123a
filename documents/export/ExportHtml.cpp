#include "documents/export/Export.h"
#include "documents/export/PageGrid.h"
#include "documents/report/PagePainter.h"
#include "documents/report/TextFit.h"

#include <QFile>
#include <QSvgRenderer>

namespace {

QString points(double value) {
    return QString::number(value, 'f', 2) + "pt";
}

QString placed(const QRectF& place) {
    return "left:" + points(place.left()) + ";top:" + points(place.top()) +
           ";width:" + points(place.width()) + ";height:" + points(place.height());
}

QString textElement(const PageText& text) {
    const QString align = text.style.alignment & Qt::AlignRight     ? "right"
                          : text.style.alignment & Qt::AlignHCenter ? "center"
                                                                    : "left";
    QRectF place = text.place;
    const double lineHeight = TextFit::lineHeight(text.style);
    if (text.style.alignment & Qt::AlignVCenter)
        place.setTop(place.center().y() - lineHeight * double(text.lines().size()) / 2);
    const QString content =
        text.text.toHtmlEscaped().replace(QChar::LineSeparator, " ").replace('\n', "<br>");
    const bool wraps = text.lines().size() > 1;
    return "<p style=\"" + placed(place) + ";font-size:" + points(text.style.size) +
           ";line-height:" + points(lineHeight) + (text.style.bold ? ";font-weight:bold" : "") +
           (text.style.italic ? ";font-style:italic" : "") +
           (text.style.color != Qt::black ? ";color:" + text.style.color.name() : "") +
           (wraps ? "" : ";white-space:pre") + ";text-align:" + align + "\">" + content + "</p>\n";
}

QString boxElement(const PageBox& box) {
    return "<div class=\"b\" style=\"" + placed(box.place) +
           (box.fill.isValid() ? ";background:" + box.fill.name() : QString()) +
           (box.width > 0 ? ";border:" + points(box.width) + " solid #000" : QString()) + "\"></div>\n";
}

QString lineElement(const PageLine& line) {
    QRectF place = QRectF(line.from, line.to).normalized();
    const bool horizontal = place.height() < place.width();
    return "<div class=\"b\" style=\"" + placed(place) + ";border-" + (horizontal ? "top" : "left") + ":" +
           points(line.width) + " solid #000\"></div>\n";
}

QString checkElement(const PageCheck& check) {
    return "<input type=\"checkbox\" disabled" + QString(check.checked ? " checked" : "") + " style=\"" +
           placed(check.place) + "\">\n";
}

QString pictureElement(const PagePicture& picture) {
    QFile file(picture.file);
    const QByteArray svg = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    const QRectF place = PicturePlace(QSvgRenderer(svg).defaultSize(), picture.place);
    return "<img alt=\"Drawing\" style=\"" + placed(place) + "\" src=\"data:image/svg+xml;base64," +
           svg.toBase64() + "\">\n";
}

} // namespace

QByteArray Export::html(const Document& file) {
    QString document =
        "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n<title>" +
        file.title.toHtmlEscaped() +
        "</title>\n<style>\nbody{background:#dce3ea;margin:0;font-family:'Liberation Sans',Arial,"
        "Helvetica,sans-serif}\n.page{position:relative;background:#fff;margin:12pt auto;"
        "page-break-after:always}\n.page>*{position:absolute;margin:0;box-sizing:border-box}\n"
        "@media print{body{background:#fff}.page{margin:0}}\n</style>\n</head>\n<body>\n";
    for (const Page& page : file.pages) {
        document += "<div class=\"page\" style=\"width:" + points(page.size.width()) +
                    ";height:" + points(page.size.height()) + "\">\n";
        for (const PageBox& box : page.boxes)
            document += boxElement(box);
        for (const PageLine& line : page.lines)
            document += lineElement(line);
        for (const PagePicture& picture : page.pictures)
            document += pictureElement(picture);
        for (const PageCheck& check : page.checks)
            document += checkElement(check);
        for (const GridRow& row : RowsOf(page)) // read aloud or copied, the texts come in their order
            for (const PageText* text : row)
                document += textElement(*text);
        document += "</div>\n";
    }
    return (document + "</body>\n</html>\n").toUtf8();
}
