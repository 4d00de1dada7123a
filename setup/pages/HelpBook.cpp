#include "setup/pages/HelpBook.h"

#include "setup/pages/HelpPictures.h"

#include <QAbstractTextDocumentLayout>
#include <QBuffer>
#include <QCoreApplication>
#include <QEventLoop>
#include <QHelpContentModel>
#include <QHelpEngine>
#include <QPainter>
#include <QPdfWriter>
#include <QTextBlock>
#include <QTextCursor>

#include <algorithm>
#include <cmath>

namespace {

constexpr double pixelsPerInch = 96;
constexpr double pointsPerPixel = 72 / pixelsPerInch;
constexpr double margin = 54;     // points around the text
constexpr double footHeight = 30; // pixels below the text, for the sheet's number
constexpr double printedDots = 2; // of a picture, in a pixel

/// A page that takes its style and pictures from the help file.
class BookPage : public QTextDocument {
  public:
    BookPage(const QHelpEngine& helpEngine, QUrl page) : engine(helpEngine), address(std::move(page)) {}

  protected:
    QVariant loadResource(int type, const QUrl& name) override {
        const QByteArray bytes = engine.fileData(address.resolved(name));
        return type == ImageResource ? QVariant(helpPicture(bytes, printedDots))
                                     : QVariant(QString::fromUtf8(bytes));
    }

  private:
    const QHelpEngine& engine;
    QUrl address;
};

QUrl pageOf(const QUrl& address) {
    return address.adjusted(QUrl::RemoveFragment);
}

/// A text of a page that leads elsewhere, and where its lines are, in pixels from the top of the page.
struct LinkedText {
    QUrl target;
    QList<QRectF> lines;
};

QList<LinkedText> linksOf(const QTextDocument& text) {
    QList<LinkedText> found;
    for (QTextBlock block = text.begin(); block.isValid(); block = block.next())
        for (auto part = block.begin(); !part.atEnd(); ++part) {
            const QTextFragment fragment = part.fragment();
            const QString target = fragment.charFormat().anchorHref();
            if (target.isEmpty())
                continue;
            const QPointF corner = text.documentLayout()->blockBoundingRect(block).topLeft();
            const int start = fragment.position() - block.position();
            const int end = start + fragment.length();
            found.append({target, {}});
            for (int i = 0; i < block.layout()->lineCount(); ++i) {
                const QTextLine line = block.layout()->lineAt(i);
                const int first = std::max(start, line.textStart());
                const int last = std::min(end, line.textStart() + line.textLength());
                if (first >= last)
                    continue;
                const double left = line.cursorToX(first);
                found.last().lines.append(
                    QRectF(left, line.y(), line.cursorToX(last) - left, line.height()).translated(corner));
            }
        }
    return found;
}

/// Where an anchor is in a page, in pixels from the top; 0 if it is not there.
double anchorAt(const QTextDocument& text, const QString& anchor) {
    if (anchor.isEmpty())
        return 0;
    for (QTextBlock block = text.begin(); block.isValid(); block = block.next())
        for (auto part = block.begin(); !part.atEnd(); ++part)
            if (part.fragment().charFormat().anchorNames().contains(anchor))
                return text.documentLayout()->blockBoundingRect(block).top();
    return 0;
}

/// The sheet, of a height in pixels, on which a place of a page is. The layout rounds it down.
int sheetAt(double down, double height) {
    return int((down + 1) / height);
}

/// Begins a sheet with each heading whose text, or which itself, would be on the next one.
void keepHeadingsWithText(QTextDocument& text, double height) {
    const auto topOf = [&](const QTextBlock& block) {
        return text.documentLayout()->blockBoundingRect(block).top();
    };
    const auto firstLineOf = [&](const QTextBlock& block) {
        const QTextLayout& lines = *block.layout();
        return topOf(block) + (lines.lineCount() > 0 ? lines.lineAt(0).y() : 0);
    };
    for (QTextBlock block = text.begin(); block.isValid(); block = block.next()) {
        if (block.blockFormat().headingLevel() == 0)
            continue;
        QTextBlock under = block.next();
        while (under.isValid() && (under.length() <= 1 || under.blockFormat().headingLevel() > 0))
            under = under.next();
        if (!under.isValid() || sheetAt(firstLineOf(under), height) == sheetAt(topOf(block), height))
            continue;
        QTextBlockFormat broken;
        broken.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
        QTextCursor(block).mergeBlockFormat(broken);
        text.markContentsDirty(0, text.characterCount()); // or what follows keeps its old place
    }
}

} // namespace

HelpBook::HelpBook(const QHelpEngine& helpEngine) : engine(helpEngine) {
    QHelpContentModel* contents = engine.contentModel();
    if (contents->rowCount() == 0) { // of a window that has just been opened
        QEventLoop created;
        QObject::connect(contents, &QHelpContentModel::contentsCreated, &created, &QEventLoop::quit);
        if (!contents->isCreatingContents())
            contents->createContents({});
        created.exec(QEventLoop::ExcludeUserInputEvents);
    }
    chapters.emplace_back();
    chapters.back().text = std::make_unique<QTextDocument>();
    for (int row = 0; row < contents->rowCount(); ++row)
        collect(contents->contentItemAt(contents->index(row, 0)), 0);
}

HelpBook::HelpBook(const QHelpEngine& helpEngine, const QUrl& page) : engine(helpEngine) {
    add(pageOf(page));
}

void HelpBook::collect(const QHelpContentItem* item, int depth) {
    const bool isNew = std::ranges::none_of(
        chapters, [&](const Chapter& chapter) { return chapter.address == pageOf(item->url()); });
    // The heading of several pages leads to the first of them.
    const bool heading = !isNew && item->childCount() > 0 && !item->url().hasFragment();
    places.append({item->title(), depth, heading ? item->child(0)->url() : item->url()});
    if (isNew)
        add(pageOf(item->url()));
    for (int i = 0; i < item->childCount(); ++i)
        collect(item->child(i), depth + 1);
}

void HelpBook::add(const QUrl& page) {
    chapters.emplace_back();
    chapters.back().address = page;
    chapters.back().text = std::make_unique<BookPage>(engine, page);
}

void HelpBook::layOut(const QPagedPaintDevice& device) {
    area = device.pageLayout().paintRect(QPageLayout::Point).size() / pointsPerPixel;
    area.rheight() -= footHeight;
    dots = QImage(1, 1, QImage::Format_ARGB32);
    constexpr double inchesPerMeter = 1 / 0.0254;
    dots.setDotsPerMeterX(int(std::lround(pixelsPerInch * inchesPerMeter)));
    dots.setDotsPerMeterY(dots.dotsPerMeterX());
    int sheet = 0;
    for (Chapter& chapter : chapters) {
        QTextDocument& text = *chapter.text;
        text.documentLayout()->setPaintDevice(&dots);
        text.setUseDesignMetrics(true);
        text.setDocumentMargin(0);
        text.setDefaultStyleSheet("a { color: black; text-decoration: none; }"); // on paper
        constexpr int fontSize = 10;                                             // points
        QFont font = text.defaultFont();
        font.setPointSize(fontSize);
        text.setDefaultFont(font);
        if (chapter.address.isEmpty())
            writeContents();                               // once for its length
        else if (chapter.address.path().endsWith(u".png")) // the picture in view
            text.setHtml(QStringLiteral("<img src=\"%1\">").arg(chapter.address.toString()));
        else
            text.setHtml(QString::fromUtf8(engine.fileData(chapter.address)));
        text.setPageSize(area);
        keepHeadingsWithText(text, area.height());
        chapter.firstSheet = sheet;
        sheet += text.pageCount();
    }
    if (chapters.front().address.isEmpty())
        writeContents();
}

/// The table of contents. Its length does not depend on the numbers in it.
void HelpBook::writeContents() {
    QString rows;
    for (const Place& place : places)
        rows += QStringLiteral(
                    "<tr><td width=\"92%\">%1<a href=\"%2\">%3</a></td><td align=\"right\">%4</td></tr>")
                    .arg(QStringLiteral("&nbsp;").repeated(qsizetype(4) * place.depth),
                         place.address.toString(QUrl::FullyEncoded), place.title.toHtmlEscaped())
                    .arg(targetOf(place.address).sheet + 1);
    chapters.front().text->setHtml(
        QStringLiteral("<h1>%1</h1><table width=\"100%\" cellspacing=\"0\" cellpadding=\"2\">%2</table>")
            .arg(QCoreApplication::translate("HelpBook", "Brennoval: the manual"), rows));
}

HelpBook::Target HelpBook::targetOf(const QUrl& address) const {
    for (const Chapter& chapter : chapters) {
        if (chapter.address != pageOf(address))
            continue;
        const double down = anchorAt(*chapter.text, address.fragment());
        const int sheet = area.isEmpty() ? 0 : int(down / area.height());
        return {chapter.firstSheet + sheet, down - sheet * area.height()};
    }
    return {};
}

int HelpBook::sheets() const {
    return chapters.back().firstSheet + chapters.back().text->pageCount();
}

void HelpBook::paintSheet(QPainter& painter, const Chapter& chapter, int sheet) const {
    painter.save();
    const QRectF part(0, sheet * area.height(), area.width(), area.height());
    painter.translate(0, -part.top());
    painter.setClipRect(part);
    QAbstractTextDocumentLayout::PaintContext context;
    context.clip = part;
    context.palette.setColor(QPalette::Text, Qt::black); // paper is white in dark mode too
    chapter.text->documentLayout()->draw(&painter, context);
    painter.restore();
    if (sheets() == 1)
        return;
    painter.setPen(Qt::black);
    constexpr int numberSize = 12; // pixels, since the painter would take points as those of its device
    QFont font = chapter.text->defaultFont();
    font.setPixelSize(numberSize);
    painter.setFont(font);
    painter.drawText(QRectF(0, area.height(), area.width(), footHeight), Qt::AlignHCenter | Qt::AlignBottom,
                     QString::number(chapter.firstSheet + sheet + 1));
}

bool HelpBook::paint(QPagedPaintDevice& device) {
    device.setPageMargins(QMarginsF(margin, margin, margin, margin), QPageLayout::Point);
    layOut(device);
    const QPageRanges chosen = device.pageRanges();
    QPainter painter;
    for (const Chapter& chapter : chapters)
        for (int sheet = 0; sheet < chapter.text->pageCount(); ++sheet) {
            if (!chosen.isEmpty() && !chosen.contains(chapter.firstSheet + sheet + 1))
                continue;
            if (!(painter.isActive() ? device.newPage() : painter.begin(&device)))
                return false;
            painter.save();
            painter.scale(device.logicalDpiX() / pixelsPerInch, device.logicalDpiY() / pixelsPerInch);
            paintSheet(painter, chapter, sheet);
            painter.restore();
        }
    return !painter.isActive() || painter.end();
}

QByteArray HelpBook::pdf() {
    QBuffer file;
    file.open(QIODevice::WriteOnly);
    QPdfWriter writer(&file);
    writer.setPageSize(QPageSize(QPageSize::Letter));
    writer.setTitle(QCoreApplication::translate("HelpBook", "Brennoval: the manual"));
    writer.setCreator(QStringLiteral("Brennoval"));
    if (!paint(writer))
        return {};
    const double paper = writer.pageLayout().fullRectPoints().height();
    QList<OutlineEntry> entries;
    for (const Place& place : places) {
        const Target target = targetOf(place.address);
        entries.append(
            {place.title, place.depth, target.sheet, paper - margin - target.down * pointsPerPixel});
    }
    return withOutline(file.data(), entries, links(paper));
}

/// What leads from one page to another, on sheets of this height in points.
QList<PdfLink> HelpBook::links(double paper) const {
    QList<PdfLink> found;
    for (const Chapter& chapter : chapters)
        for (const LinkedText& text : linksOf(*chapter.text)) {
            const QUrl address = chapter.address.resolved(text.target);
            if (std::ranges::none_of(chapters,
                                     [&](const Chapter& other) { return other.address == pageOf(address); }))
                continue; // such as a page of the web
            const Target target = targetOf(address);
            for (const QRectF& line : text.lines) {
                const int sheet = int(line.top() / area.height());
                const double bottom = line.bottom() - sheet * area.height();
                found.append(
                    {chapter.firstSheet + sheet,
                     {margin + line.left() * pointsPerPixel, paper - margin - bottom * pointsPerPixel,
                      line.width() * pointsPerPixel, line.height() * pointsPerPixel},
                     target.sheet,
                     paper - margin - target.down * pointsPerPixel});
            }
        }
    return found;
}
