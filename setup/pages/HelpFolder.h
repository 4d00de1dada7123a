#pragma once

#include <QDir>
#include <QLockFile>
#include <QTemporaryDir>

/// A temporary help folder for one instance of the program, with a lock that shows whether the instance still
/// runs.
class HelpFolder {
  public:
    HelpFolder() : folder(QDir::temp().filePath(name + "XXXXXX")), lock(folder.filePath(lockName)) {
        lock.setStaleLockTime(0);
        lock.tryLock(0);
    }
    QString filePath(const QString& file) const { return folder.filePath(file); }

    static inline const QString name = QStringLiteral("brennoval-help-"); // common prefix
    static inline const QString lockName = QStringLiteral("lock");

  private:
    QTemporaryDir folder;
    QLockFile lock;
};

/// Removes the folders of instances that were killed.
void removeLeftHelpFolders();
