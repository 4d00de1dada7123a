#include "core/base/Fault.h"
#include "core/base/Program.h"
#include "documents/export/Export.h"
#include "documents/export/TiffFile.h"
#include "documents/report/PagePainter.h"

#include <QIODevice>
#include <QImage>
#include <QPainter>
#include <QRegularExpression>

#include <algorithm>

namespace {

constexpr int resolution = 200; // dots per inch

/// Whether a picture has a shade that is neither nearly white nor dark enough to become black.
bool hasShades(const PagePicture& picture) {
    static const QRegularExpression color("#([0-9a-f]{6}|[0-9a-f]{3})\\b",
                                          QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression named(R"(\b(?:fill|stroke)\s*[=:]\s*["']?\s*([a-z]+))",
                                          QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression other("rgb\\(|<image|Gradient|opacity");
    constexpr int darkest = 150; // of 255
    constexpr int lightest = 250;
    const QString svg = QString::fromUtf8(picture.svg);
    const auto isShade = [](const QColor& tone) {
        return qGray(tone.rgb()) > darkest && qGray(tone.rgb()) < lightest;
    };
    for (auto colors = color.globalMatch(svg); colors.hasNext();)
        if (isShade(QColor(colors.next().captured())))
            return true;
    for (auto colors = named.globalMatch(svg); colors.hasNext();)
        if (const QString name = colors.next().captured(1);
            QColor::isValidColor(name) && isShade(QColor(name)))
            return true;
    return other.match(svg).hasMatch();
}

/// Whether black and white say all that is on a page. Bars become dots.
bool isTwoTone(const Page& page) {
    return std::none_of(page.pictures.begin(), page.pictures.end(), hasShades);
}

QImage painted(const Page& page, bool twoTone) {
    const double scale = resolution / 72.0;
    QImage image((page.size * scale).toSize(), twoTone ? QImage::Format_Mono : QImage::Format_Grayscale8);
    if (twoTone)
        image.setColorTable({qRgb(255, 255, 255), qRgb(0, 0, 0)}); // as the file counts them
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.scale(scale, scale);
    if (!twoTone) {
        paintPage(painter, page);
        return image;
    }
    Page plain = page;
    for (PageBox& box : plain.boxes)
        if (box.fill.isValid()) {
            painter.fillRect(box.place, QBrush(Qt::black, Qt::Dense7Pattern));
            box.fill = QColor();
        }
    paintPage(painter, plain);
    return image;
}

/// A new file of pages. The library of the format comes with four more, which every start would load.
std::unique_ptr<TiffFile> newFile(int pages, const QString& title) {
    const auto create =
        reinterpret_cast<TiffFileFactory>(Program::pluginFunction("brennoval-tiff", "newTiffFile"));
    std::unique_ptr<TiffFile> file(
        create ? create(Program::fullProgramVersion().toUtf8().constData(), pages, title) : nullptr);
    if (!file)
        throw Fault(Fault::PathFileAccess, "The part of the program that writes TIFF files is missing or of "
                                           "another version. Please install the program again.");
    return file;
}

} // namespace

void Export::tiff(const Document& document, QIODevice& target, const GoOn& goOn) {
    const Pages& pages = document.pages;
    const auto file = newFile(int(pages.size()), document.title);
    qsizetype number = 0;
    for (const Page& page : pages) {
        ask(goOn, number++, pages.size());
        file->add(painted(page, isTwoTone(page)), resolution);
    }
    target.write(file->finish());
}
