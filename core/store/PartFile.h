#pragma once

#include <QDir>
#include <QFile>

/// A new file next to its final place, readable by the user alone until it is complete. It is deleted with
/// the object unless it has got its name.
class PartFile {
  public:
    /// Throws DatabaseFault if the folder is not writable.
    PartFile(const QDir& folder, const QString& base);
    ~PartFile();
    PartFile(const PartFile&) = delete;
    PartFile& operator=(const PartFile&) = delete;

    QString path() const { return file.fileName(); }

    /// Copies the mode and, where the system allows it, the owner of another file.
    void takeMode(const QString& from) const;
    /// Renames it to a name that is free in its folder, adding a number if necessary. Returns the new path.
    /// Throws DatabaseFault.
    QString rename(const QString& base, const QString& ending);
    /// Moves it to `target`, replacing a plain file there and taking over its mode. Throws DatabaseFault.
    void replace(const QString& target);

    /// The extension of such files, for whoever cleans up after a kill.
    static QString ending() { return QStringLiteral(".part"); }

  private:
    QFile file;
    bool named = false;
};
