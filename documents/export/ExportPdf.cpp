#include "core/base/Fault.h"
#include "core/base/PdfOutline.h"
#include "core/base/PdfText.h"
#include "documents/export/Export.h"
#include "documents/report/PagePainter.h"

#include <QBuffer>
#include <QPainter>
#include <QPdfWriter>
#include <QRegularExpression>

#include <algorithm>

namespace {

/// Passes on what is written and keeps only the beginning and the end, where a PDF describes itself: a long
/// list would fill the memory.
class Ends : public QIODevice {
  public:
    explicit Ends(QIODevice& written) : file(written) { open(WriteOnly | Unbuffered); }
    bool isSequential() const override { return true; }

    QByteArray beginning;
    QByteArray end;
    qint64 length = 0;

  protected:
    qint64 readData(char*, qint64) override { return -1; }
    qint64 writeData(const char* data, qint64 size) override {
        constexpr qsizetype most = 16384; // of the beginning, including the longest title
        constexpr qsizetype tail = 1000;
        const QByteArrayView written(data, size);
        beginning += written.first(std::min(written.size(), most - beginning.size()));
        end += written.last(std::min(written.size(), tail));
        if (end.size() > tail)
            end.remove(0, end.size() - tail);
        length += size;
        return file.write(data, size);
    }

  private:
    QIODevice& file;
};

/// Adds the author, which the PDF writer has no way to set, by appending the file's description again at the
/// end, the way the format provides for updates.
void addAuthor(Ends& file, const QString& author) {
    static const QRegularExpression trailer(
        R"(trailer\s*<<\s*/Size (\d+)\s*/Info (\d+) 0 R\s*/Root (\d+) 0 R.*?startxref\s*(\d+))",
        QRegularExpression::DotMatchesEverythingOption);
    const auto end = trailer.match(QString::fromLatin1(file.end));
    const QByteArray info = end.captured(2).toLatin1();
    const qsizetype start = file.beginning.indexOf('\n' + info + " 0 obj\n<<");
    if (!end.hasMatch() || start < 0)
        throw Fault(Fault::PathFileAccess, "The PDF has no description.");
    QByteArray description =
        file.beginning.mid(start + 1, file.beginning.indexOf("endobj", start) - start - 1);
    description.insert(description.indexOf("<<") + 2, "\n/Author " + pdfText(author));
    const QByteArray place = QByteArray::number(file.length).rightJustified(10, '0');
    file.write(description + "endobj\n");
    const qint64 table = file.length;
    file.write("xref\n" + info + " 1\n" + place + " 00000 n \ntrailer\n<<\n/Size " +
               end.captured(1).toLatin1() + "\n/Info " + info + " 0 R\n/Root " + end.captured(3).toLatin1() +
               " 0 R\n/Prev " + end.captured(4).toLatin1() + "\n>>\nstartxref\n" + QByteArray::number(table) +
               "\n%%EOF\n");
}

void writePdf(const Document& document, QIODevice& file) {
    Ends ends(file);
    QPdfWriter writer(&ends);
    writer.setTitle(document.title);
    writer.setCreator(QStringLiteral("Brennoval"));
    constexpr int resolution = 1200; // dots per inch, so fine that rounding is invisible
    writer.setResolution(resolution);
    QPainter painter;
    for (const Page& page : document.pages) {
        writer.setPageSize(QPageSize(page.size, QPageSize::Point));
        writer.setPageMargins(QMarginsF());
        if (!painter.isActive())
            painter.begin(&writer);
        else
            writer.newPage();
        painter.save();
        painter.scale(resolution / 72.0, resolution / 72.0);
        paintPage(painter, page);
        painter.restore();
    }
    painter.end();
    if (!document.author.isEmpty())
        addAuthor(ends, document.author);
}

/// The bookmarks and links as the file has them, measured from the lower edge of the sheet.
QByteArray outlined(const Document& document, const QByteArray& pdf) {
    QList<OutlineEntry> entries;
    for (const Bookmark& mark : document.bookmarks)
        entries.append({mark.title, mark.depth, mark.page, document.pages[mark.page].size.height()});
    QList<PdfLink> links;
    for (const PageLink& link : document.links) {
        const double height = document.pages[link.page].size.height();
        links.append(
            {link.page,
             {link.place.left(), height - link.place.bottom(), link.place.width(), link.place.height()},
             link.target,
             document.pages[link.target].size.height()});
    }
    return withOutline(pdf, entries, links);
}

} // namespace

void Export::pdf(const Document& document, QIODevice& file) {
    if (document.bookmarks.isEmpty())
        return writePdf(document, file);
    QBuffer plain;
    plain.open(QIODevice::WriteOnly);
    writePdf(document, plain);
    const QByteArray whole = outlined(document, plain.data());
    file.write(whole.isEmpty() ? plain.data() : whole);
}
