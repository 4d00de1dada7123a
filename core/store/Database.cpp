#include "core/store/Database.h"

#include "core/base/Fault.h"
#include "core/base/Numbers.h"
#include "core/store/JetSql.h"

#include <sqlite3.h>

#include <cmath>
#include <limits>
#include <utility>

namespace {

constexpr int busyTimeoutMilliseconds = 4000; // a second copy of the program may be saving
constexpr int memoSize = 536870910;

DatabaseFault engineFault(sqlite3* handle, int code, const QString& source) {
    const std::string message = handle ? sqlite3_errmsg(handle) : sqlite3_errstr(code);
    const int kind = code & 0xFF;
    std::int32_t number = DatabaseFault::Unspecified;
    if (kind == SQLITE_CONSTRAINT)
        number = DatabaseFault::ConstraintViolation;
    else if (kind == SQLITE_ERROR)
        number =
            message.starts_with("no such table") ? DatabaseFault::NoSuchTable : DatabaseFault::SyntaxError;
    std::string description = message;
    if (kind == SQLITE_NOTADB || kind == SQLITE_CORRUPT)
        description = "Unrecognized database format: " + message;
    else if (kind == SQLITE_BUSY || kind == SQLITE_LOCKED)
        description = "Could not use the database; it is locked by another user or program.";
    return {number, description, source.toStdString()};
}

void powerFunction(sqlite3_context* context, int /*count*/, sqlite3_value** arguments) {
    sqlite3_result_double(context,
                          std::pow(sqlite3_value_double(arguments[0]), sqlite3_value_double(arguments[1])));
}

const QString isoMoment = QStringLiteral("yyyy-MM-dd HH:mm:ss");

} // namespace

Connection::Connection() = default;
Connection::~Connection() {
    Close();
}

Connection::Connection(Connection&& other) noexcept
    : handle(std::exchange(other.handle, nullptr)), properties(std::move(other.properties)) {}

Connection& Connection::operator=(Connection&& other) noexcept {
    Close();
    handle = std::exchange(other.handle, nullptr);
    properties = std::move(other.properties);
    return *this;
}

void Connection::setProperty(const QString& name, const QString& value) {
    properties.insert(name, value);
}

QString Connection::ConnectionString() const {
    QStringList parts;
    for (auto property = properties.cbegin(); property != properties.cend(); ++property)
        parts.append(property.key() + u'=' + property.value());
    parts.sort();
    return parts.join(u';');
}

void Connection::Open() {
    if (dataSource().isEmpty())
        throw DatabaseFault(DatabaseFault::NoDataSource, "No data source was given for the connection.",
                            ConnectionString().toStdString());
    const int code = sqlite3_open_v2(dataSource().toUtf8().constData(), &handle,
                                     SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
    // Opening touches no page; reading the header tells a database from any other file.
    const int check = code != SQLITE_OK
                          ? code
                          : (sqlite3_extended_result_codes(handle, 1),
                             sqlite3_busy_timeout(handle, busyTimeoutMilliseconds),
                             sqlite3_exec(handle, "PRAGMA synchronous = EXTRA; PRAGMA schema_version;",
                                          nullptr, nullptr, nullptr));
    if (check != SQLITE_OK) {
        const DatabaseFault fault = engineFault(handle, check, ConnectionString());
        Close();
        throw fault;
    }
    sqlite3_create_function_v2(handle, "JetPower", 2, SQLITE_UTF8 | SQLITE_DETERMINISTIC, nullptr,
                               powerFunction, nullptr, nullptr, nullptr);
}

void Connection::Close() {
    sqlite3_close_v2(std::exchange(handle, nullptr)); // waits for open statements, if any
}

Recordset::Recordset() = default;
Recordset::~Recordset() {
    Close();
}

void Recordset::Open(const QString& source, Connection& connection, CursorType cursor, LockType /*lock*/,
                     CommandType command) {
    Close();
    if (!connection.IsOpen())
        throw DatabaseFault(DatabaseFault::InvalidConnection,
                            "The connection cannot be used to perform this operation. It is either closed or "
                            "invalid in this context.");
    database = connection.handle;
    const JetStatement rewritten = RewriteJetSql(
        command == CommandType::Table ? QStringLiteral("SELECT * FROM [%1]").arg(source) : source);
    const bool updatable = !rewritten.updatableTable.isEmpty() &&
                           (cursor == CursorType::Keyset || command == CommandType::Table);
    table = updatable ? rewritten.updatableTable : QString();
    QString sql = rewritten.sql;
    if (updatable) // the row's own number, ahead of the table's columns
        sql.replace(sql.indexOf(u'*'), 1, QStringLiteral("rowid, *"));
    countQuery = sql;

    const QByteArray text = sql.toUtf8();
    const char* rest = nullptr;
    const int code =
        sqlite3_prepare_v2(database, text.constData(), static_cast<int>(text.size()), &statement, &rest);
    if (code != SQLITE_OK)
        throw engineFault(database, code, connection.ConnectionString());
    if (!statement || !QByteArray(rest).trimmed().isEmpty()) {
        Close();
        throw DatabaseFault(DatabaseFault::SyntaxError, "Characters found after end of SQL statement.",
                            connection.ConnectionString().toStdString());
    }
    for (int i = updatable ? 1 : 0; i < sqlite3_column_count(statement); ++i)
        columns.append({QString::fromUtf8(sqlite3_column_name(statement, i)),
                        QString::fromUtf8(sqlite3_column_decltype(statement, i)).toUpper()});
    step();
}

void Recordset::Close() {
    sqlite3_finalize(std::exchange(statement, nullptr));
    columns.clear();
    assigned.clear();
    stored.clear();
    onRow = adding = deleted = resting = false;
    position = 0;
}

void Recordset::step() {
    assigned.clear();
    stored.clear();
    adding = false;
    const int code = sqlite3_step(statement);
    onRow = code == SQLITE_ROW;
    if (!onRow && code != SQLITE_DONE)
        throw engineFault(database, code, QStringLiteral("Recordset"));
    if (onRow && !table.isEmpty())
        rowId = sqlite3_column_int64(statement, 0);
}

/// Keeps the current row and gives up the read lock that the statement holds. Two copies of the program that
/// both read and wait to write would otherwise stop each other.
void Recordset::letGo() {
    if (resting)
        return;
    const auto changes = std::exchange(assigned, {});
    if (onRow && !adding)
        for (int i = 0; i < columns.size(); ++i)
            stored.insert(i, value(i));
    assigned = changes;
    sqlite3_reset(statement);
    resting = true;
}

void Recordset::MoveFirst() {
    sqlite3_reset(statement);
    resting = false;
    position = 0;
    step();
}

void Recordset::MoveNext() {
    if (!std::exchange(deleted, false))
        requireRow();
    if (std::exchange(resting, false)) // back to the row that was left for the write
        for (int row = 0; row <= position; ++row)
            if (sqlite3_step(statement) != SQLITE_ROW)
                break;
    ++position;
    step();
}

int Recordset::RecordCount() {
    sqlite3_stmt* count = nullptr;
    const QByteArray text = ("SELECT COUNT(*) FROM (" + countQuery + ")").toUtf8();
    int code = sqlite3_prepare_v2(database, text.constData(), -1, &count, nullptr);
    const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> owner(count, sqlite3_finalize);
    if (code == SQLITE_OK)
        code = sqlite3_step(count);
    if (code != SQLITE_ROW)
        throw engineFault(database, code, QStringLiteral("Recordset"));
    return sqlite3_column_int(count, 0);
}

int Recordset::columnIndex(const QString& name) const {
    for (int i = 0; i < columns.size(); ++i)
        if (columns[i].name.compare(name, Qt::CaseInsensitive) == 0)
            return i;
    throw DatabaseFault(DatabaseFault::NoSuchColumn,
                        ("Item cannot be found in the collection: " + name).toStdString());
}

Recordset::Field Recordset::operator[](const QString& name) {
    return {*this, columnIndex(name)};
}

void Recordset::requireRow() const {
    if (!onRow && !adding)
        throw DatabaseFault(DatabaseFault::NoCurrentRecord,
                            "Either BOF or EOF is True, or the current record has been deleted.");
}

QVariant Recordset::value(int column) const {
    requireRow();
    if (const auto change = assigned.constFind(column); change != assigned.cend())
        return *change;
    if (const auto change = stored.constFind(column); change != stored.cend())
        return *change;
    if (adding)
        return {};
    const int place = column + (table.isEmpty() ? 0 : 1);
    switch (sqlite3_column_type(statement, place)) {
    case SQLITE_INTEGER:
        return QVariant::fromValue<qint64>(sqlite3_column_int64(statement, place));
    case SQLITE_FLOAT:
        return sqlite3_column_double(statement, place);
    case SQLITE_NULL:
        return {};
    default:
        return QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement, place)),
                                 sqlite3_column_bytes(statement, place));
    }
}

void Recordset::AddNew() {
    assigned.clear();
    stored.clear();
    adding = true;
}

void Recordset::Update() {
    requireRow();
    if (table.isEmpty())
        throw DatabaseFault(DatabaseFault::Unspecified, "Current Recordset does not support updating.");
    if (assigned.isEmpty() && !adding)
        return;
    letGo();
    QStringList names;
    QStringList marks;
    for (auto change = assigned.cbegin(); change != assigned.cend(); ++change) {
        names.append(QuotedName(columns[change.key()].name));
        marks.append(QStringLiteral("?"));
    }
    const QString sql =
        adding ? QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
                     .arg(QuotedName(table), names.join(u','), marks.join(u','))
               : QStringLiteral("UPDATE %1 SET %2=? WHERE rowid=%3")
                     .arg(QuotedName(table), names.join(QStringLiteral("=?,")), QString::number(rowId));
    sqlite3_stmt* write = nullptr;
    int code = sqlite3_prepare_v2(database, sql.toUtf8().constData(), -1, &write, nullptr);
    std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> owner(write, sqlite3_finalize);
    int place = 0;
    for (auto change = assigned.cbegin(); code == SQLITE_OK && change != assigned.cend(); ++change) {
        ++place;
        switch (change->typeId()) {
        case QMetaType::QString: {
            const QByteArray text = change->toString().toUtf8();
            code = sqlite3_bind_text(write, place, text.constData(), static_cast<int>(text.size()),
                                     SQLITE_TRANSIENT);
            break;
        }
        case QMetaType::Double:
            code = sqlite3_bind_double(write, place, change->toDouble());
            break;
        default:
            code = change->isValid() ? sqlite3_bind_int64(write, place, change->toLongLong())
                                     : sqlite3_bind_null(write, place);
        }
    }
    if (code == SQLITE_OK)
        code = sqlite3_step(write);
    if (code != SQLITE_DONE)
        throw engineFault(database, code, QStringLiteral("Recordset"));
    if (adding) {
        rowId = sqlite3_last_insert_rowid(database);
        adding = false;
        onRow = true;
        for (int i = 0; i < columns.size(); ++i)
            stored.insert(i, {});
    }
    for (auto change = assigned.cbegin(); change != assigned.cend(); ++change)
        stored.insert(change.key(), *change);
    assigned.clear();
}

void Recordset::Delete() {
    requireRow();
    letGo();
    const QString sql =
        QStringLiteral("DELETE FROM %1 WHERE rowid=%2").arg(QuotedName(table), QString::number(rowId));
    char* message = nullptr;
    const int code = sqlite3_exec(database, sql.toUtf8().constData(), nullptr, nullptr, &message);
    sqlite3_free(message);
    if (code != SQLITE_OK)
        throw engineFault(database, code, QStringLiteral("Recordset"));
    onRow = false;
    deleted = true;
    --position; // the next row takes its place
}

bool Recordset::Field::isNull() const {
    return !recordset.value(index).isValid();
}

QString Recordset::Field::text() const {
    const QVariant value = recordset.value(index);
    if (value.typeId() == QMetaType::Double)
        return QString::fromStdString(NumberText(value.toDouble()));
    return value.toString();
}

double Recordset::Field::number() const {
    const QVariant value = recordset.value(index);
    return value.typeId() == QMetaType::QString ? ToDouble(value.toString().toStdString()) : value.toDouble();
}

bool Recordset::Field::boolean() const {
    return number() != 0;
}

QDateTime Recordset::Field::dateTime() const {
    return QDateTime::fromString(recordset.value(index).toString(),
                                 Qt::ISODate); // a day alone begins at 0:00
}

QDate Recordset::Field::date() const {
    const QString text = recordset.value(index).toString();
    return QDate::fromString(QStringView(text).left(10), Qt::ISODate);
}

int Recordset::Field::DefinedSize() const {
    const QString& type = recordset.columns[index].declaredType;
    const auto open = type.indexOf(u'(');
    if (open >= 0)
        return type.mid(open + 1, type.indexOf(u')') - open - 1).toInt();
    if (type == u"DOUBLE" || type == u"DATETIME")
        return 8;
    if (type == u"INTEGER")
        return 4;
    return type == u"MEMO" ? memoSize : 2;
}

void Recordset::Field::assign(const QVariant& value) {
    if (!recordset.adding)
        recordset.requireRow();
    recordset.assigned.insert(index, value);
}

Recordset::Field& Recordset::Field::operator=(const QString& text) {
    const QString& type = recordset.columns[index].declaredType;
    if (type == u"DOUBLE") {
        assign(ToDouble(text.toStdString()));
    } else if (type == u"INTEGER" || type == u"SMALLINT" || type == u"BOOLEAN") {
        *this = ToDouble(text.toStdString());
    } else {
        if (text.size() > DefinedSize())
            throw DatabaseFault(DatabaseFault::DataOverflow,
                                "The field is too small to accept the amount of data you attempted to add.");
        assign(text);
    }
    return *this;
}

Recordset::Field& Recordset::Field::operator=(const char* text) {
    return *this = QString::fromUtf8(text);
}

Recordset::Field& Recordset::Field::operator=(double number) {
    const QString& type = recordset.columns[index].declaredType;
    if (type == u"INTEGER" || type == u"SMALLINT") {
        const double whole = Round(number, 0);
        const double limit = type == u"INTEGER" ? 2147483647.0 : 32767.0;
        if (!(whole >= -limit - 1 && whole <= limit))
            throw DatabaseFault(DatabaseFault::DataOverflow, "The number is too large for the field.");
        assign(QVariant::fromValue<qint64>(static_cast<qint64>(whole)));
    } else if (type == u"BOOLEAN") {
        *this = number != 0;
    } else if (type == u"DOUBLE") {
        assign(number);
    } else {
        *this = QString::fromStdString(NumberText(number));
    }
    return *this;
}

Recordset::Field& Recordset::Field::operator=(int number) {
    return *this = static_cast<double>(number);
}

Recordset::Field& Recordset::Field::operator=(bool flag) {
    assign(QVariant::fromValue<qint64>(flag ? 1 : 0));
    return *this;
}

Recordset::Field& Recordset::Field::operator=(const QDateTime& moment) {
    assign(moment.toString(isoMoment));
    return *this;
}
