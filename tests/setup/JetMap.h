#pragma once

#include <QByteArray>
#include <QHash>
#include <QSet>
#include <QString>
#include <QVariant>

#include <array>
#include <vector>

/// A small second reader of the earlier program's files that shares no code with the program's. It assumes a
/// sound version 4 file without compressed texts, and knows for every byte which values it belongs to.
class JetMap {
  public:
    explicit JetMap(QByteArray file);

    /// A value, identified by the indices of its table, row and column in PriorTables.
    struct Cell {
        int table = 0;
        int row = 0;
        int column = 0;
        bool operator==(const Cell&) const = default;
    };

    /// A null, a double or a text.
    QVariant value(const Cell& cell) const {
        return values[size_t(cell.table)][size_t(cell.row)][cell.column];
    }
    /// By table and row.
    const std::array<std::vector<QVariantList>, 5>& rows() const { return values; }

    /// Whether a value may change when the byte at a place is changed by the bits of a mask: the byte is part
    /// of the value or of one of its borders, or the mask contains its null bit.
    bool belongs(qsizetype place, unsigned changed, const Cell& cell) const;

    /// The offset of a table's definition.
    qsizetype definition(int table) const { return definitions[size_t(table)]; }
    /// The offset of a row.
    qsizetype row(int table, int index) const { return rowPlaces[size_t(table)][size_t(index)]; }
    /// The offset of a row's null bits.
    qsizetype nulls(int table, int index) const { return nullPlaces[size_t(table)][size_t(index)]; }
    /// The offsets of the memos stored as a chain of pieces: of their 12-byte heads.
    const std::vector<qsizetype>& chainedMemos() const { return chained; }
    /// The offset of a piece of a memo.
    qsizetype piece(quint32 place) const;
    /// The offsets of the bytes that locate values: those of the definitions, the row tables of each page,
    /// and the heads and ends of the rows.
    const std::vector<qsizetype>& structure() const { return structurePlaces; }

    quint16 word(qsizetype at) const { return number<quint16>(at); }
    quint32 doubleWord(qsizetype at) const { return number<quint32>(at); }

  private:
    struct Column {
        int type = 0;
        bool isFixed = false;
        int number = 0;
        int place = 0;
        int size = 0;
    };
    struct Owner {
        Cell cell;
        unsigned bits = 0xff;
    };

    template<typename Number>
    Number number(qsizetype at) const {
        Number value;
        memcpy(&value, bytes.constData() + at, sizeof value);
        return value;
    }
    QString text(qsizetype begin, qsizetype end) const;
    QHash<QString, Column> columnsOf(qsizetype definition) const;
    /// The rows of a table: the begin and end of each.
    std::vector<std::pair<qsizetype, qsizetype>> rowsOf(qsizetype definition) const;
    QHash<QString, qsizetype> tables() const;
    void readRow(int table, int row, const QHash<QString, Column>& columns, qsizetype begin, qsizetype end);
    QVariant readValue(const Cell& cell, const Column& column, qsizetype begin, qsizetype end);
    QString readMemo(const Cell& cell, qsizetype begin, qsizetype end);
    void addStructure(qsizetype begin, qsizetype end);
    void own(const Cell& cell, qsizetype begin, qsizetype end, unsigned bits = 0xff);

    QByteArray bytes;
    std::array<std::vector<QVariantList>, 5> values;
    std::array<qsizetype, 5> definitions{};
    std::array<std::vector<qsizetype>, 5> rowPlaces;
    std::array<std::vector<qsizetype>, 5> nullPlaces;
    std::vector<qsizetype> chained;
    std::vector<qsizetype> structurePlaces;
    QMultiHash<qsizetype, Owner> owners;
};
