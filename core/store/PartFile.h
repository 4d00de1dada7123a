#pragma once

#include <QDir>
#include <QFile>

/// A new file that stands beside its place, readable to the user alone, until it is whole. It goes with the
/// object unless it got its name.
class PartFile {
  public:
    /// Throws DatabaseFault when the folder cannot be written to.
    PartFile(const QDir& folder, const QString& base);
    ~PartFile();
    PartFile(const PartFile&) = delete;
    PartFile& operator=(const PartFile&) = delete;

    QString path() const { return file.fileName(); }

    /// Gives it mode and, where the system lets us, owner of another file.
    void takeMode(const QString& from) const;
    /// Gives it a name that nothing in its folder has: with a number when the name is taken. The path that it
    /// got. Throws DatabaseFault.
    QString rename(const QString& base, const QString& ending);
    /// Puts it in the place of a plain file, whose mode it takes, or where none is. Throws DatabaseFault.
    void replace(const QString& target);

    /// The ending of such files, for whoever removes what a kill has left.
    static QString ending() { return QStringLiteral(".part"); }

  private:
    QFile file;
    bool named = false;
};
