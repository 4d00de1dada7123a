#pragma once

#include "core/postgres/Postgres.h"
#include "tests/support/OfficeDatabase.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QUrl>

#include <stdexcept>
#include <string>

/// What a run of brennoval-office has said.
struct OfficeRun {
    int exitCode;
    QString output;
    QString errors;
};

/// Runs brennoval-office without a terminal, with a standard input.
inline OfficeRun runOffice(const QStringList& arguments, const QByteArray& input = {}) {
    QProcess command;
    command.setProgram("setsid"); // without a terminal, wherever the test is run from
    command.setArguments(QStringList{"--wait", QCoreApplication::applicationDirPath() + "/brennoval-office"} +
                         arguments);
    command.start();
    command.write(input);
    command.closeWriteChannel();
    const bool ended = command.waitForFinished(120000);
    return {ended ? command.exitCode() : -1, QString::fromUtf8(command.readAllStandardOutput()),
            QString::fromUtf8(command.readAllStandardError())};
}

/// A server of the test's own, since roles are the server's.
class ToolServer {
  public:
    /// The rules of access are lines of pg_hba.conf; without any, every role is let in without a password.
    explicit ToolServer(const QStringList& accessRules = {}) : server(OfficeServer::Of::Test) {
        if (accessRules.isEmpty())
            return;
        QFile access(server.folder() + "/data/pg_hba.conf");
        if (!access.open(QIODevice::WriteOnly | QIODevice::Truncate))
            throw std::runtime_error("cannot write the rules of access");
        access.write(accessRules.join('\n').toUtf8() + '\n');
        access.close();
        server.kill(); // it reads them when it starts
        server.startAgain();
    }

    QString uri(const QString& role, const QString& database) const {
        return server.address(QString::fromLatin1(QUrl::toPercentEncoding(role)), database);
    }

  private:
    OfficeServer server;
};

/// A server with an office in the database "brennoval", looked after by its superuser.
class ToolOffice {
  public:
    /// With these users, who have no password.
    explicit ToolOffice(const QStringList& users = {}, const QStringList& accessRules = {})
        : server(accessRules) {
        require({"create", admin()});
        for (const QString& user : users)
            require({"add-user", "--no-password", admin(), user});
    }

    QString admin(const QString& database = "brennoval") const { return server.uri("postgres", database); }
    QString uri(const QString& role, const QString& database = "brennoval") const {
        return server.uri(role, database);
    }

    /// The one value of a query of the administrator; empty for null.
    std::string value(const QString& query) const {
        Postgres::Connection connection(admin());
        const Postgres::Result found = connection.run(query);
        return found.rows() == 1 ? found.text(0, 0).toStdString() : std::to_string(found.rows()) + " rows";
    }
    void execute(const QString& statements) const { Postgres::Connection(admin()).runScript(statements); }

  private:
    static void require(const QStringList& arguments) {
        if (const OfficeRun run = runOffice(arguments); run.exitCode != 0)
            throw std::runtime_error(run.errors.toStdString());
    }
    ToolServer server;
};
