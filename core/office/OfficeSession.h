#pragma once

#include "core/postgres/Postgres.h"
#include "core/store/Engine.h"
#include "core/store/OfficeEngines.h"

#include <QHash>
#include <QMutex>

#include <map>
#include <vector>

/// A connection to an office's server with what it knows of the tables. Everything throws DatabaseFault with
/// the provider's numbers.
class OfficeSession {
  public:
    /// Connects and reads the columns of all tables. Throws PasswordNeeded.
    explicit OfficeSession(const OfficeOptions& options);

    /// Reports faults with this text as their source.
    void setSource(const QString& connectionString) { source = connectionString.toStdString(); }

    Postgres::Result run(const QString& statement, const QVariantList& parameters = {});
    void runScript(const QString& statements);
    void queue(const QByteArray& statement, const QVariantList& parameters);
    /// Waits for what is queued.
    void finish();

    /// Throws what a write meets whose row another user has changed or deleted since it was read.
    [[noreturn]] void refuseChanged() const;

    bool isSound() const { return connection.isSound(); }
    bool inTransaction() const { return connection.inTransaction(); }

    /// A column of a table by the server's numbers; null for any other.
    const ColumnInfo* column(quint32 table, int number) const;
    /// The name of the sequence that gives the rows of a table their keys; empty if the rows have none.
    QString rowKeys(const QString& table) const { return sequences.value(table.toLower()); }

  private:
    template<typename Body>
    auto reported(Body&& body) -> decltype(body());
    void readColumns();
    /// Whether the role has lost its rights since it connected: no table can be seen any more.
    bool isLockedOut();

    Postgres::Connection connection;
    std::string source;
    QHash<std::pair<quint32, int>, ColumnInfo> columns;
    QHash<QString, QString> sequences; // by table
};

/// The connections that wait for the next event, by address.
class OfficePool {
  public:
    std::unique_ptr<OfficeSession> take(const OfficeOptions& options);
    void giveBack(const QString& address, std::unique_ptr<OfficeSession> session) noexcept;
    void close();

  private:
    QMutex mutex;
    std::map<QString, std::vector<std::unique_ptr<OfficeSession>>> idle; // QHash cannot hold what only moves
};
