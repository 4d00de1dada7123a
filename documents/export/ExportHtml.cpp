#include "documents/export/Export.h"
#include "documents/export/PageGrid.h"
#include "documents/report/PagePainter.h"
#include "documents/report/TextFit.h"

#include <QIODevice>
#include <QSvgRenderer>

#include <cmath>

namespace {

QString points(double value) {
    return QString::number(value, 'f', 2) + "pt";
}

QString placed(const QRectF& place) {
    return "left:" + points(place.left()) + ";top:" + points(place.top()) +
           ";width:" + points(place.width()) + ";height:" + points(place.height());
}

QString textElement(const PageText& text) {
    const QString align = text.style->alignment & Qt::AlignRight     ? "right"
                          : text.style->alignment & Qt::AlignHCenter ? "center"
                                                                     : "left";
    QRectF place = text.place;
    place.setTop(topOf(text));
    const QString content = text.text.toHtmlEscaped()
                                .replace(PageText::BlankBreak, " ")
                                .replace(PageText::WordBreak, "<wbr>")
                                .replace('\n', "<br>");
    const QString tag = text.heading > 0 ? "h" + QString::number(text.heading) : "p";
    return '<' + tag + " style=\"" + placed(place) + ";font-size:" + points(text.style->size) +
           ";line-height:" + points(TextFit::lineHeight(text.style)) +
           (text.style->bold ? ";font-weight:bold" : ";font-weight:normal") +
           (text.style->italic ? ";font-style:italic" : "") +
           (text.style->color != Qt::black ? ";color:" + text.style->color.name() : "") +
           (text.breaks() ? ";overflow-wrap:anywhere" : ";white-space:pre") + ";text-align:" + align + "\">" +
           content + "</" + tag + ">\n";
}

/// A browser draws a border inside its box and on whole pixels. Rounding the edges to pixels and growing the
/// box by its border lets neighbours share one line on the screen, as they do on paper.
QString boxElement(const PageBox& box) {
    constexpr double pixel = .75; // points
    const auto onPixel = [](double edge) { return std::round(edge / pixel) * pixel; };
    const QRectF place(QPointF(onPixel(box.place.left()), onPixel(box.place.top())),
                       QPointF(onPixel(box.place.right()), onPixel(box.place.bottom())));
    return "<div class=\"b\" style=\"" + placed(place.adjusted(0, 0, box.width, box.width)) +
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
    QRectF place = check.place;
    place.setRight(std::max(check.place.right(), check.caption.place.right()));
    return "<label style=\"" + placed(place) + ";font-size:" + points(check.caption.style->size) +
           "\"><input type=\"checkbox\" disabled" + (check.checked ? " checked" : "") + ">" +
           check.caption.text.toHtmlEscaped() + "</label>\n";
}

QString pictureElement(const PagePicture& picture) {
    const QRectF place = picturePlace(QSvgRenderer(picture.svg).defaultSize(), picture.place);
    return "<img alt=\"" + picture.description.toHtmlEscaped() + "\" style=\"" + placed(place) +
           "\" src=\"data:image/svg+xml;base64," + picture.svg.toBase64() + "\">\n";
}

/// Whether a page lies the other way than the first, as the schedule of a package.
bool liesAcross(const Page& page, const Document& document) {
    const QSizeF first = document.pages.first().size;
    return (page.size.width() > page.size.height()) != (first.width() > first.height());
}

/// The paper of the pages that lie across.
QString acrossStyle(const Document& document) {
    for (const Page& page : document.pages)
        if (liesAcross(page, document))
            return "@page across{size:" + points(page.size.width()) + ' ' + points(page.size.height()) +
                   ";margin:0}\n.across{page:across}\n";
    return {};
}

/// Everything the file needs only once; the printed page has the size of the paper.
QString head(const Document& document) {
    const QSizeF paper = document.pages.isEmpty() ? Page().size : document.pages.first().size;
    return "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n<meta name=\"author\" "
           "content=\"" +
           document.author.toHtmlEscaped() + "\">\n<title>" + document.title.toHtmlEscaped() +
           "</title>\n<style>\n@page{size:" + points(paper.width()) + ' ' + points(paper.height()) +
           ";margin:0}\nbody{background:#dce3ea;margin:0;font-family:'Liberation Sans',Arial,"
           "Helvetica,sans-serif;-webkit-print-color-adjust:exact;print-color-adjust:exact}\n"
           ".page{position:relative;background:#fff;margin:12pt auto;overflow:hidden}\n"
           ".page>*{position:absolute;margin:0;box-sizing:border-box}\n.page "
           "label{display:flex;align-items:center;"
           "line-height:1;gap:4pt}\n.page input{appearance:none;position:relative;box-sizing:border-box;"
           "margin:0;width:9pt;height:9pt;border:.6pt solid #000}\n.page input:checked::after{content:'';"
           "position:absolute;left:2.6pt;top:.4pt;width:2pt;height:4.6pt;border:solid #000;"
           "border-width:0 1.1pt 1.1pt 0;transform:rotate(42deg)}\n@media "
           "print{body{background:#fff}.page{margin:0}"
           ".page+.page{break-before:page}}\n" +
           acrossStyle(document) + "</style>\n</head>\n<body>\n";
}

QString pageElement(const Page& page, bool across) {
    QString document = "<div class=\"page" + QString(across ? " across" : "") +
                       "\" style=\"width:" + points(page.size.width()) +
                       ";height:" + points(page.size.height()) + "\">\n";
    for (const PageBox& box : page.boxes)
        document += boxElement(box);
    for (const PageLine& line : page.lines)
        document += lineElement(line);
    for (const PagePicture& picture : page.pictures)
        document += pictureElement(picture);
    for (const PageCheck& check : page.checks)
        document += checkElement(check);
    Page texts = page; // check boxes and pictures are already drawn
    texts.checks.clear();
    texts.pictures.clear();
    const PageGrid grid(texts);
    for (const PageText* text : grid.readingOrder())
        document += textElement(*text);
    return document + "</div>\n";
}

} // namespace

void Export::html(const Document& document, QIODevice& file, const GoOn& goOn) {
    file.write(head(document).toUtf8());
    qsizetype written = 0;
    for (const Page& page : document.pages) {
        ask(goOn, written++, document.pages.size());
        file.write(pageElement(page, liesAcross(page, document)).toUtf8());
    }
    file.write("</body>\n</html>\n");
}
