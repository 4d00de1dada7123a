#pragma once

#include <QByteArray>
#include <QString>

#include <memory>

class QImage;

/// A TIFF file in the making, in memory: what the plugin `brennoval-tiff` offers the program. It is loaded by
/// the first export.
class TiffFile {
  public:
    virtual ~TiffFile() = default;
    TiffFile() = default;
    TiffFile(const TiffFile&) = delete;
    TiffFile& operator=(const TiffFile&) = delete;

    /// Adds a page, of two tones or of greys, at a resolution in dots per inch. Throws Fault 75.
    virtual void add(const QImage& page, int resolution) = 0;
    /// The finished file, to which nothing can be added.
    virtual QByteArray finish() = 0;
};

/// The plugin's function `newTiffFile`: a file for a number of pages, which the caller owns; null for a
/// program of another version, or if the library cannot begin a file.
using TiffFileFactory = TiffFile* (*)(const char* programVersion, int pages, const QString& title);
