#pragma once

#include "core/base/ServerAddress.h"
#include "core/store/Engine.h"

#include <QDateTime>
#include <QHash>
#include <QString>
#include <QVariant>

#include <memory>
#include <optional>

/// One database, closed until Open is called. Closes itself.
class Connection {
  public:
    /// Parameters with the data layer's names: "Provider", "Mode", "Data Source" and the password.
    void setProperty(const QString& name, const QString& value);
    /// All parameters in one text, with the password of a file but without one in the address of an office.
    QString connectionString() const;
    QString dataSource() const { return properties.value(QStringLiteral("Data Source")); }
    /// Whether the data are in an office's database rather than a file; the data source is then its address.
    bool isOffice() const { return ServerAddress::isServer(dataSource()); }

    /// How long Open and later calls wait while another instance of the program saves.
    void setBusyTimeout(int milliseconds) { busyMilliseconds = milliseconds; }

    /// Makes Open read-only, for data such as a copy or somebody else's file.
    void setReadOnly() { readOnly = true; }

    /// Opens the data for reading and writing; a file must exist. Throws DatabaseFault.
    void Open();
    void Close() { opened.reset(); }
    bool isOpen() const { return opened != nullptr; }

    /// The engine of an open connection. Throws DatabaseFault 3709 if it is closed.
    Engine& engine() const;

  private:
    std::unique_ptr<Engine> opened;
    QHash<QString, QString> properties;
    int busyMilliseconds = 4000;
    bool readOnly = false;
};

/// Makes all writes over an open connection atomic: Commit keeps them, and destruction without it rolls them
/// back. The connection must outlive the object. Throws DatabaseFault.
class Transaction {
  public:
    /// A transaction that only reads sees a snapshot and does not block other readers.
    enum class For { Writing, Reading };
    explicit Transaction(const Connection& connection, For purpose = For::Writing)
        : engine(connection.engine()) {
        if (purpose == For::Writing)
            engine.begin();
        else
            engine.beginReading();
    }
    ~Transaction() {
        if (!committed)
            engine.rollback();
    }
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    void commit() {
        engine.commit();
        committed = true;
    }

  private:
    Engine& engine;
    bool committed = false;
};

enum class CursorType { ForwardOnly = 0, Keyset = 1 };
enum class CommandType { Text = 1, Table = 2 };

/// The rows of a query or a table, one at a time. Closes itself; the connection must outlive it.
class Recordset {
  public:
    /// A column of the current row.
    class Field {
      public:
        bool isNull() const;
        /// As text; empty for null. Numbers are in their shortest form for people to read.
        QString text() const;
        /// As a number, 0 for null. Throws Fault 13 if the column holds any other text.
        double number() const;
        bool boolean() const;
        QDateTime dateTime() const;
        /// The day of a moment; invalid for null. Costs an eighth of reading the moment.
        QDate date() const;
        /// The column's maximum text length, as declared.
        int DefinedSize() const;
        /// Whether the column holds texts or moments rather than numbers.
        bool takesText() const;
        bool takesFractions() const;
        bool takesMoments() const;

        Field& operator=(const QString& text);
        Field& operator=(const char* text); // would otherwise convert to bool
        Field& operator=(double number);
        Field& operator=(int number);
        Field& operator=(bool flag);
        Field& operator=(const QDateTime& moment);
        void setNull() { assign({}); }
        /// The value as the engine holds it, invalid for null; for code that copies rows unchanged.
        QVariant stored() const;
        void setStored(const QVariant& value) { assign(value); }

      private:
        friend class Recordset;
        Field(Recordset& owner, int column) : recordset(owner), index(column) {}
        void assign(const QVariant& value);
        const ColumnInfo& column() const;
        Recordset& recordset;
        int index;
    };

    /// Runs a statement, or opens a whole table, and moves to the first row. The rows of a keyset cursor and
    /// of a table can be changed. Throws DatabaseFault, number 3709 if the connection is closed.
    void Open(const QString& source, const Connection& connection,
              CursorType cursor = CursorType::ForwardOnly, CommandType command = CommandType::Text);
    /// The same for a statement with a value for each ?: numbers, texts, days.
    void Open(const QString& source, const Connection& connection, const QVariantList& parameters,
              CursorType cursor = CursorType::ForwardOnly);
    void Close();

    /// True if there is no current row.
    bool atEnd() {
        look();
        return !onRow;
    }
    void moveNext();
    int RecordCount() const { return cursor->count(); }
    /// Column names, in the order of the table or statement.
    QStringList columnNames() const;
    /// A column by name, ignoring case. Throws DatabaseFault 3265 for an unknown name.
    Field operator[](const QString& name);

    /// Starts a new row, which Update stores and makes current.
    void AddNew();
    /// Stores the assigned columns in one write. Once stored, they survive a kill of the program and a power
    /// cut.
    void Update();
    /// Deletes the current row.
    void Delete();

  private:
    void look();
    void step();
    void letGo();
    /// The value of a column among some; null if it is not one of them.
    static const QVariant* find(const RowValues& values, int column);
    QVariant value(int column);
    int columnIndex(const QString& name) const;
    void requireRow();

    std::unique_ptr<EngineCursor> cursor;
    bool unread = false; // whether the first row of a table was not looked for yet
    bool onRow = false;
    bool deleted = false; // whether Delete has removed the current row
    bool resting = false; // whether the read was released for a write; the current row is then in `stored`
    bool adding = false;
    qint64 rowKey = 0;
    RowValues assigned;                     // columns that the next Update stores
    RowValues stored;                       // columns of the current row that have a value
    std::optional<QList<qint64>> following; // keys of the rows after this one, since the first write
    qsizetype next = 0;                     // among them
};
