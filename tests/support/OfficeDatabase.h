#pragma once

#include "core/postgres/Postgres.h"

#include <QString>
#include <QTemporaryDir>

/// A server for tests: that of the whole run, if its note is named by OFFICE_SERVER, or else one of this
/// program's own.
class OfficeServer {
  public:
    /// Which to use. A test that kills its server must have its own.
    enum class Of { Run, Test };
    explicit OfficeServer(Of of);
    ~OfficeServer();
    OfficeServer(const OfficeServer&) = delete;
    OfficeServer& operator=(const OfficeServer&) = delete;

    /// The server that the tests of this program share.
    static OfficeServer& shared();

    /// Kills it, as a power cut would, or starts it again.
    void kill() const { command("kill"); }
    void startAgain() const { command("again"); }

    QString folder() const { return socketFolder; }
    /// An address there, without a password.
    QString address(const QString& role, const QString& database) const;

  private:
    void command(const QString& what) const;
    QTemporaryDir own;
    QString note;
    QString socketFolder;
};

/// An office with the users "anna" and "ben", deleted with the object.
class OfficeDatabase {
  public:
    explicit OfficeDatabase(OfficeServer& server = OfficeServer::shared());
    ~OfficeDatabase();
    OfficeDatabase(const OfficeDatabase&) = delete;
    OfficeDatabase& operator=(const OfficeDatabase&) = delete;

    /// Where a user works.
    QString address(const QString& user = QStringLiteral("anna")) const { return server.address(user, name); }
    /// Adds a user, with a role if there is none yet.
    void addUser(const QString& user);
    /// A connection of the office's keeper, or of a user; whoever it is sees the tables as a user does.
    Postgres::Connection connection(const QString& role = keeper()) const;
    /// Makes the program use the office from now on, as one of its users.
    void use(const QString& user = QStringLiteral("anna")) const;

    static QString keeper() { return QStringLiteral("keeper"); }

  private:
    OfficeServer& server;
    QString name;
};
