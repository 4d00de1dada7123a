#include "setup/InstallerFiles.h"

#include "core/base/Fault.h"
#include "core/store/Gateway.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace UtilityFunctions {

namespace {
QString& installerFolder() {
    static QString folder = BRENNOVAL_INSTALLER_FOLDER;
    return folder;
}
} // namespace

QString InstallerFolder() {
    return installerFolder();
}

void SetInstallerFolder(const QString& folder) {
    installerFolder() = folder;
}

QString ReadInstallerFile(const QString& name) {
    const QDir folder(InstallerFolder());
    if (!folder.exists())
        throw Fault(Fault::PathNotFound, "Path not found");
    QFile file(folder.filePath(name));
    if (!QFileInfo(file).isFile())
        throw Fault(Fault::FileNotFound, "File not found");
    if (!file.open(QIODevice::ReadOnly))
        throw Fault(Fault::PathFileAccess, "Path/File access error");
    return QString::fromLocal8Bit(file.readAll());
}

bool IsOwnDatabase(const QString& path) {
    const QString file = QFileInfo(path).canonicalFilePath();
    for (const char* database : {"User", "Sys"})
        if (!file.isEmpty() && file == QFileInfo(dbConnection(database).dataSource()).canonicalFilePath())
            return true;
    return false;
}

} // namespace UtilityFunctions
