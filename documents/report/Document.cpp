#include "documents/report/Document.h"

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
