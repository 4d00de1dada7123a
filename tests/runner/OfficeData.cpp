#include "tests/runner/OfficeData.h"

#include "core/base/Numbers.h"
#include "core/postgres/OfficeSchema.h"
#include "core/store/Schema.h"
#include "core/store/SqliteLetters.h"

#include <QRegularExpression>
#include <QUrl>

#include <stdexcept>
#include <tuple>

using Postgres::quotedName;

namespace OfficeData {

namespace {

using Statement = std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)>;
using Rows = QList<QVariantList>;

/// A connection of the office's keeper that sees the tables as the user of the address does.
Postgres::Connection connected(const QString& address) {
    QUrl url(address);
    const QString user = url.userName();
    url.setUserName("keeper");
    Postgres::Connection office(url.toString(QUrl::FullyEncoded));
    office.runScript("SET search_path = " + quotedName(user) + ", office");
    return office;
}

/// A copy of the office in memory, with the tables of a file.
class Copy {
  public:
    explicit Copy(Postgres::Connection& office) {
        sqlite3* opened = nullptr;
        sqlite3_open(":memory:", &opened);
        handle.reset(opened);
        SqliteLetters::add(opened);
        for (const QString& script : Schema::ownScripts())
            run(script);
        for (const QString& table : tables()) {
            run("DELETE FROM " + table);
            if (!office.run("SELECT to_regclass($1)", {table.toLower()}).isNull(0, 0))
                take(office, table);
            else
                run("ALTER TABLE " + table + " RENAME TO hidden");
        }
    }

    static QStringList tables() { return OfficeSchema::sharedTables() + OfficeSchema::ownTables(); }

    void run(const QString& sql) {
        char* message = nullptr;
        if (sqlite3_exec(handle.get(), sql.toUtf8().constData(), nullptr, nullptr, &message) != SQLITE_OK)
            throw std::runtime_error(message ? message : "a statement failed");
    }

    Statement prepared(const QString& sql) {
        sqlite3_stmt* made = nullptr;
        if (sqlite3_prepare_v2(handle.get(), sql.toUtf8().constData(), -1, &made, nullptr) != SQLITE_OK)
            throw std::runtime_error(sqlite3_errmsg(handle.get()));
        return {made, sqlite3_finalize};
    }

    bool has(const QString& table) {
        const Statement found =
            prepared("SELECT 1 FROM sqlite_master WHERE type = 'table' AND name = '" + table + '\'');
        return sqlite3_step(found.get()) == SQLITE_ROW;
    }

    QStringList columnsOf(const QString& table) {
        QStringList names;
        const Statement rows = prepared("SELECT * FROM " + table);
        for (int i = 0; i < sqlite3_column_count(rows.get()); ++i)
            names.append(QString::fromUtf8(sqlite3_column_name(rows.get(), i)));
        return names;
    }

    Rows rowsOf(const QString& table) {
        const Statement rows = prepared("SELECT * FROM " + table + " ORDER BY rowid");
        Rows all;
        while (sqlite3_step(rows.get()) == SQLITE_ROW) {
            QVariantList row;
            for (int i = 0; i < sqlite3_column_count(rows.get()); ++i)
                row.append(valueOf(rows.get(), i));
            all.append(row);
        }
        return all;
    }

  private:
    static QVariant valueOf(sqlite3_stmt* row, int column) {
        switch (sqlite3_column_type(row, column)) {
        case SQLITE_NULL:
            return {};
        case SQLITE_FLOAT:
            return sqlite3_column_double(row, column);
        case SQLITE_INTEGER:
            return QVariant::fromValue<qint64>(sqlite3_column_int64(row, column));
        default:
            return QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(row, column)));
        }
    }

    /// The columns' own types make numbers of the server's texts.
    void take(Postgres::Connection& office, const QString& table) {
        const QStringList columns = columnsOf(table);
        QStringList names;
        for (const QString& column : columns)
            names.append(quotedName(column.toLower()));
        const Postgres::Result rows =
            office.run("SELECT " + names.join(',') + " FROM " + table + " ORDER BY office_row");
        const QStringList marks(columns.size(), "?");
        const Statement adding = prepared("INSERT INTO " + table + " VALUES (" + marks.join(',') + ')');
        run("BEGIN");
        for (int row = 0; row < rows.rows(); ++row) {
            sqlite3_reset(adding.get());
            for (int i = 0; i < columns.size(); ++i) {
                const QByteArrayView text = rows.bytes(row, i);
                if (rows.isNull(row, i))
                    sqlite3_bind_null(adding.get(), i + 1);
                else
                    sqlite3_bind_text(adding.get(), i + 1, text.data(), int(text.size()), SQLITE_TRANSIENT);
            }
            if (sqlite3_step(adding.get()) != SQLITE_DONE)
                throw std::runtime_error(sqlite3_errmsg(handle.get()));
        }
        run("COMMIT");
    }

    std::unique_ptr<sqlite3, int (*)(sqlite3*)> handle{nullptr, sqlite3_close};
};

/// Writes the rows of a table anew.
void write(Postgres::Connection& office, const QString& table, const QStringList& columns, const Rows& rows) {
    QStringList names;
    QStringList marks;
    for (const QString& column : columns) {
        names.append(quotedName(column.toLower()));
        marks.append('$' + QString::number(names.size()));
    }
    const QByteArray adding =
        ("INSERT INTO " + table + " (" + names.join(',') + ") VALUES (" + marks.join(',') + ')').toUtf8();
    office.run("DELETE FROM " + table);
    for (const QVariantList& row : rows)
        office.queue(adding, row);
    office.finish();
}

/// A trigger of a file in the server's words; nothing for any other statement.
std::optional<QString> asServersTrigger(const QString& sql) {
    static const QRegularExpression made(
        R"(^CREATE TRIGGER (\w+) (BEFORE|AFTER) (INSERT|UPDATE|DELETE) ON (\w+)( WHEN (.*?))? BEGIN SELECT RAISE\(ABORT, '(\w+)'\); END$)");
    static const QRegularExpression dropped(R"(^DROP TRIGGER (\w+)$)");
    if (const auto match = made.match(sql); match.hasMatch())
        return QString("CREATE FUNCTION office.%1() RETURNS trigger LANGUAGE plpgsql AS "
                       "$$BEGIN RAISE EXCEPTION '%2'; END$$; "
                       "CREATE TRIGGER %1 %3 %4 ON %5 FOR EACH ROW %6 EXECUTE FUNCTION office.%1()")
            .arg(match.captured(1), match.captured(7), match.captured(2), match.captured(3),
                 match.captured(4),
                 match.captured(6).isEmpty() ? QString() : "WHEN (" + match.captured(6) + ')');
    if (const auto match = dropped.match(sql); match.hasMatch())
        return QString("DROP FUNCTION office.%1 CASCADE").arg(match.captured(1));
    return std::nullopt;
}

/// The version of the data in the server's words; nothing for any other statement.
std::optional<QString> asServersVersion(const QString& sql) {
    static const QRegularExpression version(R"(^PRAGMA user_version = (\d+)$)");
    const auto match = version.match(sql);
    return match.hasMatch() ? std::optional("UPDATE office.version SET version = " + match.captured(1))
                            : std::nullopt;
}

/// A new name of a table; nothing for any other statement.
std::optional<QString> asServersRename(const QString& sql) {
    static const QRegularExpression renamed(R"(^ALTER TABLE (\w+) RENAME TO (\w+)$)");
    return renamed.match(sql).hasMatch() ? std::optional(sql) : std::nullopt;
}

} // namespace

QStringList queried(const QString& address, const QString& sql) {
    Postgres::Connection office = connected(address);
    Copy copy(office);
    const Statement statement = copy.prepared(sql);
    if (sqlite3_step(statement.get()) != SQLITE_ROW)
        return {QString()};
    QStringList texts;
    if (sqlite3_column_type(statement.get(), 0) == SQLITE_FLOAT)
        texts.append(QString::fromStdString(NumberText(sqlite3_column_double(statement.get(), 0))));
    texts.append(QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement.get(), 0))));
    return texts;
}

void arrange(const QString& address, const QString& sql) {
    for (const auto& translated : {asServersTrigger(sql), asServersVersion(sql), asServersRename(sql)})
        if (translated)
            return connected(address).runScript(*translated);
    Postgres::Connection office = connected(address);
    Copy copy(office);
    QHash<QString, Rows> before;
    for (const QString& table : Copy::tables())
        if (copy.has(table))
            before.insert(table, copy.rowsOf(table));
    copy.run(sql);
    Postgres::Transaction all(office);
    for (auto table = before.cbegin(); table != before.cend(); ++table)
        if (const Rows rows = copy.rowsOf(table.key()); rows != table.value())
            write(office, table.key(), copy.columnsOf(table.key()), rows);
    all.commit();
}

} // namespace OfficeData
