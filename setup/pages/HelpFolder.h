#pragma once

#include <QDir>
#include <QLockFile>
#include <QTemporaryDir>

/// A temporary folder for the help of one copy of the program, with a lock that tells whether the copy still
/// runs.
class HelpFolder {
  public:
    HelpFolder() : folder(QDir::temp().filePath(name + "XXXXXX")), lock(folder.filePath(lockName)) {
        lock.setStaleLockTime(0);
        lock.tryLock(0);
    }
    QString filePath(const QString& file) const { return folder.filePath(file); }

    static inline const QString name = QStringLiteral("brennoval-help-"); // how all of them begin
    static inline const QString lockName = QStringLiteral("lock");

  private:
    QTemporaryDir folder;
    QLockFile lock;
};

/// Removes the folders of copies that were killed.
void RemoveLeftHelpFolders();
