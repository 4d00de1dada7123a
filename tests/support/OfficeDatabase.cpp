#include "tests/support/OfficeDatabase.h"

#include "core/postgres/OfficeSchema.h"
#include "core/store/OfficeEngines.h"
#include "core/store/SessionStore.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>

#include <stdexcept>

using Postgres::quotedName;

namespace {

/// Makes a role unless another test just did.
void makeRole(Postgres::Connection& server, const QString& role) {
    try {
        server.run(QStringLiteral("CREATE ROLE %1 LOGIN").arg(quotedName(role)));
    } catch (const Postgres::ServerFault& fault) {
        if (fault.sqlState() != "42710" && fault.sqlState() != "23505")
            throw;
    }
}

} // namespace

OfficeServer::OfficeServer(Of of) {
    const QString ofRun = of == Of::Run ? qEnvironmentVariable("OFFICE_SERVER") : QString();
    note = ofRun.isEmpty() ? own.filePath(QStringLiteral("note")) : ofRun;
    if (ofRun.isEmpty())
        command(QStringLiteral("start"));
    QFile file(note);
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error("no server for an office");
    socketFolder = QString::fromUtf8(file.readAll()).trimmed();
}

OfficeServer::~OfficeServer() {
    if (note.startsWith(own.path()))
        command(QStringLiteral("stop"));
}

OfficeServer& OfficeServer::shared() {
    static OfficeServer instance(Of::Run);
    return instance;
}

void OfficeServer::command(const QString& what) const {
    QProcess script;
    script.setProcessChannelMode(QProcess::MergedChannels);
    script.setStandardOutputFile(own.filePath(QStringLiteral("output"))); // the server would keep a pipe open
    script.start(QStringLiteral(SOURCE_FOLDER "/tests/support/office-server"), {what, note});
    script.waitForFinished(-1);
    if (script.exitCode() != 0)
        throw std::runtime_error("the server for an office: " + what.toStdString() + " failed");
}

QString OfficeServer::address(const QString& role, const QString& database) const {
    return QStringLiteral("postgresql://%1@/%2?host=%3").arg(role, database, socketFolder);
}

OfficeDatabase::OfficeDatabase(OfficeServer& on) : server(on) {
    static int made = 0;
    name = QStringLiteral("office_%1_%2").arg(QCoreApplication::applicationPid()).arg(++made);
    Postgres::Connection all(server.address(QStringLiteral("postgres"), QStringLiteral("postgres")));
    makeRole(all, keeper());
    all.run(QStringLiteral("CREATE DATABASE %1 OWNER %2 TEMPLATE template0").arg(name, keeper()));
    {
        Postgres::Connection office(server.address(keeper(), name));
        Postgres::Transaction write(office);
        OfficeSchema::create(office);
        write.commit();
    }
    for (const char* user : {"anna", "ben"})
        addUser(QLatin1String(user));
}

OfficeDatabase::~OfficeDatabase() {
    Gateway::leaveOffices();
    try {
        Postgres::Connection all(server.address(QStringLiteral("postgres"), QStringLiteral("postgres")));
        all.run(QStringLiteral("DROP DATABASE %1 WITH (FORCE)").arg(name));
    } catch (const DatabaseFault&) { // a killed server takes it along
    }
}

void OfficeDatabase::addUser(const QString& user) {
    Postgres::Connection all(server.address(QStringLiteral("postgres"), QStringLiteral("postgres")));
    makeRole(all, user);
    Postgres::Connection office(server.address(keeper(), name));
    Postgres::Transaction write(office);
    OfficeSchema::addUser(office, user);
    write.commit();
}

Postgres::Connection OfficeDatabase::connection(const QString& role) const {
    Postgres::Connection office(server.address(role, name));
    office.runScript(QStringLiteral("SET search_path = \"$user\", office"));
    return office;
}

void OfficeDatabase::use(const QString& user) const {
    using namespace Registry;
    SetRegValue(AppRegistryKey(), QStringLiteral("UserDatabase"), address(user), RegistryType::Text);
}
