#include "documents/report/Document.h"

QList<Bookmark> outlineOf(const Document& document) {
    if (!document.bookmarks.isEmpty())
        return document.bookmarks;
    QList<Bookmark> marks;
    for (int page = 0; page < document.pages.size(); ++page)
        for (const PageText& text : document.pages[page].texts)
            if (text.section == Section::GroupHeader && text.heading > 0 && !text.repeated)
                marks.append({text.plain(), 0, page, text.place.top()});
    return marks;
}
