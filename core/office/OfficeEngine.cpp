#include "core/base/Text.h"
#include "core/office/OfficeCursor.h"
#include "core/store/OfficeDialect.h"
#include "core/store/OfficeEngines.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace {

[[noreturn]] void refuseFile(const std::string& source) {
    throw DatabaseFault(
        DatabaseFault::Unspecified,
        "Your data are in an office's database, which is not a file. Its backup is made on the "
        "server, for the whole office.",
        source);
}

/// The numbers of writes to the shared tables and to the user's own. They count before their transaction
/// ends, so those under way belong to it: a reader that looks meanwhile must look again afterwards.
const char* const countOfChanges =
    "SELECT concat_ws(' ', (SELECT (last_value, is_called) FROM office.changes), "
    "(SELECT (last_value, is_called) FROM changes), "
    "(SELECT string_agg(DISTINCT l.virtualtransaction, ' ' ORDER BY l.virtualtransaction) "
    "FROM pg_locks l JOIN pg_class c ON c.oid = l.relation "
    "JOIN pg_namespace n ON n.oid = c.relnamespace "
    "WHERE l.mode = 'RowExclusiveLock' AND c.relkind = 'r' AND n.nspname IN ('office', current_user) "
    "AND l.database = (SELECT oid FROM pg_database WHERE datname = current_database())))";

quint32 hashOf(QByteArrayView text) {
    quint32 hash = 0x811C9DC5U; // FNV-1a
    for (const char byte : text)
        hash = (hash ^ static_cast<unsigned char>(byte)) * 0x01000193U;
    return hash;
}

class OfficeEngine final : public Engine {
  public:
    OfficeEngine(OfficePool& waiting, const OfficeOptions& given)
        : pool(waiting), options(given), session(waiting.take(given)) {}
    ~OfficeEngine() override {
        if (limited)
            return; // the limit ends with the connection
        if (session->inTransaction())
            rollback();
        pool.giveBack(options.address, std::move(session));
    }
    OfficeEngine(const OfficeEngine&) = delete;
    OfficeEngine& operator=(const OfficeEngine&) = delete;

    std::unique_ptr<EngineCursor> open(const QString& statement, const StatementOptions& how) override {
        return std::make_unique<OfficeCursor>(*session, translated(statement, how));
    }

    Look look(const QString& statement, const QVariantList& parameters) override {
        const OfficeQuery query = translated(statement, {.parameters = parameters});
        const auto answers =
            session->ask({{.statement = countOfChanges},
                          {.statement = query.statement.sql.toUtf8(), .parameters = query.parameters}});
        Look seen{.counter = hashOf(answers.front().bytes(0, 0))};
        for (int i = 0; answers.back().rows() > 0 && i < answers.back().columns(); ++i)
            seen.row.append(officeValue(answers.back(), 0, i));
        return seen;
    }

    void begin() override {
        writing = true;
        const int wait = std::max(1, options.busyMilliseconds); // 0 would be for ever
        session->begin({"BEGIN", "SET LOCAL lock_timeout = " + QByteArray::number(wait), officeTurn.toUtf8(),
                        "SELECT version FROM office.version"},
                       OfficeSession::Opening::AsksForVersion);
    }
    void beginReading() override {
        writing = false;
        session->begin({"BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY"}, OfficeSession::Opening::Plain);
    }
    void commit() override {
        if (session->dropUnsent())
            return;
        // The server answers COMMIT after a failure with a rollback, and calls that a success.
        if (committed().command() != "COMMIT")
            throw DatabaseFault(DatabaseFault::Unspecified,
                                "The changes were not stored, because one of them failed.",
                                options.connectionString.toStdString());
    }
    void rollback() noexcept override {
        if (!session->dropUnsent())
            endTransaction();
    }

    int schemaVersion() override {
        return hasTable(QStringLiteral("version"))
                   ? number(QStringLiteral("SELECT version FROM office.version"))
                   : 0;
    }

    quint32 changeCounter() override { return hashOf(session->run(countOfChanges).bytes(0, 0)); }

    bool hasTable(const QString& table) override {
        return !session->run(QStringLiteral("SELECT to_regclass($1)"), {officeDialect().quotedName(table)})
                    .isNull(0, 0);
    }

    void runScript(const QString& script, int versionAfter) override {
        session->runScript(script);
        session->run(QStringLiteral("UPDATE office.version SET version = $1"), {versionAfter});
    }

    /// Nobody but the owner of an office can add anything to it.
    QString foreignPart(const QStringList&) override { return {}; }

    /// The server looks after its files itself.
    QString findDamage(Check) override { return {}; }

    void limitTime(int milliseconds) override {
        limited = true;
        session->runScript(QStringLiteral("SET statement_timeout = %1").arg(milliseconds));
    }
    void copyTo(const QString&) override { refuseFile(options.connectionString.toStdString()); }
    void replaceBy(Engine&) override { refuseFile(options.connectionString.toStdString()); }

  private:
    /// Throws DatabaseFault where the statement and its values do not fit each other.
    OfficeQuery translated(const QString& statement, const StatementOptions& how) const {
        OfficeQuery query{.statement = rewriteJetSql(how.wholeTable
                                                         ? QStringLiteral("SELECT * FROM [%1]").arg(statement)
                                                         : statement,
                                                     officeDialect()),
                          .parameters = how.parameters,
                          .wholeTable = how.wholeTable,
                          .forChange = how.forChange};
        if (query.parameters.size() != query.statement.compared.size())
            throw DatabaseFault(DatabaseFault::SyntaxError,
                                "No value given for one or more required parameters.",
                                options.connectionString.toStdString());
        if (query.statement.sql.trimmed().isEmpty())
            throw DatabaseFault(DatabaseFault::SyntaxError, "Syntax error in query: it is empty.",
                                options.connectionString.toStdString());
        for (int i = 0; i < query.parameters.size(); ++i)
            if (query.statement.compared[i] && query.parameters[i].typeId() == QMetaType::QString)
                query.parameters[i] = withoutTrailingBlanks(query.parameters[i].toString());
        return query;
    }

    /// The first attempt may only report what went wrong with rows that were queued.
    void endTransaction() noexcept {
        for (int attempt = 0; attempt < 2; ++attempt) {
            try {
                session->runScript(QStringLiteral("ROLLBACK"));
                return;
            } catch (...) { // the connection is gone, and the transaction with it
            }
        }
    }
    /// A connection that is lost after COMMIT was sent takes the server's answer with it.
    Postgres::Result committed() {
        session->finish();
        const bool unsure = writing && session->isSound();
        try {
            return session->run(QStringLiteral("COMMIT"));
        } catch (const DatabaseFault& fault) {
            if (!unsure || session->isSound())
                throw;
            throw DatabaseFault(fault.number(),
                                std::string(fault.what()) +
                                    "\nThe changes may have been stored nevertheless. Please look before you "
                                    "make them again.",
                                options.connectionString.toStdString());
        }
    }
    int number(const QString& sql) {
        const Postgres::Result found = session->run(sql);
        return found.rows() > 0 ? found.text(0, 0).toInt() : 0;
    }

    OfficePool& pool;
    OfficeOptions options;
    std::unique_ptr<OfficeSession> session;
    bool limited = false;
    bool writing = false; // in the transaction that is open
};

class Engines final : public OfficeEngines {
  public:
    std::unique_ptr<Engine> open(const OfficeOptions& options) override {
        return std::make_unique<OfficeEngine>(pool, options);
    }
    void closeIdle() override { pool.close(); }

  private:
    OfficePool pool;
};

} // namespace

extern "C" Q_DECL_EXPORT OfficeEngines* officeEngines(const char* programVersion) {
    static Engines instance;
    return std::strcmp(programVersion, BRENNOVAL_VERSION) == 0 ? &instance : nullptr;
}
