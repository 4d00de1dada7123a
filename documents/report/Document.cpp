#include "documents/report/Document.h"

#include <QHash>

#include <algorithm>
#include <utility>

namespace {

using Places = QHash<int, int>; // of the pages that are kept; the first one of a page that is there twice

QList<Bookmark> keptBookmarks(const QList<Bookmark>& bookmarks, const Places& places) {
    QList<Bookmark> kept;
    for (auto mark = bookmarks.crbegin(); mark != bookmarks.crend(); ++mark)
        if (const int place = places.value(mark->page, -1); place >= 0)
            kept.prepend({mark->title, mark->depth, place, mark->text});
        else if (!kept.isEmpty() && mark->depth < kept.first().depth)
            kept.prepend({mark->title, mark->depth, kept.first().page, kept.first().text});
    return kept;
}

bool liesAcross(const QSizeF& size) {
    return size.width() > size.height();
}

/// How much smaller a page is on a paper, and that paper, turned as the page is.
std::pair<double, QSizeF> placeOn(const QSizeF& paper, const QSizeF& page) {
    const QSizeF turned = liesAcross(page) == liesAcross(paper) ? paper : paper.transposed();
    return {std::min({1.0, turned.width() / page.width(), turned.height() / page.height()}), turned};
}

QRectF scaled(const QRectF& place, double scale) {
    return {place.topLeft() * scale, place.size() * scale};
}

void scale(PageText& text, double by) {
    text.place = scaled(text.place, by);
    TextStyle style = text.style;
    style.size *= by;
    text.style = style;
}

void scale(Page& page, double by) {
    for (PageBox& box : page.boxes)
        box = {scaled(box.place, by), box.width * by, box.fill};
    for (PageLine& line : page.lines)
        line = {line.from * by, line.to * by, line.width * by};
    for (PageText& text : page.texts)
        scale(text, by);
    for (PageCheck& check : page.checks) {
        check.place = scaled(check.place, by);
        scale(check.caption, by);
    }
    for (PagePicture& picture : page.pictures)
        picture.place = scaled(picture.place, by);
}

} // namespace

QList<Bookmark> outlineOf(const Document& document) {
    if (!document.bookmarks.isEmpty())
        return document.bookmarks;
    QList<Bookmark> marks;
    for (int page = 0; page < document.pages.size(); ++page)
        for (int i = 0; i < document.pages[page].texts.size(); ++i)
            if (const PageText& text = document.pages[page].texts[i];
                text.section == Section::GroupHeader && text.heading > 0 && !text.repeated)
                marks.append({text.plain(), 0, page, i});
    return marks;
}

Document selectionOf(const Document& document, const QList<int>& pages) {
    Document chosen = document;
    chosen.pages.clear();
    chosen.links.clear();
    chosen.pageLabels.clear();
    Places places;
    for (const int page : pages) {
        if (!places.contains(page))
            places.insert(page, int(chosen.pages.size()));
        chosen.pages.append(document.pages[page]);
        if (!document.pageLabels.isEmpty())
            chosen.pageLabels.append(document.pageLabels[page]);
    }
    chosen.bookmarks = keptBookmarks(document.bookmarks, places);
    for (int place = 0; place < pages.size(); ++place)
        for (const PageLink& link : document.links)
            if (link.page == pages[place] && places.contains(link.target))
                chosen.links.append({place, link.place, places.value(link.target)});
    return chosen;
}

Document onPaper(Document document, const QSizeF& paper) {
    for (PageLink& link : document.links) // the place of a text, which loses digits
        link.place =
            QRectF(TextRect(scaled(link.place, placeOn(paper, document.pages[link.page].size).first)));
    for (Page& page : document.pages) {
        const auto [by, turned] = placeOn(paper, page.size);
        if (by < 1)
            scale(page, by);
        page.size = turned;
    }
    return document;
}
