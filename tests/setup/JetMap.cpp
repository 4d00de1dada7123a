#include "tests/setup/JetMap.h"

#include "setup/PriorTables.h"

#include <utility>

namespace {

constexpr qsizetype pageSize = 4096;
constexpr int dateOrDouble[] = {7, 8};
constexpr int wholeNumber = 4;
constexpr int memo = 12;

bool isDateOrDouble(int type) {
    return type == dateOrDouble[0] || type == dateOrDouble[1];
}

} // namespace

JetMap::JetMap(QByteArray file) : bytes(std::move(file)) {
    const QHash<QString, qsizetype> all = tables();
    for (int table = 0; table < PriorTables::Count; ++table) {
        const qsizetype definition = all.value(PriorTables::all[size_t(table)].name);
        definitions[size_t(table)] = definition;
        const QHash<QString, Column> columns = columnsOf(definition);
        addStructure(definition, definition + 8 + doubleWord(definition + 8));
        qsizetype page = 0;
        int row = 0;
        for (const auto& [begin, end] : rowsOf(definition)) {
            if (std::exchange(page, begin / pageSize * pageSize) != begin / pageSize * pageSize)
                addStructure(page, page + 14 + 2 * qsizetype(word(page + 12)));
            rowPlaces[size_t(table)].push_back(begin);
            readRow(table, row++, columns, begin, end);
        }
    }
}

bool JetMap::belongs(qsizetype place, unsigned changed, const Cell& cell) const {
    for (auto owner = owners.constFind(place); owner != owners.cend() && owner.key() == place; ++owner)
        if (owner->cell == cell && (owner->bits & changed) != 0)
            return true;
    return false;
}

qsizetype JetMap::piece(quint32 place) const {
    const qsizetype page = qsizetype(place >> 8U) * pageSize;
    return page + (word(page + 14 + 2 * qsizetype(place & 0xffU)) & 0x1fff);
}

QString JetMap::text(qsizetype begin, qsizetype end) const {
    const QByteArray stored = bytes.mid(begin, end - begin);
    return QString::fromUtf16(reinterpret_cast<const char16_t*>(stored.constData()), stored.size() / 2);
}

QHash<QString, JetMap::Column> JetMap::columnsOf(qsizetype definition) const {
    const int count = word(definition + 45);
    qsizetype at = definition + 63 + 12 * qsizetype(doubleWord(definition + 51));
    std::vector<Column> columns;
    for (int i = 0; i < count; ++i, at += 25) {
        const bool isFixed = (bytes[at + 15] & 1) != 0;
        columns.push_back({.type = bytes[at],
                           .isFixed = isFixed,
                           .number = word(at + 5),
                           .place = word(at + (isFixed ? 21 : 7)),
                           .size = word(at + 23)});
    }
    QHash<QString, Column> named;
    for (const Column& column : columns) {
        named.insert(text(at + 2, at + 2 + word(at)), column);
        at += 2 + word(at);
    }
    return named;
}

std::vector<std::pair<qsizetype, qsizetype>> JetMap::rowsOf(qsizetype definition) const {
    std::vector<std::pair<qsizetype, qsizetype>> found;
    for (qsizetype page = 0; page < bytes.size(); page += pageSize) {
        if (bytes[page] != 1 || doubleWord(page + 4) != definition / pageSize)
            continue;
        qsizetype end = pageSize;
        for (qsizetype i = 0; i < word(page + 12); ++i) {
            const quint16 place = word(page + 14 + 2 * i);
            const qsizetype begin = place & 0x1fff;
            if ((place & 0x4000) == 0) // neither deleted nor moved
                found.emplace_back(page + begin, page + end);
            end = begin;
        }
    }
    return found;
}

/// The catalogue table says where each table begins. Only its names are compressed, and they are plain ASCII.
QHash<QString, qsizetype> JetMap::tables() const {
    constexpr qsizetype catalogue = 2 * pageSize;
    const QHash<QString, Column> columns = columnsOf(catalogue);
    QHash<QString, qsizetype> found;
    for (const auto& [begin, end] : rowsOf(catalogue)) {
        const qsizetype borders = end - (word(begin) + 7) / 8 - 4;
        const qsizetype name = columns["Name"].place;
        const qsizetype nameBegin = begin + word(borders - 2 * name);
        const QByteArray stored = bytes.mid(nameBegin, begin + word(borders - 2 * name - 2) - nameBegin);
        if (word(begin + 2 + columns["Type"].place) == 1)
            found.insert(stored.startsWith("\xff\xfe") ? QString::fromLatin1(stored.mid(2))
                                                       : text(nameBegin, nameBegin + stored.size()),
                         qsizetype(doubleWord(begin + 2 + columns["Id"].place) & 0xffffff) * pageSize);
    }
    return found;
}

void JetMap::addStructure(qsizetype begin, qsizetype end) {
    for (qsizetype place = begin; place < end; ++place)
        structurePlaces.push_back(place);
}

void JetMap::own(const Cell& cell, qsizetype begin, qsizetype end, unsigned bits) {
    for (qsizetype place = begin; place < end; ++place)
        owners.insert(place, {cell, bits});
}

void JetMap::readRow(int table, int row, const QHash<QString, Column>& columns, qsizetype begin,
                     qsizetype end) {
    const qsizetype nulls = end - (word(begin) + 7) / 8;
    const qsizetype borders = nulls - 4; // of the first value; the following ones come before it
    nullPlaces[size_t(table)].push_back(nulls);
    addStructure(begin, begin + 2);
    addStructure(borders - 2 * qsizetype(word(nulls - 2)), end);
    QVariantList& line = values[size_t(table)].emplace_back();
    const auto wanted = PriorTables::all[size_t(table)].columns;
    for (int i = 0; i < int(wanted.size()); ++i) {
        const Column column = columns[wanted[size_t(i)].prior];
        const Cell cell{.table = table, .row = row, .column = i};
        const qsizetype nullAt = nulls + column.number / 8;
        const unsigned nullBit = 1U << column.number % 8;
        own(cell, nullAt, nullAt + 1, nullBit);
        qsizetype valueBegin = begin + 2 + column.place;
        qsizetype valueEnd = valueBegin + column.size;
        if (!column.isFixed) {
            const qsizetype border = borders - 2 * qsizetype(column.place);
            valueBegin = begin + word(border);
            valueEnd = begin + word(border - 2);
            if (column.place > 0) // the first begins after the fixed values
                own(cell, border, border + 2);
            if (column.place + 1 < word(nulls - 2)) // the last ends where the borders begin
                own(cell, border - 2, border);
        }
        const bool isNull = (static_cast<unsigned char>(bytes[nullAt]) & nullBit) == 0;
        line.append(isNull ? QVariant() : readValue(cell, column, valueBegin, valueEnd));
    }
}

QVariant JetMap::readValue(const Cell& cell, const Column& column, qsizetype begin, qsizetype end) {
    own(cell, begin, end);
    if (column.type == memo)
        return readMemo(cell, begin, end);
    if (column.type == wholeNumber)
        return double(number<qint32>(begin));
    return isDateOrDouble(column.type) ? QVariant(number<double>(begin)) : QVariant(text(begin, end));
}

QString JetMap::readMemo(const Cell& cell, qsizetype begin, qsizetype end) {
    constexpr qsizetype head = 12;
    if (begin == end)
        return "";
    const quint32 word = doubleWord(begin);
    if (word & 0x80000000)
        return text(begin + head, end);
    const bool isChained = (word & 0x40000000) == 0;
    if (isChained)
        chained.push_back(begin);
    QString whole;
    for (quint32 place = doubleWord(begin + 4); place != 0;) {
        const qsizetype at = piece(place);
        const qsizetype page = at / pageSize * pageSize;
        const quint32 index = place & 0xffU;
        const qsizetype pieceEnd =
            index == 0 ? page + pageSize : page + (this->word(page + 12 + 2 * qsizetype(index)) & 0x1fff);
        own(cell, at, pieceEnd);
        addStructure(page, page + 14 + 2 * qsizetype(this->word(page + 12)));
        whole += text(isChained ? at + 4 : at, pieceEnd);
        place = isChained ? doubleWord(at) : 0;
    }
    return whole;
}
