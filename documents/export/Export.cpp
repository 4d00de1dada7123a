#include "documents/export/Export.h"

#include "core/base/Fault.h"

#include <QFileInfo>
#include <QSaveFile>

namespace Export {

QByteArray toBytes(Format format, const Pages& pages, const QString& title) {
    switch (format) {
    case Format::Pdf:
        return pdf(pages, title);
    case Format::Tiff:
        return tiff(pages, title);
    case Format::Html:
        return html(pages, title);
    case Format::Excel:
        return excel(pages, title);
    case Format::Rtf:
        return rtf(pages, title);
    default:
        return text(pages);
    }
}

void toFile(Format format, const Pages& pages, const QString& title, const QString& path) {
    const QByteArray bytes = toBytes(format, pages, title);
    QSaveFile file(path); // gone, with its part, unless commit succeeds
    // Unbuffered: what a buffer held back would fail in commit, which does not tell.
    const bool written = file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) &&
                         file.write(bytes) == bytes.size() && file.commit();
    if (!written)
        throw Fault(Fault::PathFileAccess,
                    "Path/File access error: " + (path + ": " + file.errorString()).toStdString());
}

} // namespace Export
