#include "setup/pages/HelpFolder.h"

#include <QFileInfo>

#ifndef Q_OS_WIN
#include <unistd.h>
#endif

namespace {

/// Whether a folder is ours alone. In the temporary folder anyone can leave a link of any name.
bool isOwn(const QFileInfo& folder) {
#ifndef Q_OS_WIN
    constexpr auto others = QFile::WriteGroup | QFile::WriteOther;
    if ((folder.permissions() & others) || folder.ownerId() != geteuid())
        return false;
#endif
    return folder.isDir() && !folder.isSymLink();
}

} // namespace

void RemoveLeftHelpFolders() {
    const QFileInfoList folders =
        QDir::temp().entryInfoList({HelpFolder::name + u'*'}, QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QFileInfo& found : folders) {
        QDir folder(found.filePath());
        const QString lockFile = folder.filePath(HelpFolder::lockName);
        if (!isOwn(found) || !QFile::exists(lockFile)) // one without a lock is only just being made
            continue;
        QLockFile lock(lockFile);
        lock.setStaleLockTime(0);
        if (lock.tryLock(0))
            folder.removeRecursively();
    }
}
