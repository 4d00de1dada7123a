#include "core/base/Fault.h"
#include "documents/export/Export.h"
#include "documents/report/PagePainter.h"

#include <QIODevice>
#include <QImage>
#include <QPainter>
#include <QRegularExpression>

#include <algorithm>
#include <cstring>
#include <memory>
#include <tiffio.h>

namespace {

constexpr int resolution = 200; // dots per inch

/// A file in memory that the library reads and writes.
struct MemoryFile {
    QByteArray bytes;
    toff_t position = 0;
};

MemoryFile& memory(thandle_t handle) {
    return *static_cast<MemoryFile*>(handle);
}

tmsize_t readMemory(thandle_t handle, void* buffer, tmsize_t size) {
    MemoryFile& file = memory(handle);
    const auto left = static_cast<tmsize_t>(file.bytes.size()) - static_cast<tmsize_t>(file.position);
    const tmsize_t count = std::max<tmsize_t>(0, std::min(size, left));
    std::memcpy(buffer, file.bytes.constData() + file.position, static_cast<std::size_t>(count));
    file.position += static_cast<toff_t>(count);
    return count;
}

tmsize_t writeMemory(thandle_t handle, void* buffer, tmsize_t size) {
    MemoryFile& file = memory(handle);
    const auto end = static_cast<qsizetype>(file.position) + static_cast<qsizetype>(size);
    if (file.bytes.size() < end)
        file.bytes.resize(end);
    std::memcpy(file.bytes.data() + file.position, buffer, static_cast<std::size_t>(size));
    file.position = static_cast<toff_t>(end);
    return size;
}

toff_t seekMemory(thandle_t handle, toff_t offset, int whence) {
    MemoryFile& file = memory(handle);
    const toff_t base = whence == SEEK_SET   ? 0
                        : whence == SEEK_CUR ? file.position
                                             : static_cast<toff_t>(file.bytes.size());
    return file.position = base + offset;
}

int closeMemory(thandle_t) {
    return 0;
}

toff_t sizeOfMemory(thandle_t handle) {
    return static_cast<toff_t>(memory(handle).bytes.size());
}

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

/// The compression of the fax for two tones, which takes a tenth of the time and room.
void setFormat(TIFF* file, bool twoTone) {
    TIFFSetField(file, TIFFTAG_BITSPERSAMPLE, twoTone ? 1 : 8);
    TIFFSetField(file, TIFFTAG_COMPRESSION, twoTone ? COMPRESSION_CCITTFAX4 : COMPRESSION_LZW);
    TIFFSetField(file, TIFFTAG_PHOTOMETRIC, twoTone ? PHOTOMETRIC_MINISWHITE : PHOTOMETRIC_MINISBLACK);
    if (!twoTone)
        TIFFSetField(file, TIFFTAG_PREDICTOR, PREDICTOR_HORIZONTAL);
}

void writePage(TIFF* file, const QImage& image, int number, int count, const QByteArray& title) {
    TIFFSetField(file, TIFFTAG_SUBFILETYPE, FILETYPE_PAGE);
    TIFFSetField(file, TIFFTAG_PAGENUMBER, number, count);
    TIFFSetField(file, TIFFTAG_IMAGEWIDTH, image.width());
    TIFFSetField(file, TIFFTAG_IMAGELENGTH, image.height());
    const bool twoTone = image.format() == QImage::Format_Mono;
    setFormat(file, twoTone);
    TIFFSetField(file, TIFFTAG_SAMPLESPERPIXEL, 1);
    TIFFSetField(file, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    TIFFSetField(file, TIFFTAG_ROWSPERSTRIP, image.height());
    TIFFSetField(file, TIFFTAG_RESOLUTIONUNIT, RESUNIT_INCH);
    TIFFSetField(file, TIFFTAG_XRESOLUTION, double(resolution));
    TIFFSetField(file, TIFFTAG_YRESOLUTION, double(resolution));
    TIFFSetField(file, TIFFTAG_SOFTWARE, "Brennoval");
    TIFFSetField(file, TIFFTAG_DOCUMENTNAME, title.constData());
    QByteArray row;
    for (int y = 0; y < image.height(); ++y) {
        row = QByteArray(reinterpret_cast<const char*>(image.constScanLine(y)),
                         twoTone ? (image.width() + 7) / 8 : image.width());
        if (TIFFWriteScanline(file, row.data(), static_cast<std::uint32_t>(y), 0) < 0)
            throw Fault(Fault::PathFileAccess, "The TIFF library cannot write a page.");
    }
    TIFFWriteDirectory(file);
}

} // namespace

void Export::tiff(const Document& document, QIODevice& target, const GoOn& goOn) {
    const Pages& pages = document.pages;
    MemoryFile memoryFile;
    {
        const std::unique_ptr<TIFF, void (*)(TIFF*)> file(
            TIFFClientOpen("pages", "w", &memoryFile, readMemory, writeMemory, seekMemory, closeMemory,
                           sizeOfMemory, nullptr, nullptr),
            TIFFClose);
        if (!file)
            throw Fault(Fault::PathFileAccess, "The TIFF library cannot begin a file.");
        int number = 0;
        for (const Page& page : pages) {
            ask(goOn, number, pages.size());
            writePage(file.get(), painted(page, isTwoTone(page)), number++, int(pages.size()),
                      document.title.toUtf8());
        }
    }
    target.write(memoryFile.bytes);
}
