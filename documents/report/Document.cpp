#include "documents/report/Document.h"

#include <QHash>

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
