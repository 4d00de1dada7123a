#pragma once

#include "core/office/EventAnswers.h"
#include "core/postgres/Postgres.h"
#include "core/store/Engine.h"
#include "core/store/OfficeEngines.h"

#include <QHash>
#include <QMutex>

#include <chrono>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

/// A connection to an office's server with what it knows of the tables. Everything throws DatabaseFault with
/// the provider's numbers.
class OfficeSession {
  public:
    /// Connects and reads the columns of all tables. The answers outlive the session. Throws PasswordNeeded.
    OfficeSession(const OfficeOptions& options, EventAnswers& answers);

    /// Reports faults with this text as their source.
    void setSource(const QString& connectionString) { source = connectionString.toStdString(); }

    /// Runs a statement. A write, alone or in a transaction, is refused with RefusedData if the office is of
    /// another version than the program by now.
    Postgres::Result run(const QString& statement, const QVariantList& parameters = {});
    void runScript(const QString& statements);
    /// The answers to questions that write nothing and lock nothing: those that this event has got already,
    /// the others at one go. Of several the first tells what the others belong to: once it is asked anew, so
    /// is everything else in this event. Within a transaction all are asked.
    std::vector<Postgres::Result> ask(const std::vector<Postgres::Question>& questions);
    void queue(const QByteArray& statement, const QVariantList& parameters);
    /// Waits for what is queued.
    void finish();

    /// Throws what a write meets whose row another user has changed or deleted since it was read.
    [[noreturn]] void refuseChanged() const;

    /// Starts a transaction with these statements, which are sent along with the next one. Where they end
    /// with a question for the office's version, that must be the program's.
    enum class Opening { Plain, AsksForVersion };
    void begin(const QByteArrayList& statements, Opening kind) {
        opening = statements;
        asksForVersion = kind == Opening::AsksForVersion;
    }
    /// Ends a transaction for which nothing was sent yet; false if something was.
    bool dropUnsent() { return !std::exchange(opening, {}).isEmpty(); }

    bool isSound() const { return connection.isSound(); }
    bool inTransaction() const { return !opening.isEmpty() || connection.inTransaction(); }

    /// A column of a table by the server's numbers; null for any other.
    const ColumnInfo* column(quint32 table, int number) const;
    /// The name of the sequence that gives the rows of a table their keys; empty if the rows have none.
    QString rowKeys(const QString& table) const { return sequences.value(table.toLower()); }
    /// The columns of a table in its order, with that of the row key; nothing for an unknown one.
    QList<ColumnInfo> columnsOf(const QString& table) const;

  private:
    template<typename Body>
    auto reported(Body&& body) -> decltype(body());
    void readColumns();
    /// Whether the role has lost its rights since it connected: no table can be seen any more.
    bool isLockedOut();
    std::vector<Postgres::Result> runTogether(const std::vector<Postgres::Question>& questions);
    Postgres::Result writeAlone(const QString& statement, const QVariantList& parameters);
    std::vector<Postgres::Question> takeOpening();
    void requireVersion(const Postgres::Result& found) const;
    void noteWrite(QByteArrayView statement);

    Postgres::Connection connection;
    EventAnswers& answers;
    QString address;
    std::string source;
    QHash<std::pair<quint32, int>, ColumnInfo> columns;
    QHash<QString, QString> sequences; // by table
    QHash<QString, quint32> tables;    // the server's numbers
    QHash<quint32, int> lastColumns;   // by that number
    QByteArrayList opening;            // what starts a transaction and was not sent yet
    bool asksForVersion = false;
};

/// A server that did not answer for long, and what was reported.
struct LongWait {
    QString address;
    std::chrono::steady_clock::time_point end;
    std::int32_t number;
    std::string description;
};

/// The connections that wait for the next event, by address.
class OfficePool {
  public:
    /// Throws as OfficeSession. A server that has just kept somebody waiting in vain is not asked again for a
    /// few seconds, or each window that comes to the front would wait as long.
    std::unique_ptr<OfficeSession> take(const OfficeOptions& options);
    void giveBack(const QString& address, std::unique_ptr<OfficeSession> session) noexcept;
    void close();

  private:
    void refuseAfterWaiting(const OfficeOptions& options);

    EventAnswers answers;
    std::optional<LongWait> longWait;
    QMutex mutex;
    std::map<QString, std::vector<std::unique_ptr<OfficeSession>>> idle; // QHash cannot hold what only moves
};
