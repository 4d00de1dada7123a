#include "setup/InstallerFiles.h"

#include "core/base/Fault.h"
#include "core/store/Gateway.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <array>

using namespace Gateway;

namespace InstallerFiles {

namespace {
QString& installerFolder() {
    static QString folder = BRENNOVAL_INSTALLER_FOLDER;
    return folder;
}
} // namespace

QString installerFolderPath() {
    return installerFolder();
}

void setInstallerFolder(const QString& folder) {
    installerFolder() = folder;
}

QString readInstallerFile(const QString& name) {
    const QDir folder(installerFolderPath());
    if (!folder.exists())
        throw Fault(Fault::PathNotFound, "Path not found");
    constexpr qint64 maxSize = 4096; // bytes; no system allows longer paths
    QFile file(folder.filePath(name));
    if (!QFileInfo(file).isFile())
        throw Fault(Fault::FileNotFound, "File not found");
    if (!file.open(QIODevice::ReadOnly))
        throw Fault(Fault::PathFileAccess, "Path/File access error");
    const QByteArray text = file.read(maxSize + 1);
    if (text.size() > maxSize)
        throw Fault(Fault::FileNotFound, "File not found");
    return QString::fromLocal8Bit(text).remove(QChar(0));
}

bool isInstallersToTake(const QString& path) {
    const QFileInfo file(path);
    if (file.isSymLink() || !file.isFile())
        return false;
    const QString name = file.canonicalFilePath();
    return std::ranges::none_of(std::array{"User", "Sys"}, [&name](const char* database) {
        const QString own = QFileInfo(dbConnection(database).dataSource()).canonicalFilePath();
        return !own.isEmpty() && name.startsWith(own);
    });
}

} // namespace InstallerFiles
