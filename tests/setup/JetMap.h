#pragma once

#include <QByteArray>
#include <QHash>
#include <QSet>
#include <QString>
#include <QVariant>

#include <array>
#include <vector>

/// A second, small reader of the earlier program's files, which shares nothing with the program's: it takes a
/// sound file of version 4 without compressed texts for granted, and tells of every byte which values it is
/// part of.
class JetMap {
  public:
    explicit JetMap(QByteArray file);

    /// A value by the places of its table, row and column in PriorTables.
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

    /// Whether a value may read otherwise when the byte at a place is changed by the bits of a mask: the byte
    /// belongs to it, is one of its borders, or the bit of its null is among them.
    bool belongs(qsizetype place, unsigned changed, const Cell& cell) const;

    /// Where the definition of a table begins.
    qsizetype definition(int table) const { return definitions[size_t(table)]; }
    /// Where a row begins.
    qsizetype row(int table, int index) const { return rowPlaces[size_t(table)][size_t(index)]; }
    /// The places of the memos that stand in a chain of pieces: of their heads of 12 bytes.
    const std::vector<qsizetype>& chainedMemos() const { return chained; }
    /// Where a piece of a memo begins.
    qsizetype piece(quint32 place) const;

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
    /// The rows of a table: where each begins and ends.
    std::vector<std::pair<qsizetype, qsizetype>> rowsOf(qsizetype definition) const;
    QHash<QString, qsizetype> tables() const;
    void readRow(int table, int row, const QHash<QString, Column>& columns, qsizetype begin, qsizetype end);
    QVariant readValue(const Cell& cell, const Column& column, qsizetype begin, qsizetype end);
    QString readMemo(const Cell& cell, qsizetype begin, qsizetype end);
    void own(const Cell& cell, qsizetype begin, qsizetype end, unsigned bits = 0xff);

    QByteArray bytes;
    std::array<std::vector<QVariantList>, 5> values;
    std::array<qsizetype, 5> definitions{};
    std::array<std::vector<qsizetype>, 5> rowPlaces;
    std::vector<qsizetype> chained;
    QMultiHash<qsizetype, Owner> owners;
};
