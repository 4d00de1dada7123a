#include "documents/viewer/Written.h"

#include "core/shell/Dialogs.h"
#include "core/shell/Status.h"

#include <QCoreApplication>
#include <QDir>
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
