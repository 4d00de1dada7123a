#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

/// A PostgreSQL server of the test's own, in a temporary folder and reachable through a socket there alone.
/// It ends with the object, and with the test program if that is killed. Its superuser is "postgres".
class PostgresServer {
  public:
    /// Whether a commit waits for the disk. Tests that kill processes need no disk: what a killed server has
    /// written stays with the system.
    enum class Disk { Skipped, Waited };

    /// Creates and starts a server. Throws std::runtime_error with the server's log if that fails. The rules
    /// of access are lines of pg_hba.conf; without any, every role is let in without a password.
    explicit PostgresServer(Disk disk = Disk::Skipped, const QStringList& accessRules = {});
    ~PostgresServer();
    PostgresServer(const PostgresServer&) = delete;
    PostgresServer& operator=(const PostgresServer&) = delete;

    /// The folder of the socket, which libpq takes as the host.
    QString socketFolder() const { return folder.path(); }
    /// The URI of a database for a role, as libpq takes it.
    QString uri(const QString& role, const QString& database) const;

    /// Kills the server and all its processes at once, as a power cut would.
    void kill();
    /// Starts it again after a kill. Throws as above.
    void start();

    /// One of the server's own programs, such as "pg_dump".
    static QString program(const QString& name);

  private:
    QString file(const QString& name) const { return folder.filePath(name); }
    /// Runs one of the server's programs as a user who is not root.
    static void prepare(QProcess& process, const QString& name, const QStringList& arguments);
    void setAccess(const QStringList& rules) const;
    bool startsUp();
    bool isReady() const;
    QString log() const;

    QTemporaryDir folder;
    QStringList options;
    QProcess server;
};
