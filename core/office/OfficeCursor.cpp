#include "core/office/OfficeCursor.h"

#include "core/store/OfficeDialect.h"

#include <algorithm>
#include <utility>

namespace {

// The server's own numbers for its types.
enum ServerType : quint32 {
    Boolean = 16,
    Whole8 = 20,
    Whole2 = 21,
    Whole4 = 23,
    Single = 700,
    Double = 701,
    Decimal = 1700
};

constexpr int firstPage = 16; // most only want the columns of a table, or its one row
constexpr int largestPage = 8192;

const QString versionAndColumns = QStringLiteral("xmin::text, *");

QString tableName(const QString& table) {
    return officeDialect().quotedName(table);
}

} // namespace

OfficeCursor::OfficeCursor(OfficeSession& over, const OfficeQuery& query)
    : session(over), table(session.rowKeys(query.statement.updatableTable).isEmpty() ||
                                   !(query.wholeTable || query.forChange)
                               ? QString()
                               : query.statement.updatableTable),
      paged(query.wholeTable && isUpdatable()), forChange(query.forChange && !query.wholeTable),
      pageSize(firstPage), source(paged ? tableName(table) : u'(' + query.statement.sql + u')'),
      sourceParameters(query.parameters), result(paged ? Postgres::Result(nullptr) : all(query)) {
    readNames();
}

/// The rows of a table after one, in the order of their keys.
Postgres::Result OfficeCursor::page(std::optional<qint64> after) const {
    return session.run(
        QStringLiteral("SELECT %1 FROM %2%3 ORDER BY %4 LIMIT %5")
            .arg(versionAndColumns, tableName(table),
                 after ? QStringLiteral(" WHERE %1 > %2").arg(officeRow).arg(*after) : QString(), officeRow)
            .arg(pageSize));
}

Postgres::Result OfficeCursor::all(const OfficeQuery& query) const {
    QString sql = query.statement.sql;
    if (isUpdatable())
        sql.replace(sql.indexOf(u'*'), 1, versionAndColumns);
    const QString locked = lockedRows();
    if (query.forChange || !locked.isEmpty() || !sql.startsWith(u"SELECT"))
        return session.run(sql + locked, query.parameters);
    return session.ask({{.statement = sql.toUtf8(), .parameters = query.parameters}}).back();
}

/// Within a transaction that is going to change rows nobody else gets in between.
QString OfficeCursor::lockedRows() const {
    return isUpdatable() && forChange && session.inTransaction() ? QStringLiteral(" FOR UPDATE") : QString();
}

void OfficeCursor::readNames() {
    if (paged)
        return readNamesOfTable();
    for (int i = isUpdatable() ? 1 : 0; i < result.columns(); ++i) {
        const ColumnInfo* known = session.column(result.table(i), result.tableColumn(i));
        if (known && known->name == officeRow) {
            keyPlace = keyPlace < 0 ? i : keyPlace;
            continue;
        }
        ColumnInfo column = known ? *known : ColumnInfo();
        const QString called = result.name(i);
        if (!known || called.compare(known->name, Qt::CaseInsensitive) != 0)
            column.name = called;
        names.append(column);
        places.append(i);
    }
}

/// Many only want the columns of a table, or a new row of it.
void OfficeCursor::readNamesOfTable() {
    int place = 1; // after the version
    for (const ColumnInfo& column : session.columnsOf(table)) {
        if (column.name == officeRow) {
            keyPlace = place;
        } else {
            names.append(column);
            places.append(place);
        }
        ++place;
    }
}

bool OfficeCursor::step() {
    if (paged && !begun) {
        result = page({});
        begun = true;
    }
    if (++row >= result.rows() && paged && !sought && result.rows() == pageSize) {
        const qint64 last = result.bytes(result.rows() - 1, keyPlace).toLongLong();
        pageSize = std::min(pageSize * 8, largestPage);
        result = page(last);
        row = 0;
    }
    if (row >= result.rows())
        return false;
    holdVersion();
    return true;
}

void OfficeCursor::holdVersion() {
    if (!isUpdatable())
        return;
    heldRow = rowKey();
    heldVersion = result.text(row, 0);
}

QVariant OfficeCursor::value(int column) const {
    return row < 0 || row >= result.rows() ? QVariant() : officeValue(result, row, places[column]);
}

QVariant officeValue(const Postgres::Result& result, int row, int column) {
    if (result.isNull(row, column))
        return {};
    const QByteArrayView bytes = result.bytes(row, column);
    switch (result.type(column)) {
    case Boolean:
        return QVariant::fromValue<qint64>(bytes == "t" ? 1 : 0);
    case Whole2:
    case Whole4:
    case Whole8:
        return QVariant::fromValue<qint64>(bytes.toLongLong());
    case Decimal: // a sum of whole numbers
        if (!bytes.contains('.'))
            return QVariant::fromValue<qint64>(bytes.toLongLong());
        return bytes.toDouble();
    case Single:
    case Double:
        return bytes.toDouble();
    default:
        return QString::fromUtf8(bytes);
    }
}

int OfficeCursor::count() const {
    if (!paged && !sought)
        return result.rows();
    return session.run(QStringLiteral("SELECT COUNT(*) FROM %1 AS counted").arg(source), sourceParameters)
        .text(0, 0)
        .toInt();
}

qint64 OfficeCursor::rowKey() const {
    return result.bytes(row, keyPlace).toLongLong();
}

QList<qint64> OfficeCursor::followingKeys() {
    QList<qint64> keys;
    for (int next = row + 1; next < result.rows(); ++next)
        keys.append(result.bytes(next, keyPlace).toLongLong());
    if (paged && result.rows() == pageSize) {
        const Postgres::Result rest = session.run(
            QStringLiteral("SELECT %1 FROM %2 WHERE %1 > $1 ORDER BY %1").arg(officeRow, tableName(table)),
            {result.bytes(result.rows() - 1, keyPlace).toLongLong()});
        for (int next = 0; next < rest.rows(); ++next)
            keys.append(rest.bytes(next, 0).toLongLong());
    }
    return keys;
}

bool OfficeCursor::seek(qint64 key) {
    result = session.run(QStringLiteral("SELECT %1 FROM %2 WHERE %3 = $1%4")
                             .arg(versionAndColumns, tableName(table), officeRow, lockedRows()),
                         {key});
    sought = true;
    row = 0;
    if (result.rows() == 0)
        return false;
    holdVersion();
    return true;
}

/// Within a transaction, a run of new rows does not wait for the server after each.
qint64 OfficeCursor::insert(const RowValues& values) {
    QStringList columnNames;
    QStringList marks;
    QVariantList parameters;
    for (const auto& [column, given] : values) {
        columnNames.append(officeDialect().quotedName(names[column].name));
        parameters.append(given);
        marks.append(officeDialect().parameter(int(parameters.size())));
    }
    if (inserted++ > 0 && session.inTransaction() && !values.isEmpty())
        return insertQueued(columnNames.join(u',').toUtf8(), marks.join(u',').toUtf8(), parameters);
    const QString given =
        values.isEmpty() ? QStringLiteral("DEFAULT VALUES")
                         : QStringLiteral("(%1) VALUES (%2)").arg(columnNames.join(u','), marks.join(u','));
    const Postgres::Result made = session.run(
        QStringLiteral("INSERT INTO %1 %2 RETURNING %3, xmin::text").arg(tableName(table), given, officeRow),
        parameters);
    heldRow = made.bytes(0, 0).toLongLong();
    heldVersion = made.text(0, 1);
    return heldRow;
}

qint64 OfficeCursor::insertQueued(const QByteArray& columnNames, const QByteArray& marks,
                                  QVariantList parameters) {
    if (freeKeys.isEmpty()) {
        constexpr qsizetype most = 500;
        const Postgres::Result keys =
            session.run(QStringLiteral("SELECT nextval($1) FROM generate_series(1, $2)"),
                        {session.rowKeys(table), std::min(inserted * 2, most)});
        for (int next = keys.rows(); next > 0; --next)
            freeKeys.append(keys.bytes(next - 1, 0).toLongLong());
    }
    heldRow = freeKeys.takeLast();
    heldVersion.clear();
    parameters.append(heldRow);
    session.queue("INSERT INTO " + tableName(table).toUtf8() + " (" + columnNames + ',' + officeRow.toUtf8() +
                      ") VALUES (" + marks + ",$" + QByteArray::number(parameters.size()) + ')',
                  parameters);
    return heldRow;
}

/// The condition for the row as it was read.
QString OfficeCursor::condition(qint64 key, QVariantList& parameters) const {
    parameters.append(key);
    QString text = QStringLiteral(" WHERE %1 = $%2").arg(officeRow).arg(parameters.size());
    if (key == heldRow && heldVersion.isEmpty())
        return text;
    parameters.append(key == heldRow ? heldVersion : QStringLiteral("0")); // a version that no row has
    return text + QStringLiteral(" AND xmin = $%1::xid").arg(parameters.size());
}

void OfficeCursor::requireWritten(const Postgres::Result& written) const {
    if (written.changedRows() == 0)
        session.refuseChanged();
}

void OfficeCursor::update(qint64 key, const RowValues& values) {
    if (values.isEmpty())
        return;
    QStringList assignments;
    QVariantList parameters;
    for (const auto& [column, given] : values) {
        parameters.append(given);
        assignments.append(officeDialect().quotedName(names[column].name) + u'=' +
                           officeDialect().parameter(int(parameters.size())));
    }
    const QString where = condition(key, parameters);
    const Postgres::Result written =
        session.run(QStringLiteral("UPDATE %1 SET ").arg(tableName(table)) + assignments.join(u',') + where +
                        QStringLiteral(" RETURNING xmin::text"),
                    parameters);
    requireWritten(written);
    heldRow = key;
    heldVersion = written.text(0, 0);
}

void OfficeCursor::remove(qint64 key) {
    QVariantList parameters;
    const QString where = condition(key, parameters);
    requireWritten(session.run(QStringLiteral("DELETE FROM %1").arg(tableName(table)) + where, parameters));
}
