#include "core/shell/PreviousInstance.h"

#include <QDir>
#include <QFileInfo>
#include <QLockFile>
#include <QStandardPaths>

#include <memory>

namespace {

/// A file in a folder of the user's own, where nobody else can plant something in its place.
QString lockName() {
    QString folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    if (folder.isEmpty())
        folder = QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation);
    QDir().mkpath(folder);
    return QDir(folder).filePath(QStringLiteral("brennoval.lock"));
}

/// Holds the lock while the program runs; true if another instance has it. If locking fails for another
/// reason, the answer is false, so that the start never fails over it.
bool lockIsTaken() {
    static std::unique_ptr<QLockFile> lock;
    const QFileInfo file(lockName());
    if (file.isSymLink() || (file.exists() && !file.isFile())) // reading a pipe would block forever
        return false;
    lock = std::make_unique<QLockFile>(file.filePath());
    lock->setStaleLockTime(0);
    return !lock->tryLock(0) && lock->error() == QLockFile::LockFailedError;
}

} // namespace

bool previousInstance() {
    static const bool other = lockIsTaken();
    return other;
}
