#pragma once

#include "documents/report/Page.h"

#include <QStringList>

/// All texts of a page, in order.
inline QStringList textsOf(const Page& page) {
    QStringList texts;
    for (const PageText& text : page.texts)
        texts.append(text.plain());
    return texts;
}
