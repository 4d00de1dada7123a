#include "setup/pages/HelpFolder.h"

#include <QDirIterator>
#include <QFileInfo>

#ifndef Q_OS_WIN
#include <unistd.h>
#endif

namespace {

/// Whether a folder belongs to us alone. In the temporary folder anyone can plant a link with any name.
bool isOwn(const QFileInfo& folder) {
#ifndef Q_OS_WIN
    constexpr auto others = QFile::WriteGroup | QFile::WriteOther;
    if ((folder.permissions() & others) || folder.ownerId() != geteuid())
        return false;
#endif
    return folder.isDir() && !folder.isSymLink();
}

} // namespace

void removeLeftHelpFolders() {
    // Names are compared here: a filter of names is compiled to a pattern, which takes longer at every start.
    QDirIterator all(QDir::tempPath(), QDir::Dirs | QDir::NoDotAndDotDot);
    while (all.hasNext()) {
        const QFileInfo found = all.nextFileInfo();
        if (!found.fileName().startsWith(HelpFolder::Name))
            continue;
        QDir folder(found.filePath());
        const QString lockFile = folder.filePath(HelpFolder::LockName);
        if (!isOwn(found) || !QFile::exists(lockFile)) // without a lock it is still being created
            continue;
        QLockFile lock(lockFile);
        lock.setStaleLockTime(0);
        if (lock.tryLock(0))
            folder.removeRecursively();
    }
}
