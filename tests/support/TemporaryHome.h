#pragma once

#include "core/store/SessionStore.h"
#include "core/store/SessionTask.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>

/// A session store and a database folder of its own, deleted with the object.
class TemporaryHome {
  public:
    TemporaryHome() {
        Session::putToWork(nullptr); // left by the test before
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope,
                           folder.filePath(QStringLiteral("user")));
        QSettings::setPath(QSettings::IniFormat, QSettings::SystemScope,
                           folder.filePath(QStringLiteral("machine")));
    }

    QString path() const { return folder.path(); }
    QString dataFolder() const { return folder.filePath(QStringLiteral("data")); }

    /// The file of the session store.
    QString sessionFile() const { return folder.filePath(QStringLiteral("user/Fennerbrooke/Brennoval.ini")); }

    /// Copies the two databases as shipped and makes the program use them.
    void installData() const {
        using namespace Registry;
        QDir().mkpath(dataFolder());
        for (const QString& name :
             {QStringLiteral("BrennovalUserData.mdb"), QStringLiteral("BrennovalSysData.mdb")}) {
            const QString target = dataFolder() + u'/' + name;
            QFile::remove(target);
            QFile::copy(QCoreApplication::applicationDirPath() + QStringLiteral("/Data/") + name, target);
        }
        createRegistryKey(HKeyCurrentUser(), AppRegistryKey());
        SetRegValue(AppRegistryKey(), DatabaseDirectoryValue(), dataFolder(), RegistryType::Text);
    }

  private:
    QTemporaryDir folder;
};
