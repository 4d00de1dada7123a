#include "documents/export/PdfPages.h"

#include "core/base/PdfText.h"
#include "documents/report/PagePainter.h"
#include "documents/report/TextFit.h"

#include <algorithm>
#include <utility>

using PdfWords::numbers;
using PdfWords::reference;

PdfPages::PdfPages(const Document& written, PdfFile& target)
    : document(written), file(target), pictures(target), tags(target, int(written.pages.size())) {
    for (const PageLink& link : document.links)
        linksByPage.insert(link.page, &link);
}

int PdfPages::write(const Export::GoOn& goOn) {
    const int list = file.reserve();
    const int resources = file.reserve();
    for (qsizetype i = 0; i < document.pages.size(); ++i)
        objects.append(file.reserve());
    for (int i = 0; i < document.pages.size(); ++i) {
        Export::ask(goOn, i, document.pages.size());
        writePage(i, list, resources);
    }
    endTable();
    QByteArray kids;
    for (const int object : std::as_const(objects))
        kids += reference(object) + ' ';
    file.write(list, "<</Type/Pages/Kids[" + kids + "]/Count " + QByteArray::number(objects.size()) + ">>");
    file.write(resources, "<</Font<<" + fonts.write(file) + ">>/XObject<<" + pictures.names() + ">>>>");
    return list;
}

void PdfPages::writePage(int index, int parent, int resources) {
    page = &document.pages[index];
    pageIndex = index;
    links = linksByPage.values(index);
    annotations.clear();
    content.emplace(fonts, page->size.height());
    tags.beginPage(objects[index]);
    areasAndLines(*page);
    for (const PdfReading::Strip& strip : PdfReading::stripsOf(*page)) {
        rows(strip.rows);
        if (!strip.pieces.isEmpty())
            endTable();
        for (const PdfReading::Piece& one : strip.pieces)
            piece(one);
    }
    furniture(*page);
    tags.endPage();
    QByteArray object = "<</Type/Page/Parent " + reference(parent) + "/MediaBox[0 0 ";
    numbers(object, {page->size.width(), page->size.height()});
    object += "]/Resources " + reference(resources) + "/StructParents " + QByteArray::number(index) +
              "/Tabs/S/Contents " + reference(file.addStream({}, content->bytes));
    if (!annotations.isEmpty())
        object += "/Annots[" + annotations + ']';
    file.write(objects[index], object + ">>");
}

void PdfPages::areasAndLines(const Page& drawn) {
    if (drawn.boxes.isEmpty() && drawn.lines.isEmpty())
        return;
    content->beginArtifact();
    for (const PageBox& box : drawn.boxes)
        content->box(box.place, box.width, box.fill);
    for (const PageLine& line : drawn.lines)
        content->line(line.from, line.to, line.width);
    content->endMarked();
}

void PdfPages::furniture(const Page& drawn) {
    content->beginFurniture();
    for (const PageText& text : drawn.texts)
        if (PdfReading::isFurniture(text))
            draw(text);
    for (const PageCheck& check : drawn.checks)
        if (PdfReading::isFurniture(check.caption)) {
            drawBox(check);
            draw(check.caption);
        }
    content->endMarked();
}

void PdfPages::piece(const PdfReading::Piece& piece) {
    if (piece.picture)
        picture(*piece.picture);
    else if (piece.check)
        check(*piece.check);
    else
        texts(piece.texts, piece.heading());
}

void PdfPages::picture(const PagePicture& shown) {
    const PdfPictures::Picture drawn = pictures.picture(shown.svg);
    const QRectF place = picturePlace(drawn.size, shown.place);
    begin(shown.isText ? "Formula" : "Figure",
          PdfStructure::insteadOf(shown.description) + PdfStructure::bounds(place, page->size.height()));
    mark();
    content->picture(drawn.name, place.topLeft(), place.width() / drawn.view.width());
    content->endMarked();
    for (const PictureLabel& label : drawn.labels) {
        const PictureLabel placed = onPage(label, drawn.view, place);
        mark();
        content->text(placed.text, placed.style, startOf(placed));
        content->endMarked();
    }
    end();
}

/// The words that say whether it is ticked stand unseen behind the caption.
void PdfPages::check(const PageCheck& shown) {
    begin("P");
    mark();
    drawBox(shown);
    placeLines(shown.caption, [&](QStringView line, const QPointF& at, QChar) {
        content->text(line, shown.caption.style, at);
        const QPointF end = at + QPointF(TextFit::width(line, shown.caption.style), 0);
        content->unseenText(shown.inWords().text.mid(line.size()), shown.caption.style, end);
    });
    content->endMarked();
    end();
}

void PdfPages::drawBox(const PageCheck& shown) {
    content->box(shown.place, checkWidth, {});
    if (!shown.checked)
        return;
    const auto corners = tickIn(shown.place);
    content->polyline(QList<QPointF>(corners.begin(), corners.end()), tickWidth);
}

void PdfPages::texts(const QList<const PageText*>& list, int heading) {
    begin(heading == 1 ? "H1" : heading == 2 ? "H2" : "P");
    for (const PageText* one : list)
        text(*one);
    end();
}

/// A text as content of the open element, or of a link in it.
void PdfPages::text(const PageText& shown) {
    const auto found = std::find_if(links.cbegin(), links.cend(),
                                    [&](const PageLink* link) { return link->place == QRectF(shown.place); });
    if (found != links.cend()) {
        begin("Link");
        link(**found, shown.plain());
    }
    mark();
    draw(shown);
    content->endMarked();
    if (found != links.cend())
        end();
}

void PdfPages::draw(const PageText& shown) {
    placeLines(shown, [&](QStringView line, const QPointF& at, QChar separator) {
        // A blank keeps the words of two lines apart when they are read or copied.
        // In a line from right to left it would push the letters aside.
        const QString letters = line.toString();
        const bool words =
            (separator == PageText::BlankBreak || separator == u'\n') && !letters.isRightToLeft();
        content->text(words ? QString(letters + u' ') : letters, shown.style, at);
    });
}

void PdfPages::link(const PageLink& link, const QString& text) {
    const double height = page->size.height();
    const int object = file.reserve();
    QByteArray annotation = "<</Type/Annot/Subtype/Link/F 4/Border[0 0 0]/Rect[";
    numbers(annotation,
            {link.place.left(), height - link.place.bottom(), link.place.right(), height - link.place.top()});
    annotation += "]/Dest[" + reference(objects[link.target]) + "/XYZ 0 ";
    numbers(annotation, {document.pages[link.target].size.height()});
    annotation +=
        "0]/Contents" + pdfText(text) + "/StructParent " + QByteArray::number(tags.annotation(object)) + ">>";
    file.write(object, annotation);
    annotations += reference(object) + ' ';
}

void PdfPages::begin(const char* kind, const QByteArray& entries) {
    kinds.push_back(kind);
    tags.begin(kind, entries);
}

void PdfPages::end() {
    kinds.pop_back();
    tags.end();
}

void PdfPages::mark() {
    content->beginMarked(kinds.back(), tags.content());
}
