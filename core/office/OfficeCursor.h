#pragma once

#include "core/office/OfficeSession.h"
#include "core/store/JetSql.h"

/// What a cursor runs.
struct OfficeQuery {
    JetStatement statement;
    QVariantList parameters;
    bool wholeTable = false;
    bool forChange = false;
};

/// A value of a server's answer as the program holds it: a whole number, a double, a text, or invalid for
/// null.
QVariant officeValue(const Postgres::Result& result, int row, int column);

/// The rows of a statement. The rows of a whole table come in pages, the first when it is
/// wanted; those of any other all at once.
class OfficeCursor final : public EngineCursor {
  public:
    OfficeCursor(OfficeSession& session, const OfficeQuery& query);

    const QList<ColumnInfo>& columns() const override { return names; }
    bool step() override;
    void rest() override {}
    QVariant value(int column) const override;
    int count() const override;
    bool isUpdatable() const override { return !table.isEmpty(); }
    qint64 rowKey() const override;
    QList<qint64> followingKeys() override;
    bool seek(qint64 row) override;
    qint64 insert(const RowValues& values) override;
    void update(qint64 row, const RowValues& values) override;
    void remove(qint64 row) override;

  private:
    Postgres::Result page(std::optional<qint64> after) const;
    Postgres::Result all(const OfficeQuery& query) const;
    void readNames();
    void readNamesOfTable();
    void holdVersion();
    QString condition(qint64 row, QVariantList& parameters) const;
    void requireWritten(const Postgres::Result& result) const;
    qint64 insertQueued(const QByteArray& columnNames, const QByteArray& marks, QVariantList parameters);
    QString lockedRows() const;

    OfficeSession& session;
    QString table; // the table whose rows can be changed; empty for other statements
    bool paged = false;
    bool forChange = false;
    int pageSize;
    QList<ColumnInfo> names;
    QList<int> places; // of the columns among those of the result
    int keyPlace = -1; // of the row key among them
    QString source;    // what counts the rows
    QVariantList sourceParameters;
    Postgres::Result result; // the page of the statement, or the row that was sought
    bool begun = false;      // whether the first page was read
    bool sought = false;
    int row = -1;           // in the result
    qint64 heldRow = 0;     // the row that can be changed, and its version when it was read
    QString heldVersion;    // empty for a new row, which nobody else sees yet
    QList<qint64> freeKeys; // for rows that are queued
    qsizetype inserted = 0;
};
