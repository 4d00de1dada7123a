#include "core/store/Schema.h"

#include "core/base/Fault.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QStringList>

namespace Schema {

namespace {

const QStringList& ownScripts() {
    static const QStringList scripts = [] {
        QStringList all;
        for (int version = 1;; ++version) {
            QFile file(QStringLiteral(":/schema/user/%1.sql").arg(version));
            if (!file.open(QIODevice::ReadOnly))
                return all;
            all.append(QString::fromUtf8(file.readAll()));
        }
    }();
    return scripts;
}

/// "BrennovalUserData, version 1.mdb" beside the file, with a number when that is taken.
QString copyName(const QString& path, int version) {
    const QFileInfo file(path);
    const QString base =
        QStringLiteral("%1/%2, version %3").arg(file.path(), file.completeBaseName()).arg(version);
    QString name = base + QStringLiteral(".mdb");
    for (int number = 2; QFile::exists(name); ++number)
        name = QStringLiteral("%1 (%2).mdb").arg(base).arg(number);
    return name;
}

} // namespace

int currentVersion() {
    return static_cast<int>(ownScripts().size());
}

int versionOf(const Connection& user) {
    const int marked = user.engine().schemaVersion();
    return marked == 0 && user.engine().hasTable(QStringLiteral("tblJobHeader")) ? 1 : marked;
}

void upgrade(Connection& user) {
    upgrade(user, ownScripts());
}

void upgrade(Connection& user, const QStringList& scripts) {
    const int version = versionOf(user);
    const auto newest = static_cast<int>(scripts.size());
    if (version > newest)
        throw DatabaseFault(
            DatabaseFault::Unspecified,
            QCoreApplication::translate(
                "Schema", "These user data were written by a newer version of the program (version %1 of the "
                          "data; this program knows version %2). They were not touched. Please install the "
                          "newer program.")
                .arg(version)
                .arg(newest)
                .toStdString(),
            user.ConnectionString().toStdString());
    if (version == newest || version == 0) // a file without a version is not one of ours
        return;
    user.engine().copyTo(copyName(user.dataSource(), version));
    for (int next = version; next < newest; ++next) {
        const int marked =
            next == 1 ? user.engine().schemaVersion() : next; // the first version may be unmarked
        user.engine().upgrade(scripts[next], marked, next + 1);
    }
}

} // namespace Schema
