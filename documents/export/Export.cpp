#include "documents/export/Export.h"

#include "core/base/Fault.h"

#include <QFileInfo>
#include <QSaveFile>

#include <algorithm>

namespace Export {

namespace {

constexpr Format allFormats[] = {
    {"mnuExportPDF", "PDF (*.pdf)", pdf},    {"mnuExportTIFF", "Tiff (*.tif)", tiff},
    {"mnuExportHTML", "HTML (*.htm)", html}, {"mnuExportExcel", "Excel (*.xls)", excel},
    {"mnuExportRTF", "RTF (*.rtf)", rtf},    {"mnuExportText", "Text Files (*.txt)", text},
};

Fault accessFault(const QString& path, const QString& why) {
    return {Fault::PathFileAccess, ("Path/File access error: " + path + ": " + why).toStdString()};
}

} // namespace

std::span<const Format> formats() {
    return allFormats;
}

const Format& format(const QString& command) {
    return *std::ranges::find_if(allFormats,
                                 [&](const Format& one) { return command == QLatin1String(one.command); });
}

void toFile(const Format& format, const Document& document, const QString& path) {
    const QFileInfo target(path);
    // A pipe or a device would be replaced by a file of its name, which nobody asks for.
    if (target.exists() && !target.isFile())
        throw accessFault(path, "not a plain file");
    const QByteArray bytes = format.write(document);
    QSaveFile file(
        path); // gone, with its part, unless commit succeeds; takes over the permissions of the old file
    // Unbuffered: what a buffer held back would fail in commit, which does not tell.
    const bool written = file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) &&
                         file.write(bytes) == bytes.size() && file.commit();
    if (!written)
        throw accessFault(path, file.errorString());
}

} // namespace Export
