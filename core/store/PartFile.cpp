#include "core/store/PartFile.h"

#include "core/base/Fault.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <filesystem>
#include <system_error>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace {

[[noreturn]] void fail(const QString& what) {
    throw DatabaseFault(DatabaseFault::Unspecified, what.toStdString());
}

constexpr int maxNames = 1000;

} // namespace

PartFile::PartFile(const QDir& folder, const QString& base) {
    for (int number = 1; number < maxNames; ++number) {
        file.setFileName(folder.filePath(QStringLiteral("%1 %2-%3%4")
                                             .arg(base)
                                             .arg(QCoreApplication::applicationPid())
                                             .arg(number)
                                             .arg(ending())));
        if (file.open(QIODevice::NewOnly | QIODevice::WriteOnly, QFile::ReadOwner | QFile::WriteOwner)) {
            file.close();
            return;
        }
        if (!file.exists())
            break;
    }
    fail("Cannot write to the folder " + folder.path() + ": " + file.errorString());
}

PartFile::~PartFile() {
    if (!named)
        file.remove();
}

void PartFile::takeMode(const QString& from) const {
#ifdef Q_OS_UNIX
    struct stat status {};
    const QByteArray target = QFile::encodeName(path());
    if (geteuid() == 0 && stat(QFile::encodeName(from).constData(), &status) == 0 &&
        chown(target.constData(), status.st_uid, status.st_gid) != 0)
        fail("Cannot give " + path() + " the owner of " + from);
#endif
    QFile::setPermissions(path(), QFile::permissions(from));
}

QString PartFile::rename(const QString& base, const QString& ending) {
    for (int number = 1; number < maxNames && !named; ++number)
        named = file.rename(number == 1 ? base + ending
                                        : QStringLiteral("%1 (%2)%3").arg(base).arg(number).arg(ending));
    if (!named)
        fail("Cannot rename " + path() + ": " + file.errorString());
    return path();
}

void PartFile::replace(const QString& target) {
    const QFileInfo there(target);
    if ((there.exists() && !there.isFile()) || there.isSymLink())
        fail(target + " is no plain file.");
    if (there.exists())
        takeMode(target);
    std::error_code failure;
    std::filesystem::rename(path().toStdU16String(), target.toStdU16String(), failure);
    if (failure)
        fail("Cannot write " + target + ": " + QString::fromStdString(failure.message()));
    named = true;
}
