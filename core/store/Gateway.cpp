#include "core/store/Gateway.h"

#include "core/base/Fault.h"
#include "core/shell/Dialogs.h"
#include "core/shell/Screens.h"
#include "core/shell/frmSplash.h"
#include "core/store/SessionStore.h"

#include <QDir>
#include <QFileInfo>

namespace UtilityFunctions {

namespace {

/// The file of that name in a folder, its case disregarded; an empty text when there is none.
QString findFile(QString folder, const QString& name) {
#ifndef Q_OS_WIN
    folder.replace('\\', '/');
#endif
    const QDir directory(folder);
    const QString asShipped =
        name == "brennovaluserdata.mdb" ? "BrennovalUserData.mdb" : "BrennovalSysData.mdb";
    for (const QString& spelling : {asShipped, name})
        if (QFileInfo(directory.filePath(spelling)).isFile())
            return directory.filePath(spelling);
    const QStringList files = directory.entryList(QDir::Files);
    for (const QString& file : files)
        if (file.compare(name, Qt::CaseInsensitive) == 0)
            return directory.filePath(file);
    return {};
}

[[noreturn]] void askForFolder() {
    if (Screen* splash = Screens::find("frmSplash")) // nothing repeats the attempt after this dialog
        static_cast<frmSplash*>(splash)->setTimerInterval(0);
    Dialogs::current().show({"Invalid Database Path!\nPlease indicate location of database.", "Invalid"});
    Screens::open("frmDatabasePath");
    throw AlreadyReported{};
}

} // namespace

QString DatabasePassword() {
    return "tinsplum";
}

Connection dbConnection(const QString& databaseName) {
    const QString fileName = databaseName == "User" ? "brennovaluserdata.mdb" : "brennovalsysdata.mdb";
    Connection connection;
    connection.setProperty("Provider", "Microsoft.Jet.OLEDB.4.0");
    connection.setProperty("Mode", "3");
    connection.setProperty("Jet OLEDB:Database Password", DatabasePassword());
    QString folder;
    if (GetRegValue(HKeyCurrentUser(), AppRegistryKey(), DatabaseDirectoryValue(), folder) ||
        GetRegValue(HKeyLocalMachine(), AppRegistryKey(), DatabaseDirectoryValue(), folder)) {
        const QString file = findFile(folder, fileName);
        if (file.isEmpty())
            askForFolder();
        connection.setProperty("Data Source", file);
    }
    return connection;
}

Connection openDatabase(const QString& databaseName) {
    Connection connection = dbConnection(databaseName);
    connection.Open();
    return connection;
}

} // namespace UtilityFunctions
