// Writes TIFF files. A plugin: the library of the format and those it needs take long to load, and few
// exports are TIFF.

#include "core/base/Fault.h"
#include "documents/export/TiffFile.h"

#include <QImage>

#include <algorithm>
#include <cstring>
#include <tiffio.h>

namespace {

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

/// The compression of the fax for two tones, which takes a tenth of the time and room.
void setFormat(TIFF* file, bool twoTone) {
    TIFFSetField(file, TIFFTAG_BITSPERSAMPLE, twoTone ? 1 : 8);
    TIFFSetField(file, TIFFTAG_COMPRESSION, twoTone ? COMPRESSION_CCITTFAX4 : COMPRESSION_LZW);
    TIFFSetField(file, TIFFTAG_PHOTOMETRIC, twoTone ? PHOTOMETRIC_MINISWHITE : PHOTOMETRIC_MINISBLACK);
    if (!twoTone)
        TIFFSetField(file, TIFFTAG_PREDICTOR, PREDICTOR_HORIZONTAL);
}

void writePage(TIFF* file, const QImage& image, int resolution, int number, int count,
               const QByteArray& title) {
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

class PagesInMemory : public TiffFile {
  public:
    PagesInMemory(int pageCount, const QString& documentTitle)
        : pages(pageCount), title(documentTitle.toUtf8()),
          file(TIFFClientOpen("pages", "w", &memoryFile, readMemory, writeMemory, seekMemory, closeMemory,
                              sizeOfMemory, nullptr, nullptr),
               TIFFClose) {}

    bool begun() const { return file != nullptr; }
    void add(const QImage& page, int resolution) override {
        writePage(file.get(), page, resolution, number++, pages, title);
    }
    QByteArray finish() override {
        file.reset();
        return memoryFile.bytes;
    }

  private:
    int pages;
    int number = 0;
    QByteArray title;
    MemoryFile memoryFile; // outlives the library's file, which writes its end when closed
    std::unique_ptr<TIFF, void (*)(TIFF*)> file;
};

} // namespace

extern "C" Q_DECL_EXPORT TiffFile* newTiffFile(const char* programVersion, int pages, const QString& title) {
    if (std::strcmp(programVersion, BRENNOVAL_VERSION) != 0)
        return nullptr;
    auto file = std::make_unique<PagesInMemory>(pages, title);
    return file->begun() ? file.release() : nullptr;
}
