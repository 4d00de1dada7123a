#include "app/Install.h"

#include "core/base/Fault.h"
#include "core/store/Gateway.h"
#include "core/store/SessionStore.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <filesystem>
#include <optional>
#include <system_error>

using namespace Gateway;
using namespace Registry;

namespace {

/// Replaces a file in one step; a program that has the old one open keeps reading it.
bool replaceFile(const QString& file, const QString& target) {
    std::error_code failure;
    std::filesystem::rename(file.toStdU16String(), target.toStdU16String(), failure);
    return !failure;
}

/// Copies to a file beside the target, then renames, so nobody ever sees half a file.
void copyFile(const QString& from, const QString& to) {
    const QString part = to + ".part";
    QFile::remove(part);
    const bool copied = QFile::copy(from, part) && QFile(part).size() == QFile(from).size() &&
                        QFile::setPermissions(part, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup);
    if (copied && replaceFile(part, to))
        return;
    QFile::remove(part);
    throw Fault(Fault::FileNotFound, "Cannot copy " + from.toStdString() + " to " + to.toStdString());
}

/// The version that the build stored in a catalogue; 0 if the file cannot be read.
int catalogueVersion(const QString& file) {
    try {
        Connection connection;
        connection.setProperty("Data Source", file);
        connection.Open();
        return connection.engine().schemaVersion();
    } catch (const Fault&) {
        return 0;
    }
}

std::optional<QString> storedFolder() {
    QString folder;
    const bool stored = GetRegValue(HKeyCurrentUser(), AppRegistryKey(), DatabaseDirectoryValue(), folder) ||
                        GetRegValue(HKeyLocalMachine(), AppRegistryKey(), DatabaseDirectoryValue(), folder);
    return stored ? std::optional(folder) : std::nullopt;
}

/// Where the catalogue belongs in a folder that holds the program's data. Empty for any other folder: it is
/// not ours to fill, or it is offline at the moment.
QString catalogueIn(const QString& folder) {
    const QString user = findDatabaseFile(folder, "User");
    if (user.isEmpty())
        return {};
    const QString catalogue = findDatabaseFile(folder, "Sys");
    return catalogue.isEmpty() ? QDir(QFileInfo(user).path()).filePath(databaseFileName("Sys")) : catalogue;
}

/// Replaces the catalogue in a data folder if it differs from the shipped one.
void updateCatalogue(const QString& folder, const QString& shipped) {
    const QString target = catalogueIn(folder);
    if (!target.isEmpty() &&
        (!QFile::exists(target) || catalogueVersion(target) != catalogueVersion(shipped)))
        copyFile(shipped, target);
}

[[noreturn]] void cannotStore() {
    throw Fault(Fault::PathFileAccess,
                "The session cannot be stored below " +
                    QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation).toStdString());
}

} // namespace

void installForUser(const QString& shippedFolder, const QString& defaultDataFolder) {
    if (createRegistryKey(HKeyCurrentUser(), AppRegistryKey()) != 0)
        cannotStore();
    const QDir shipped(shippedFolder);
    if (const auto stored = storedFolder())
        return updateCatalogue(*stored, shipped.filePath(databaseFileName("Sys")));
    const QDir folder(defaultDataFolder);
    QDir().mkpath(folder.path());
    for (const char* database : {"User", "Sys"})
        if (findDatabaseFile(folder.path(), database).isEmpty() &&
            !QFileInfo(folder.filePath(databaseFileName(database))).isSymLink()) // a dangling link
            copyFile(shipped.filePath(databaseFileName(database)),
                     folder.filePath(databaseFileName(database)));
    updateCatalogue(folder.path(), shipped.filePath(databaseFileName("Sys")));
    if (SetValueEx({HKeyCurrentUser(), AppRegistryKey()}, DatabaseDirectoryValue(), RegistryType::Text,
                   folder.path()) != 0)
        cannotStore();
}

QString restoreCatalogue(const QString& shippedFolder, const QString& defaultDataFolder) {
    const QString folder = storedFolder().value_or(defaultDataFolder);
    QString target = catalogueIn(folder);
    if (target.isEmpty())
        throw Fault(Fault::PathNotFound, "There are no data of Brennoval in " + folder.toStdString());
    copyFile(QDir(shippedFolder).filePath(databaseFileName("Sys")), target);
    return target;
}
