#include "documents/viewer/Written.h"

#include "core/shell/Dialogs.h"
#include "core/shell/Status.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

namespace {

QString& written() {
    static QString path;
    return path;
}

} // namespace

QString proposedName(const Document& document) {
    static const QRegularExpression refused(R"([/\\:*?"<>|\x00-\x1f]+)");
    constexpr int longest = 120;
    return QString(document.fileName).replace(refused, "-").trimmed().left(longest);
}

bool writeFile(const QString& path, const DocumentWriter& write) {
    const auto progress = Dialogs::current().progress(
        QCoreApplication::translate("Written", "Writing %1...").arg(QFileInfo(path).fileName()));
    const auto goOn = [&](qsizetype written, qsizetype all) { return progress->goesOn(written, all); };
    return Export::toFile(path, [&](QIODevice& file) { write(file, goOn); });
}

bool writeFile(const Export::Format& format, const Document& document, const QString& path) {
    return writeFile(path,
                     [&](QIODevice& file, const Export::GoOn& goOn) { format.write(document, file, goOn); });
}

void sayWritten(const QString& sentence, const QString& path) {
    written() = path;
    StatusBar::setStatusText(sentence.arg(QDir::toNativeSeparators(path)));
    StatusBar::offer(QCoreApplication::translate("Written", "Open"), openWritten);
}

QString lastWritten() {
    return written();
}

void openWritten() {
    if (!Dialogs::current().openFileInProgram(written()))
        Dialogs::current().show(
            {QCoreApplication::translate("Written", "No program of this computer opens %1.")
                 .arg(QDir::toNativeSeparators(written())),
             QCoreApplication::translate("Written", "Open"), QMessageBox::Information});
}
