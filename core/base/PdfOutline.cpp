#include "core/base/PdfOutline.h"

#include "core/base/PdfText.h"

#include <QRegularExpression>

#include <algorithm>

namespace {

/// What the end of a PDF says about it.
struct Trailer {
    int size = 0; // the first free object number
    QByteArray info;
    QByteArray root;
    QByteArray table; // offset of the table of objects
};

Trailer trailerOf(const QByteArray& pdf) {
    static const QRegularExpression pattern(
        R"(trailer\s*<<\s*/Size (\d+)\s*/Info (\d+) 0 R\s*/Root (\d+) 0 R.*?startxref\s*(\d+))",
        QRegularExpression::DotMatchesEverythingOption);
    const qsizetype start = pdf.lastIndexOf("trailer"); // an update has one of its own
    const auto found = pattern.match(QString::fromLatin1(pdf.mid(std::max(qsizetype(0), start))));
    return {found.captured(1).toInt(), found.captured(2).toLatin1(), found.captured(3).toLatin1(),
            found.captured(4).toLatin1()};
}

/// The object numbers of the sheets, in the order in which the writer made them.
QList<QByteArray> sheetsOf(const QByteArray& pdf) {
    QList<QByteArray> numbers;
    const QByteArray mark = " 0 obj\n<<\n/Type /Page\n";
    for (qsizetype at = pdf.indexOf(mark); at >= 0; at = pdf.indexOf(mark, at + 1)) {
        const qsizetype start = pdf.lastIndexOf('\n', at) + 1;
        numbers.append(pdf.mid(start, at - start));
    }
    return numbers;
}

QByteArray points(double length) {
    return QByteArray::number(length, 'f', 1);
}

/// What a sheet leads to; the writer made an empty list for it.
QByteArray annotations(const QList<PdfLink>& links, int sheet, const QList<QByteArray>& sheets) {
    QByteArray list;
    for (const PdfLink& link : links)
        if (link.sheet == sheet)
            list += "<< /Type /Annot /Subtype /Link /Border [0 0 0] /Rect [" + points(link.place.left()) +
                    ' ' + points(link.place.top()) + ' ' + points(link.place.right()) + ' ' +
                    points(link.place.bottom()) + "] /Dest [" + sheets.value(link.target) + " 0 R /XYZ 0 " +
                    points(link.top) + " 0] >>\n";
    return "[\n" + list + "]\n";
}

/// The object number of a sheet's list of annotations.
QByteArray annotationsOf(const QByteArray& pdf, const QByteArray& sheet) {
    const QByteArray mark = "/Annots ";
    const qsizetype at = pdf.indexOf(mark, pdf.indexOf('\n' + sheet + " 0 obj\n")) + mark.size();
    return pdf.mid(at, pdf.indexOf(' ', at) - at);
}

QByteArray reference(qsizetype number) {
    return QByteArray::number(number) + " 0 R\n";
}

} // namespace

QList<QByteArray> outlineObjects(const QList<OutlineEntry>& entries, const QList<QByteArray>& sheets,
                                 int first) {
    const qsizetype count = entries.size();
    const auto number = [first](qsizetype entry) { return first + 1 + entry; };
    // The last entry before and the first behind that stand on the same level below the same parent.
    const auto neighbour = [&](qsizetype entry, int step) -> qsizetype {
        for (qsizetype other = entry + step; other >= 0 && other < count; other += step) {
            if (entries[other].depth < entries[entry].depth)
                return -1;
            if (entries[other].depth == entries[entry].depth)
                return other;
        }
        return -1;
    };
    const auto children = [&](qsizetype entry) { // -1 for the root
        const int depth = entry < 0 ? 0 : entries[entry].depth + 1;
        QList<qsizetype> found;
        for (qsizetype other = entry + 1; other < count && entries[other].depth >= depth; ++other)
            if (entries[other].depth == depth)
                found.append(other);
        return found;
    };
    const auto family = [&](qsizetype entry, bool open) {
        const QList<qsizetype> own = children(entry);
        if (own.isEmpty())
            return QByteArray();
        return "/First " + reference(number(own.first())) + "/Last " + reference(number(own.last())) +
               "/Count " + QByteArray::number(open ? own.size() : -own.size()) + '\n';
    };
    QList<QByteArray> objects = {"<<\n/Type /Outlines\n" + family(-1, true) + ">>\n"};
    for (qsizetype i = 0; i < count; ++i) {
        const OutlineEntry& entry = entries[i];
        qsizetype parent = i - 1;
        while (parent >= 0 && entries[parent].depth >= entry.depth)
            --parent;
        QByteArray text = "<<\n/Title " + pdfText(entry.title) + "\n/Parent " +
                          reference(parent < 0 ? first : number(parent));
        if (const qsizetype before = neighbour(i, -1); before >= 0)
            text += "/Prev " + reference(number(before));
        if (const qsizetype behind = neighbour(i, 1); behind >= 0)
            text += "/Next " + reference(number(behind));
        text += family(i, false) + "/Dest [" + sheets.value(entry.sheet) + " 0 R /XYZ 0 " +
                points(entry.top) + " 0]\n>>\n";
        objects.append(text);
    }
    return objects;
}

/// Appends the outline, the catalog that names it and the links, the way the format provides for updates.
QByteArray withOutline(QByteArray pdf, const QList<OutlineEntry>& entries, const QList<PdfLink>& links) {
    const Trailer end = trailerOf(pdf);
    const QList<QByteArray> sheets = sheetsOf(pdf);
    const qsizetype start = pdf.indexOf('\n' + end.root + " 0 obj\n<<");
    if (end.size == 0 || start < 0 || entries.isEmpty())
        return {};
    for (const OutlineEntry& entry : entries)
        if (entry.sheet >= sheets.size())
            return {};
    QByteArray catalog = pdf.mid(start + 1, pdf.indexOf("endobj", start) - start - 1);
    catalog.insert(catalog.indexOf("<<") + 2,
                   "\n/Outlines " + reference(end.size) + "/PageMode /UseOutlines");
    const auto place = [&pdf] { return QByteArray::number(pdf.size()).rightJustified(10, '0'); };
    QByteArray table = "xref\n" + end.root + " 1\n" + place() + " 00000 n \n";
    pdf += catalog + "endobj\n";
    const QList<QByteArray> objects = outlineObjects(entries, sheets, end.size);
    table += QByteArray::number(end.size) + ' ' + QByteArray::number(objects.size()) + '\n';
    int number = end.size;
    for (const QByteArray& object : objects) {
        table += place() + " 00000 n \n";
        pdf += QByteArray::number(number++) + " 0 obj\n" + object + "endobj\n";
    }
    for (int sheet = 0; sheet < sheets.size(); ++sheet) {
        const QByteArray list = annotationsOf(pdf, sheets[sheet]);
        table += list + " 1\n" + place() + " 00000 n \n";
        pdf += list + " 0 obj\n" + annotations(links, sheet, sheets) + "endobj\n";
    }
    const QByteArray tableAt = QByteArray::number(pdf.size());
    pdf += table + "trailer\n<<\n/Size " + QByteArray::number(number) + "\n/Info " + end.info +
           " 0 R\n/Root " + end.root + " 0 R\n/Prev " + end.table + "\n>>\nstartxref\n" + tableAt +
           "\n%%EOF\n";
    return pdf;
}
