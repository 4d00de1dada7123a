#include "app/Install.h"

#include "core/base/Fault.h"
#include "core/shell/Core.h"
#include "core/store/Database.h"
#include "core/store/SessionStore.h"
#include "documents/Documents.h"
#include "estimates/Estimates.h"
#include "jobs/Jobs.h"
#include "packages/Packages.h"
#include "shock/Shock.h"
#include "sizing/Sizing.h"

#include <QDir>
#include <QFile>

using namespace UtilityFunctions;

namespace {

const QString userFile = QStringLiteral("BrennovalUserData.mdb");
const QString catalogueFile = QStringLiteral("BrennovalSysData.mdb");

/// Copies beside the target and renames, so that a file is never half there.
void copyFile(const QString& from, const QString& to) {
    const QString part = to + ".part";
    QFile::remove(part);
    const bool copied = QFile::copy(from, part) && QFile(part).size() == QFile(from).size() &&
                        QFile::setPermissions(part, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup);
    // The old file goes only when the new one stands whole beside it.
    if (copied && (!QFile::exists(to) || QFile::remove(to)) && QFile::rename(part, to))
        return;
    QFile::remove(part);
    throw Fault(Fault::FileNotFound, "Cannot copy " + from.toStdString() + " to " + to.toStdString());
}

/// The version that the build stored in the catalogue; 0 for a file that cannot be read.
int catalogueVersion(const QString& file) {
    try {
        Connection connection;
        connection.setProperty("Data Source", file);
        connection.Open();
        Recordset rows;
        rows.Open("SELECT user_version FROM pragma_user_version", connection);
        return static_cast<int>(rows["user_version"].number());
    } catch (const Fault&) {
        return 0;
    }
}

QString dataFolder(const QString& defaultFolder) {
    QString chosen;
    const bool stored = GetRegValue(HKeyCurrentUser(), AppRegistryKey(), DatabaseDirectoryValue(), chosen);
    return stored && QFile::exists(QDir(chosen).filePath(userFile)) ? chosen : defaultFolder;
}

} // namespace

void InstallForUser(const QString& shippedFolder, const QString& defaultDataFolder) {
    CreateRegistryKey(HKeyCurrentUser(), AppRegistryKey());
    const QDir folder(dataFolder(defaultDataFolder));
    const QDir shipped(shippedFolder);
    QDir().mkpath(folder.path());
    if (!folder.exists(userFile))
        copyFile(shipped.filePath(userFile), folder.filePath(userFile));
    if (!folder.exists(catalogueFile) ||
        catalogueVersion(folder.filePath(catalogueFile)) < catalogueVersion(shipped.filePath(catalogueFile)))
        copyFile(shipped.filePath(catalogueFile), folder.filePath(catalogueFile));
    SetRegValue(AppRegistryKey(), DatabaseDirectoryValue(), folder.path(), RegistryType::Text);
}

void registerAll() {
    registerCore();
    registerJobs();
    registerDocuments();
    registerEstimates();
    registerShock();
    registerPackages();
    registerSizing();
}
