#pragma once

#include "core/base/Fault.h"
#include "core/base/ServerAddress.h"

#include <QByteArray>
#include <QString>
#include <QVariantList>

#include <memory>
#include <vector>

struct pg_conn;
struct pg_result;

/// A PostgreSQL server through libpq. Everything throws DatabaseFault.
namespace Postgres {

/// A failure that the server or the way to it reports.
class ServerFault : public DatabaseFault {
  public:
    ServerFault(const QByteArray& sqlState, std::int32_t number, const std::string& description,
                std::string source)
        : DatabaseFault(number, description, std::move(source)), state(sqlState) {}
    /// The five characters of SQLSTATE, such as "23505"; "08006" for a lost connection.
    const QByteArray& sqlState() const { return state; }

  private:
    QByteArray state;
};

/// The server wants a password and neither the URI, a service file nor the password file gives one, or it is
/// wrong.
class PasswordNeeded : public ServerFault {
  public:
    using ServerFault::ServerFault;
};

/// All rows of one statement. Copies share them.
class Result {
  public:
    explicit Result(pg_result* result);

    int rows() const;
    int columns() const;
    /// The column's name, its type, and the table that it comes from with its number there; 0 for an
    /// expression.
    QString name(int column) const;
    quint32 type(int column) const;
    quint32 table(int column) const;
    int tableColumn(int column) const;

    bool isNull(int row, int column) const;
    /// The value as the server writes it; empty for null. Valid as long as the result.
    QByteArrayView bytes(int row, int column) const;
    QString text(int row, int column) const;

    /// How many rows the statement wrote.
    qint64 changedRows() const;
    /// What was done, such as "COMMIT".
    QByteArray command() const;

  private:
    std::shared_ptr<pg_result> held;
};

/// A statement with a value for each $1, $2…
struct Question {
    QByteArray statement;
    QVariantList parameters = {};
};

/// An open connection to a database.
class Connection {
  public:
    /// Opens a URI or a list of parameters, as libpq understands them. The password is for this connection
    /// alone. Throws PasswordNeeded and ServerFault.
    explicit Connection(const QString& uri, const QString& password = {});

    /// Runs one statement with a value for each $1, $2…: numbers, texts, or invalid for null. Numbers keep
    /// every bit.
    Result run(const QString& statement, const QVariantList& parameters = {});
    /// Runs any number of statements; without BEGIN in them, all or none.
    void runScript(const QString& statements);

    /// Runs statements one after another, but asks the server only once. Each sees what was stored when its
    /// turn comes. Outside a transaction all or none are done.
    std::vector<Result> runTogether(const std::vector<Question>& questions);

    /// Queues a statement without waiting for the server. What goes wrong shows at the next `finish`, and
    /// then none of those queued since the last has been done unless in a transaction.
    void queue(const QByteArray& statement, const QVariantList& parameters);
    /// Waits for the queued statements.
    void finish();
    bool hasQueued() const { return queued > 0; }

    /// Whether the connection stands, as far as is known without asking the server.
    bool isSound() const;
    bool inTransaction() const;
    /// The role and the database of the connection, and where the server is.
    QString role() const;
    QString database() const;
    QString host() const;
    /// The version of the server, such as 150004.
    int serverVersion() const;

  private:
    std::vector<Result> awaitQueued();
    [[noreturn]] void fail(const pg_result* result) const;
    Result checked(pg_result* result) const;
    struct Finish {
        void operator()(pg_conn* connection) const;
    };
    std::unique_ptr<pg_conn, Finish> handle;
    QString source; // reported with faults, without a password
    qsizetype queued = 0;
};

/// All statements until commit are one write; destruction without commit undoes them.
class Transaction {
  public:
    explicit Transaction(Connection& connection);
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    void commit();

  private:
    Connection& connection;
    bool committed = false;
};

/// A name or a text as it stands in a statement.
QString quotedName(const QString& name);
QString quotedText(const QString& text);

using ServerAddress::withoutPassword;

} // namespace Postgres
