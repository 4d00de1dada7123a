#include "core/store/Gateway.h"

#include "core/base/Fault.h"
#include "core/store/SessionStore.h"

#include <QDir>
#include <QFileInfo>

using namespace Registry;

namespace Gateway {

QString databasePassword() {
    return QStringLiteral("tinsplum");
}

QString databaseFileName(const QString& databaseName) {
    return databaseName == u"User" ? QStringLiteral("BrennovalUserData.mdb")
                                   : QStringLiteral("BrennovalSysData.mdb");
}

QString findDatabaseFile(const QString& folder, const QString& databaseName) {
    QString path = folder;
#ifndef Q_OS_WIN
    path.replace(u'\\', u'/');
#endif
    const QDir directory(path);
    const QString name = databaseFileName(databaseName);
    if (QFileInfo(directory.filePath(name)).isFile())
        return directory.filePath(name);
    const QStringList files = directory.entryList(QDir::Files);
    for (const QString& file : files)
        if (file.compare(name, Qt::CaseInsensitive) == 0)
            return directory.filePath(file);
    return {};
}

QString officeAddress() {
    const QString name = QStringLiteral("UserDatabase");
    QString address;
    if (!GetRegValue(HKeyCurrentUser(), AppRegistryKey(), name, address))
        GetRegValue(HKeyLocalMachine(), AppRegistryKey(), name, address);
    return address.trimmed();
}

Connection dbConnection(const QString& databaseName) {
    Connection connection;
    if (databaseName == u"User")
        if (const QString address = officeAddress(); !address.isEmpty()) {
            if (!ServerAddress::isServer(address))
                throw RefusedData(
                    DatabaseFault::Unspecified,
                    "The value UserDatabase must be the address of an office's database, such as "
                    "postgresql://server/brennoval.");
            connection.setProperty(QStringLiteral("Provider"), QStringLiteral("PostgreSQL"));
            connection.setProperty(QStringLiteral("Data Source"), address);
            return connection;
        }
    connection.setProperty(QStringLiteral("Provider"), QStringLiteral("Microsoft.Jet.OLEDB.4.0"));
    connection.setProperty(QStringLiteral("Mode"), QStringLiteral("3"));
    connection.setProperty(QStringLiteral("Jet OLEDB:Database Password"), databasePassword());
    QString folder;
    if (!GetRegValue(HKeyCurrentUser(), AppRegistryKey(), DatabaseDirectoryValue(), folder) &&
        !GetRegValue(HKeyLocalMachine(), AppRegistryKey(), DatabaseDirectoryValue(), folder))
        return connection;
    const QString file = findDatabaseFile(folder, databaseName);
    if (file.isEmpty())
        throw NoDatabaseFile(DatabaseFault::Unspecified,
                             "There is no " + databaseFileName(databaseName).toStdString() +
                                 " in the folder " + folder.toStdString(),
                             connection.connectionString().toStdString());
    connection.setProperty(QStringLiteral("Data Source"), file);
    return connection;
}

Connection openDatabase(const QString& databaseName) {
    Connection connection = dbConnection(databaseName);
    connection.Open();
    return connection;
}

Rows::Rows(const QString& databaseName, const QString& statement, CursorType cursor, CommandType command)
    : connection(std::make_unique<Connection>(openDatabase(databaseName))),
      recordset(std::make_unique<Recordset>()) {
    recordset->Open(statement, *connection, cursor, command);
}

Rows::Rows(const QString& databaseName, const QString& statement, const QVariantList& parameters,
           CursorType cursor)
    : connection(std::make_unique<Connection>(openDatabase(databaseName))),
      recordset(std::make_unique<Recordset>()) {
    recordset->Open(statement, *connection, parameters, cursor);
}

void execute(const QString& databaseName, const QString& statement, const QVariantList& parameters) {
    const Rows none(databaseName, statement, parameters);
}

} // namespace Gateway
