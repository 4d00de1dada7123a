#include "core/shell/PreviousInstance.h"

#include <QDir>
#include <QFileInfo>
#include <QLockFile>
#include <QStandardPaths>

#include <memory>

namespace {

/// A file of the user's own: nobody else can put something in its way.
QString lockName() {
    QString folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    if (folder.isEmpty())
        folder = QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation);
    QDir().mkpath(folder);
    return QDir(folder).filePath(QStringLiteral("brennoval.lock"));
}

/// Holds the lock for as long as the program runs; true when another copy has it. What cannot be locked tells
/// nothing, and never stops the start.
bool lockIsTaken() {
    static std::unique_ptr<QLockFile> lock;
    const QFileInfo file(lockName());
    if (file.isSymLink() || (file.exists() && !file.isFile())) // reading a pipe would wait for ever
        return false;
    lock = std::make_unique<QLockFile>(file.filePath());
    lock->setStaleLockTime(0);
    return !lock->tryLock(0) && lock->error() == QLockFile::LockFailedError;
}

} // namespace

bool PreviousInstance() {
    static const bool other = lockIsTaken();
    return other;
}
