#include "core/store/SqliteEngine.h"

#include "core/base/Fault.h"
#include "core/base/Numbers.h"
#include "core/base/Text.h"
#include "core/store/SqliteFunctions.h"
#include "core/store/SqliteLetters.h"

#include <QtEndian>

#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <optional>

namespace {

using Statement = std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)>;

/// Throws an engine failure with the wording and numbers that users know.
[[noreturn]] void throwFault(sqlite3* handle, int code, const QString& source) {
    const std::string message = handle ? sqlite3_errmsg(handle) : sqlite3_errstr(code);
    const int kind = code & 0xFF;
    std::int32_t number = DatabaseFault::Unspecified;
    std::string description = message;
    if (kind == SQLITE_CONSTRAINT) {
        number = DatabaseFault::ConstraintViolation;
    } else if (kind == SQLITE_ERROR) {
        number = message.starts_with("no such table")         ? DatabaseFault::NoSuchTable
                 : message == SqliteFunctions::divisionByZero ? Fault::DivisionByZero
                 : message == SqliteFunctions::overflow       ? Fault::Overflow
                                                              : DatabaseFault::SyntaxError;
    } else if (kind == SQLITE_NOTADB || kind == SQLITE_CORRUPT) {
        description = "Unrecognized database format: " + message;
    } else if (kind == SQLITE_BUSY || kind == SQLITE_LOCKED) {
        throw DataLocked(number, "Could not use the database; it is locked by another user or program.",
                         source.toStdString());
    } else if (kind == SQLITE_INTERRUPT) {
        description = "The database takes too long to answer.";
    }
    throw DatabaseFault(number, description, source.toStdString());
}

class Dialect : public SqlDialect {
  public:
    QString quotedName(const QString& name) const override {
        return u'"' + QString(name).replace(u'"', QStringLiteral("\"\"")) + u'"';
    }
    QString power(const QString& base, const QString& exponent) const override {
        return QStringLiteral("JetPower(%1, %2)").arg(base, exponent);
    }
    QString quotient(const QString& numerator, const QString& denominator) const override {
        return QStringLiteral("JetQuotient(%1, %2)").arg(numerator, denominator);
    }
    QString joined(const QString& left, const QString& right) const override {
        return QStringLiteral("JetJoin(%1, %2)").arg(left, right);
    }
    QString dayFunction() const override { return QStringLiteral("date"); }
};

/// A column, from the type declared in the schema, such as "TEXT(50)".
ColumnInfo columnOf(const QString& name, const QString& declared) {
    using Kind = ColumnInfo::Kind;
    static const struct {
        const char* word;
        Kind kind;
        int size;
    } types[] = {{"TEXT", Kind::Text, 255},     {"MEMO", Kind::Memo, 536870910},
                 {"DOUBLE", Kind::Double, 8},   {"SMALLINT", Kind::SmallInteger, 2},
                 {"INTEGER", Kind::Integer, 4}, {"BOOLEAN", Kind::Boolean, 2},
                 {"DATETIME", Kind::Moment, 8}};
    const auto open = declared.indexOf(u'(');
    const QString word = (open < 0 ? declared : declared.left(open)).toUpper();
    for (const auto& type : types)
        if (word == QLatin1String(type.word))
            return {name, type.kind,
                    open < 0 ? type.size : declared.mid(open + 1, declared.indexOf(u')') - open - 1).toInt()};
    return {name, Kind::Unknown, 0};
}

class SqliteCursor final : public EngineCursor {
  public:
    SqliteCursor(sqlite3* handle, const QString& sql, const QVariantList& values, const QString& changedTable,
                 const QString& source)
        : database(handle), statement(nullptr, sqlite3_finalize), parameters(values), table(changedTable),
          connectionString(source), countQuery(sql) {
        QString text = sql;
        if (isUpdatable()) // the row key, ahead of the table's columns
            text.replace(text.indexOf(u'*'), 1, KeyAndColumns);
        const QByteArray bytes = text.toUtf8();
        const char* rest = nullptr;
        statement = prepared(bytes, &rest);
        if (!statement || !QByteArray(rest).trimmed().isEmpty())
            throw DatabaseFault(DatabaseFault::SyntaxError, "Characters found after end of SQL statement.",
                                connectionString.toStdString());
        bindParameters(statement.get());
        reading = statement.get();
        for (int i = firstColumn(); i < sqlite3_column_count(statement.get()); ++i)
            names.append(columnOf(QString::fromUtf8(sqlite3_column_name(statement.get(), i)),
                                  QString::fromUtf8(sqlite3_column_decltype(statement.get(), i))));
    }

    const QList<ColumnInfo>& columns() const override { return names; }

    bool step() override { return stepped(statement.get()); }

    void rest() override { sqlite3_reset(reading); }

    QVariant value(int column) const override {
        const int place = column + firstColumn();
        switch (sqlite3_column_type(reading, place)) {
        case SQLITE_INTEGER:
            return QVariant::fromValue<qint64>(sqlite3_column_int64(reading, place));
        case SQLITE_FLOAT:
            return sqlite3_column_double(reading, place);
        case SQLITE_NULL:
            return {};
        default:
            return QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(reading, place)),
                                     sqlite3_column_bytes(reading, place));
        }
    }

    int count() const override {
        const Statement counting = prepared(("SELECT COUNT(*) FROM (" + countQuery + ")").toUtf8(), nullptr);
        bindParameters(counting.get());
        if (const int code = sqlite3_step(counting.get()); code != SQLITE_ROW)
            fail(code);
        return sqlite3_column_int(counting.get(), 0);
    }

    bool isUpdatable() const override { return !table.isEmpty(); }
    qint64 rowKey() const override { return sqlite3_column_int64(reading, 0); }

    QList<qint64> followingKeys() override {
        QList<qint64> keys;
        while (stepped(statement.get()))
            keys.append(rowKey());
        return keys;
    }

    bool seek(qint64 row) override {
        if (!seeking)
            seeking = prepared(QStringLiteral("SELECT %1 FROM %2 WHERE rowid=?")
                                   .arg(KeyAndColumns, sqliteDialect().quotedName(table))
                                   .toUtf8(),
                               nullptr);
        reading = seeking.get();
        sqlite3_reset(reading);
        sqlite3_bind_int64(reading, 1, row);
        return stepped(reading);
    }

    /// A run of new rows keeps its statement: preparing one takes longer than its row.
    qint64 insert(const RowValues& values) override {
        const auto same = [](int column, const auto& value) { return column == value.first; };
        if (!inserting || !std::ranges::equal(insertedColumns, values, same)) {
            insertedColumns.clear();
            QStringList columnNames;
            for (const auto& [column, value] : values) {
                insertedColumns.append(column);
                columnNames.append(sqliteDialect().quotedName(names[column].name));
            }
            const QStringList marks(values.size(), QStringLiteral("?"));
            inserting =
                prepared(QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
                             .arg(sqliteDialect().quotedName(table), columnNames.join(u','), marks.join(u','))
                             .toUtf8(),
                         nullptr);
        }
        run(inserting.get(), values);
        return sqlite3_last_insert_rowid(database);
    }

    void update(qint64 row, const RowValues& values) override {
        QStringList assignments;
        for (const auto& [column, value] : values)
            assignments.append(sqliteDialect().quotedName(names[column].name) + QStringLiteral("=?"));
        write(QStringLiteral("UPDATE %1 SET %2 WHERE rowid=%3")
                  .arg(sqliteDialect().quotedName(table), assignments.join(u','), QString::number(row)),
              values);
    }

    void remove(qint64 row) override {
        write(QStringLiteral("DELETE FROM %1 WHERE rowid=%2")
                  .arg(sqliteDialect().quotedName(table), QString::number(row)),
              {});
    }

  private:
    static constexpr QLatin1String KeyAndColumns{"rowid, *"};

    int firstColumn() const { return isUpdatable() ? 1 : 0; }

    [[noreturn]] void fail(int code) const { throwFault(database, code, connectionString); }

    /// Whether a statement has come to a row.
    bool stepped(sqlite3_stmt* running) const {
        const int code = sqlite3_step(running);
        if (code != SQLITE_ROW && code != SQLITE_DONE)
            fail(code);
        return code == SQLITE_ROW;
    }

    Statement prepared(const QByteArray& text, const char** rest) const {
        sqlite3_stmt* made = nullptr;
        const int code =
            sqlite3_prepare_v2(database, text.constData(), static_cast<int>(text.size()), &made, rest);
        if (code != SQLITE_OK)
            fail(code);
        return {made, sqlite3_finalize};
    }

    static int bind(sqlite3_stmt* statement, int place, const QVariant& value) {
        if (!value.isValid())
            return sqlite3_bind_null(statement, place);
        if (value.typeId() == QMetaType::Double)
            return sqlite3_bind_double(statement, place, value.toDouble());
        if (value.typeId() != QMetaType::QString)
            return sqlite3_bind_int64(statement, place, value.toLongLong());
        const QByteArray text = value.toString().toUtf8();
        return sqlite3_bind_text(statement, place, text.constData(), static_cast<int>(text.size()),
                                 SQLITE_TRANSIENT);
    }

    void bindParameters(sqlite3_stmt* target) const {
        if (parameters.size() != sqlite3_bind_parameter_count(target))
            throw DatabaseFault(DatabaseFault::SyntaxError,
                                "No value given for one or more required parameters.",
                                connectionString.toStdString());
        for (int i = 0; i < parameters.size(); ++i)
            if (const int code = bind(target, i + 1, parameters[i]); code != SQLITE_OK)
                fail(code);
    }

    void write(const QString& sql, const RowValues& values) const {
        const Statement writing = prepared(sql.toUtf8(), nullptr);
        run(writing.get(), values);
    }

    void run(sqlite3_stmt* writing, const RowValues& values) const {
        int place = 0;
        for (const auto& [column, value] : values)
            if (const int code = bind(writing, ++place, value); code != SQLITE_OK)
                fail(code);
        const int code = sqlite3_step(writing);
        sqlite3_reset(writing); // a kept statement must not hold the table meanwhile
        if (code != SQLITE_DONE)
            fail(code);
    }

    sqlite3* database;
    Statement statement;
    QVariantList parameters;
    QString table; // the table whose rows can be changed; empty for other statements
    QString connectionString;
    QString countQuery;
    QList<ColumnInfo> names;
    Statement seeking{nullptr, sqlite3_finalize};
    sqlite3_stmt* reading = nullptr; // the statement with the current row: the cursor's own or `seeking`
    Statement inserting{nullptr, sqlite3_finalize};
    QList<int> insertedColumns;
};

class SqliteEngine final : public Engine {
  public:
    SqliteEngine(const QString& path, const SqliteOptions& options)
        : connectionString(options.connectionString) {
        sqlite3* opened = nullptr;
        const int mode = options.readOnly ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE;
        const int code =
            sqlite3_open_v2(path.toUtf8().constData(), &opened, mode | SQLITE_OPEN_NOMUTEX, nullptr);
        handle.reset(opened);
        if (code != SQLITE_OK)
            throwFault(opened, code, connectionString);
        sqlite3_extended_result_codes(opened, 1);
        sqlite3_busy_timeout(opened, options.busyMilliseconds);
        // Otherwise an unknown name in double quotes would silently count as text.
        sqlite3_db_config(opened, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
        // Opening reads no page; reading the header tells a database from any other file.
        run("PRAGMA synchronous = EXTRA; PRAGMA schema_version;");
        SqliteLetters::add(opened);
        SqliteFunctions::add(opened);
    }

    std::unique_ptr<EngineCursor> open(const QString& statement, const StatementOptions& options) override {
        const JetStatement rewritten = rewriteJetSql(
            options.wholeTable ? QStringLiteral("SELECT * FROM [%1]").arg(statement) : statement,
            sqliteDialect());
        QVariantList values = options.parameters;
        for (int i = 0; i < values.size() && i < rewritten.compared.size(); ++i)
            if (rewritten.compared[i] && values[i].typeId() == QMetaType::QString)
                values[i] = withoutTrailingBlanks(values[i].toString());
        const bool changes = options.forChange || options.wholeTable;
        return std::make_unique<SqliteCursor>(handle.get(), rewritten.sql, values,
                                              changes ? rewritten.updatableTable : QString(),
                                              connectionString);
    }

    void begin() override { run("BEGIN IMMEDIATE;"); }
    void beginReading() override { run("BEGIN; SELECT COUNT(*) FROM sqlite_master;"); }
    void commit() override { run("COMMIT;"); }
    void rollback() noexcept override { sqlite3_exec(handle.get(), "ROLLBACK;", nullptr, nullptr, nullptr); }

    int schemaVersion() override {
        return number(QStringLiteral("SELECT user_version AS V FROM pragma_user_version"));
    }

    /// The counter in the header, which each transaction increments. Read through the engine's own file
    /// handle: closing another handle would drop the engine's locks.
    quint32 changeCounter() override {
        sqlite3_file* file = openFile();
        std::array<unsigned char, 4> bytes{};
        constexpr sqlite3_int64 place = 24;
        if (!file || file->pMethods->xRead(file, bytes.data(), int(bytes.size()), place) != SQLITE_OK)
            return 0;
        return qFromBigEndian<quint32>(bytes.data());
    }

    bool hasTable(const QString& table) override {
        return number(QStringLiteral(
                          "SELECT COUNT(*) AS V FROM sqlite_master WHERE type = 'table' AND name = '%1'")
                          .arg(table)) > 0;
    }

    void runScript(const QString& script, int versionAfter) override {
        run(script.toUtf8() + "PRAGMA user_version = " + QByteArray::number(versionAfter) + ';');
    }

    QString foreignPart(const QStringList& tables) override {
        // A virtual table has no page of its own. A generated column is one of the hidden kinds above 1; the
        // column of an index that is an expression has the number -2.
        SqliteCursor parts(handle.get(), QStringLiteral(R"(
            SELECT name, tbl_name, CASE type
                WHEN 'table' THEN rootpage > 0 AND NOT EXISTS (SELECT 1 FROM pragma_table_xinfo(m.name)
                    WHERE hidden > 1 OR instr(dflt_value, '(') > 0) AND instr(upper(sql), 'CHECK') = 0
                WHEN 'index' THEN NOT EXISTS (SELECT 1 FROM pragma_index_xinfo(m.name) WHERE cid = -2)
                    AND NOT EXISTS (SELECT 1 FROM pragma_index_list(m.tbl_name) WHERE name = m.name AND partial)
                ELSE 0 END
            FROM sqlite_master AS m)"),
                           {}, {}, connectionString);
        while (parts.step())
            if (QString name = parts.value(0).toString();
                parts.value(2).toInt() == 0 &&
                (tables.contains(name, Qt::CaseInsensitive) ||
                 tables.contains(parts.value(1).toString(), Qt::CaseInsensitive)))
                return name;
        return {};
    }

    QString findDamage(Check check) override {
        const QString pragma =
            check == Check::Quick ? QStringLiteral("quick_check") : QStringLiteral("integrity_check");
        SqliteCursor rows(handle.get(), QStringLiteral("SELECT %1 FROM pragma_%1(1)").arg(pragma), {}, {},
                          connectionString);
        QString found = rows.step() ? rows.value(0).toString() : QStringLiteral("no answer");
        if (found != u"ok")
            return found;
        // The engine takes the missing end of a last page for zeros.
        const int pageSize = number(QStringLiteral("SELECT page_size AS V FROM pragma_page_size"));
        sqlite3_int64 size = 0;
        sqlite3_file* file = openFile();
        return file && file->pMethods->xFileSize(file, &size) == SQLITE_OK && size % pageSize != 0
                   ? QStringLiteral("the file is cut short")
                   : QString();
    }

    void limitTime(int milliseconds) override {
        constexpr int instructionsBetween = 10000;
        if (milliseconds == 0)
            return sqlite3_progress_handler(handle.get(), 0, nullptr, nullptr);
        limit = std::chrono::milliseconds(milliseconds);
        began = std::chrono::steady_clock::now();
        sqlite3_progress_handler(
            handle.get(), instructionsBetween,
            [](void* engine) {
                const auto* self = static_cast<const SqliteEngine*>(engine);
                return std::chrono::steady_clock::now() - self->began > self->limit ? 1 : 0;
            },
            this);
    }

    void copyTo(const QString& path) override {
        sqlite3* opened = nullptr;
        const int code = sqlite3_open(path.toUtf8().constData(), &opened);
        const Handle target(opened, sqlite3_close_v2);
        if (code != SQLITE_OK)
            throwFault(opened, code, path);
        copy(handle.get(), opened, opened, path);
    }

    void replaceBy(Engine& other) override {
        copy(dynamic_cast<SqliteEngine&>(other).handle.get(), handle.get(), handle.get(), connectionString);
    }

  private:
    using Handle = std::unique_ptr<sqlite3, int (*)(sqlite3*)>;

    /// Copies through the engine: opening the file in any other way would drop the engine's locks.
    static void copy(sqlite3* from, sqlite3* to, sqlite3* teller, const QString& source) {
        sqlite3_backup* backup = sqlite3_backup_init(to, "main", from, "main");
        if (!backup)
            throwFault(to, sqlite3_errcode(to), source);
        const int stepped = sqlite3_backup_step(backup, -1);
        const int finished = sqlite3_backup_finish(backup);
        if (stepped != SQLITE_DONE || finished != SQLITE_OK)
            throwFault(finished != SQLITE_OK ? teller : nullptr, finished != SQLITE_OK ? finished : stepped,
                       source);
    }

    /// The engine's own handle of the file; null for data in memory.
    sqlite3_file* openFile() {
        sqlite3_file* file = nullptr;
        return sqlite3_file_control(handle.get(), "main", SQLITE_FCNTL_FILE_POINTER, &file) == SQLITE_OK &&
                       file && file->pMethods
                   ? file
                   : nullptr;
    }

    void run(const QByteArray& sql) {
        if (const int code = sqlite3_exec(handle.get(), sql.constData(), nullptr, nullptr, nullptr);
            code != SQLITE_OK)
            throwFault(handle.get(), code, connectionString);
    }

    int number(const QString& sql) {
        SqliteCursor rows(handle.get(), sql, {}, {}, connectionString);
        return rows.step() ? rows.value(0).toInt() : 0;
    }

    Handle handle{nullptr, sqlite3_close_v2}; // waits for open statements
    QString connectionString;
    std::chrono::steady_clock::time_point began;
    std::chrono::milliseconds limit{};
};

} // namespace

const SqlDialect& sqliteDialect() {
    static const Dialect instance;
    return instance;
}

std::unique_ptr<Engine> openSqlite(const QString& path, const SqliteOptions& options) {
    return std::make_unique<SqliteEngine>(path, options);
}
