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

/// Writes beside the target until commit. Without a commit, or after a failed write, the part file is
/// removed. Takes over the permissions of the old file.
class WholeFile : public QSaveFile {
  public:
    using QSaveFile::QSaveFile;
    QString failure; // of the first failed write

  protected:
    /// QSaveFile says nothing when it writes only part of the data; the next write then reports why.
    qint64 writeData(const char* data, qint64 size) override {
        qint64 done = 0;
        while (done < size) {
            const qint64 taken = QSaveFile::writeData(data + done, size - done);
            if (taken <= 0) {
                if (failure.isEmpty())
                    failure = errorString();
                return -1;
            }
            done += taken;
        }
        return done;
    }
};

} // namespace

std::span<const Format> formats() {
    return allFormats;
}

const Format& format(const QString& command) {
    return *std::ranges::find_if(allFormats,
                                 [&](const Format& one) { return command == QLatin1String(one.command); });
}

void ask(const GoOn& goOn, qsizetype written, qsizetype all) {
    if (goOn && !goOn(written, all))
        throw Stopped();
}

bool toFile(const QString& path, const Writer& write) {
    const QFileInfo target(path);
    // A pipe or a device would be replaced by an ordinary file, which nobody wants.
    if (target.exists() && !target.isFile())
        throw accessFault(path, "not a plain file");
    WholeFile file(path);
    // Unbuffered, because commit does not report a failure to write what is still in the buffer.
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        throw accessFault(path, file.errorString());
    try {
        write(file);
    } catch (const Stopped&) {
        return false; // without a commit nothing stays
    }
    if (!file.failure.isEmpty())
        throw accessFault(path, file.failure);
    if (!file.commit())
        throw accessFault(path, file.errorString());
    return true;
}

bool toFile(const Format& format, const Document& document, const QString& path, const GoOn& goOn) {
    return toFile(path, [&](QIODevice& file) { format.write(document, file, goOn); });
}

} // namespace Export
