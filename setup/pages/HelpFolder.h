#pragma once

#include <QDir>
#include <QLockFile>
#include <QTemporaryDir>

/// A temporary help folder for one instance of the program, with a lock that shows whether the instance still
/// runs.
class HelpFolder {
  public:
    HelpFolder() : folder(QDir::temp().filePath(Name + "XXXXXX")), lock(folder.filePath(LockName)) {
        lock.setStaleLockTime(0);
        lock.tryLock(0);
    }
    QString filePath(const QString& file) const { return folder.filePath(file); }

    static inline const QString Name = QStringLiteral("brennoval-help-"); // common prefix
    static inline const QString LockName = QStringLiteral("lock");

  private:
    QTemporaryDir folder;
    QLockFile lock;
};

/// Removes the folders of instances that were killed.
void removeLeftHelpFolders();
