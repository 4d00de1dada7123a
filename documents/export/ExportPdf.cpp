#include "core/base/PdfOutline.h"
#include "core/base/PdfText.h"
#include "documents/export/Export.h"
#include "documents/export/PdfPages.h"

#include <QDateTime>

using PdfWords::reference;

namespace {

/// What the file says about itself.
int writeInfo(PdfFile& file, const Document& document) {
    const QByteArray now =
        "(D:" + QDateTime::currentDateTimeUtc().toString(QStringLiteral("yyyyMMddHHmmss")).toLatin1() + "Z)";
    QByteArray info = "<</Title" + pdfText(document.title);
    if (!document.author.isEmpty())
        info += "/Author" + pdfText(document.author);
    return file.add(info + "/Creator(Brennoval)/Producer(Brennoval)/CreationDate" + now + "/ModDate" + now +
                    ">>");
}

/// Returns the root of the outline.
int writeOutline(PdfFile& file, const Document& document, const QList<Bookmark>& marks,
                 const QList<int>& pages) {
    QList<OutlineEntry> entries;
    for (const Bookmark& mark : marks) {
        const Page& page = document.pages[mark.page];
        const double top = mark.text > 0 ? page.texts[mark.text].place.top() : 0; // 0 is the page's first
        entries.append({mark.title, mark.depth, mark.page, page.size.height() - top});
    }
    QList<QByteArray> sheets;
    for (const int page : pages)
        sheets.append(QByteArray::number(page));
    const int first = file.reserve();
    for (qsizetype i = 0; i < entries.size(); ++i)
        file.reserve();
    int number = first;
    for (const QByteArray& object : outlineObjects(entries, sheets, first))
        file.write(number++, object);
    return first;
}

QByteArray pageLabels(const QStringList& labels) {
    QByteArray list;
    for (qsizetype i = 0; i < labels.size(); ++i)
        list += QByteArray::number(i) + "<</P" + pdfText(labels[i]) + ">>";
    return "/PageLabels<</Nums[" + list + "]>>";
}

} // namespace

void Export::pdf(const Document& document, QIODevice& target, const GoOn& goOn) {
    PdfFile file(target);
    PdfPages pages(document, file);
    QByteArray catalog = "<</Type/Catalog/Lang(en-US)/MarkInfo<</Marked true>>/ViewerPreferences"
                         "<</DisplayDocTitle true>>/Pages " +
                         reference(pages.write(goOn));
    catalog += "/StructTreeRoot " + reference(pages.structure());
    if (const QList<Bookmark> marks = outlineOf(document); !marks.isEmpty())
        catalog +=
            "/PageMode/UseOutlines/Outlines " + reference(writeOutline(file, document, marks, pages.pages()));
    if (!document.pageLabels.isEmpty())
        catalog += pageLabels(document.pageLabels);
    file.finish(file.add(catalog + ">>"), writeInfo(file, document));
}
