#include "core/store/Database.h"

#include "core/base/Fault.h"
#include "core/base/Text.h"
#include "core/store/OfficeEngines.h"
#include "core/store/SqliteEngine.h"

#include <algorithm>
#include <utility>

namespace {
const QString isoMoment = QStringLiteral("yyyy-MM-dd HH:mm:ss");

void set(RowValues& values, int column, const QVariant& value) {
    const auto found = std::ranges::find(values, column, &RowValues::value_type::first);
    if (found == values.end())
        values.append({column, value});
    else
        found->second = value;
}
} // namespace

void Connection::setProperty(const QString& name, const QString& value) {
    properties.insert(name, value);
}

QString Connection::connectionString() const {
    QStringList parts;
    for (auto property = properties.cbegin(); property != properties.cend(); ++property)
        parts.append(property.key() + u'=' + property.value());
    parts.sort();
    return isOffice() ? ServerAddress::withoutPassword(parts.join(u';')) : parts.join(u';');
}

void Connection::Open() {
    if (dataSource().isEmpty())
        throw DatabaseFault(DatabaseFault::NoDataSource, "No data source was given for the connection.",
                            connectionString().toStdString());
    if (isOffice())
        opened = Gateway::openOffice({.address = dataSource(),
                                      .password = {},
                                      .busyMilliseconds = busyMilliseconds,
                                      .connectionString = connectionString()});
    else
        opened = openSqlite(dataSource(), {.busyMilliseconds = busyMilliseconds,
                                           .readOnly = readOnly,
                                           .connectionString = connectionString()});
}

Engine& Connection::engine() const {
    if (!opened)
        throw DatabaseFault(DatabaseFault::InvalidConnection,
                            "The connection cannot be used to perform this operation. It is either closed or "
                            "invalid in this context.");
    return *opened;
}

void Recordset::Open(const QString& source, const Connection& connection, CursorType cursorType,
                     CommandType command) {
    Close();
    cursor = connection.engine().open(
        source, {.wholeTable = command == CommandType::Table, .forChange = cursorType == CursorType::Keyset});
    unread = true;
    if (command != CommandType::Table) // of which many want the columns or a new row only
        look();
}

void Recordset::Open(const QString& source, const Connection& connection, const QVariantList& parameters,
                     CursorType cursorType) {
    Close();
    cursor = connection.engine().open(
        source, {.parameters = parameters, .forChange = cursorType == CursorType::Keyset});
    step();
}

void Recordset::Close() {
    cursor.reset();
    assigned.clear();
    stored.clear();
    following.reset();
    unread = onRow = adding = deleted = resting = false;
    next = 0;
}

void Recordset::look() {
    if (!unread)
        return;
    step();
    unread = false; // not after a failure, or the table would pass for an empty one
}

void Recordset::step() {
    assigned.clear();
    stored.clear();
    adding = false;
    onRow = false;
    if (following) {
        while (!onRow && next < following->size())
            onRow = cursor->seek((*following)[next++]); // another instance may have deleted it
    } else {
        onRow = cursor->step();
    }
    if (onRow && cursor->isUpdatable())
        rowKey = cursor->rowKey();
}

/// Keeps the current row and gives up the read lock. Otherwise two instances of the program that both read
/// and wait to write would deadlock. What a write changes does not change which rows follow, so their keys
/// are read before the first; after a new row none follow.
void Recordset::letGo() {
    if (resting)
        return;
    const bool leaving = onRow && !adding;
    for (int i = 0; leaving && i < cursor->columns().size(); ++i)
        if (const QVariant now = cursor->value(i); now.isValid())
            stored.append({i, now});
    if (!following)
        following = leaving ? cursor->followingKeys() : QList<qint64>();
    cursor->rest();
    resting = true;
}

void Recordset::moveNext() {
    look();
    if (!std::exchange(deleted, false))
        requireRow();
    resting = false;
    step();
}

int Recordset::columnIndex(const QString& name) const {
    const auto& columns = cursor->columns();
    for (int i = 0; i < columns.size(); ++i)
        if (columns[i].name.compare(name, Qt::CaseInsensitive) == 0)
            return i;
    throw DatabaseFault(DatabaseFault::NoSuchColumn,
                        ("Item cannot be found in the collection: " + name).toStdString());
}

Recordset::Field Recordset::operator[](const QString& name) {
    return {*this, columnIndex(name)};
}

QStringList Recordset::columnNames() const {
    QStringList names;
    for (const ColumnInfo& column : cursor->columns())
        names.append(column.name);
    return names;
}

void Recordset::requireRow() {
    look();
    if (!onRow && !adding)
        throw DatabaseFault(DatabaseFault::NoCurrentRecord,
                            "Either BOF or EOF is True, or the current record has been deleted.");
}

const QVariant* Recordset::find(const RowValues& values, int column) {
    const auto found = std::ranges::find(values, column, &RowValues::value_type::first);
    return found == values.cend() ? nullptr : &found->second;
}

QVariant Recordset::value(int column) {
    requireRow();
    if (const QVariant* change = find(assigned, column))
        return *change;
    if (!adding && !resting)
        return cursor->value(column);
    const QVariant* kept = find(stored, column);
    return kept ? *kept : QVariant();
}

void Recordset::AddNew() {
    unread = false;
    assigned.clear();
    stored.clear();
    adding = true;
}

void Recordset::Update() {
    requireRow();
    if (!cursor->isUpdatable())
        throw DatabaseFault(DatabaseFault::Unspecified, "Current Recordset does not support updating.");
    if (assigned.isEmpty() && !adding)
        return;
    letGo();
    if (adding) {
        rowKey = cursor->insert(assigned);
        adding = false;
        onRow = true;
        stored.swap(assigned);
    } else {
        cursor->update(rowKey, assigned);
        for (const auto& [column, value] : std::as_const(assigned))
            set(stored, column, value);
    }
    assigned.clear();
}

void Recordset::Delete() {
    requireRow();
    letGo();
    cursor->remove(rowKey);
    onRow = false;
    deleted = true;
}

bool Recordset::Field::isNull() const {
    return !recordset.value(index).isValid();
}

QVariant Recordset::Field::stored() const {
    return recordset.value(index);
}

QString Recordset::Field::text() const {
    const QVariant value = recordset.value(index);
    return value.typeId() == QMetaType::Double ? shownNumber(value.toDouble()) : value.toString();
}

double Recordset::Field::number() const {
    const QVariant value = recordset.value(index);
    return value.typeId() == QMetaType::QString ? toNumber(value.toString()) : value.toDouble();
}

bool Recordset::Field::boolean() const {
    return number() != 0;
}

QDateTime Recordset::Field::dateTime() const {
    return QDateTime::fromString(recordset.value(index).toString(),
                                 Qt::ISODate); // a date without a time means 0:00
}

QDate Recordset::Field::date() const {
    const QString text = recordset.value(index).toString();
    return QDate::fromString(QStringView(text).left(10), Qt::ISODate);
}

const ColumnInfo& Recordset::Field::column() const {
    return recordset.cursor->columns()[index];
}

int Recordset::Field::DefinedSize() const {
    return column().size;
}

bool Recordset::Field::takesText() const {
    using Kind = ColumnInfo::Kind;
    const Kind kind = column().kind;
    return kind == Kind::Text || kind == Kind::Memo || kind == Kind::Moment || kind == Kind::Unknown;
}

bool Recordset::Field::takesFractions() const {
    return column().kind == ColumnInfo::Kind::Double;
}

bool Recordset::Field::takesMoments() const {
    return column().kind == ColumnInfo::Kind::Moment;
}

void Recordset::Field::assign(const QVariant& value) {
    if (!recordset.adding)
        recordset.requireRow();
    set(recordset.assigned, index, value);
}

Recordset::Field& Recordset::Field::operator=(const QString& text) {
    using Kind = ColumnInfo::Kind;
    switch (column().kind) {
    case Kind::Double:
    case Kind::Integer:
    case Kind::SmallInteger:
    case Kind::Boolean:
        return *this = toNumber(text);
    case Kind::Text:
    case Kind::Memo:
    case Kind::Moment:
    case Kind::Unknown:
        break;
    }
    const QString kept = withoutTrailingBlanks(text);
    if (kept.size() > DefinedSize())
        throw DatabaseFault(DatabaseFault::DataOverflow,
                            "The field is too small to accept the amount of data you attempted to add.");
    assign(kept);
    return *this;
}

Recordset::Field& Recordset::Field::operator=(const char* text) {
    return *this = QString::fromUtf8(text);
}

Recordset::Field& Recordset::Field::operator=(double number) {
    using Kind = ColumnInfo::Kind;
    switch (column().kind) {
    case Kind::Double:
        assign(number);
        break;
    case Kind::Boolean:
        *this = number != 0;
        break;
    case Kind::Integer:
    case Kind::SmallInteger: {
        const double whole = Round(number, 0);
        const double limit = column().kind == Kind::Integer ? 2147483647.0 : 32767.0;
        if (!(whole >= -limit - 1 && whole <= limit))
            throw DatabaseFault(DatabaseFault::DataOverflow, "The number is too large for the field.");
        assign(QVariant::fromValue<qint64>(static_cast<qint64>(whole)));
        break;
    }
    case Kind::Text:
    case Kind::Memo:
    case Kind::Moment:
    case Kind::Unknown:
        *this = shownNumber(number);
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
