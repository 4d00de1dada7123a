#pragma once

#include "core/store/Engine.h"

#include <QDateTime>
#include <QHash>
#include <QString>
#include <QVariant>

#include <memory>

/// One database, closed until Open. Closes itself.
class Connection {
  public:
    /// Parameters by the names of the data layer: "Provider", "Mode", "Data Source" and the password.
    void setProperty(const QString& name, const QString& value);
    /// All parameters as one text. It holds the password.
    QString ConnectionString() const;
    QString dataSource() const { return properties.value(QStringLiteral("Data Source")); }

    /// How long Open and all that follows wait for another copy of the program that is saving.
    void setBusyTimeout(int milliseconds) { busyMilliseconds = milliseconds; }

    /// Lets Open open the data for reading alone, such as those of a copy or of someone else.
    void setReadOnly() { readOnly = true; }

    /// Opens the data, which must exist, for reading and writing. Throws DatabaseFault.
    void Open();
    void Close() { opened.reset(); }
    bool IsOpen() const { return opened != nullptr; }

    /// The engine of an open connection. Throws DatabaseFault 3709 when it is closed.
    Engine& engine() const;

  private:
    std::unique_ptr<Engine> opened;
    QHash<QString, QString> properties;
    int busyMilliseconds = 4000;
    bool readOnly = false;
};

/// Makes all writes over an open connection one: they stand together once Commit returns, and are taken back
/// when the object goes without it. The connection must outlive it. Throws DatabaseFault.
class Transaction {
  public:
    /// What only reads sees one moment of the data, and hinders no other reader.
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
    void Commit() {
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
        /// Text; an empty one for null. Numbers as people read them, in their shortest form.
        QString text() const;
        /// A number, 0 for null. Throws Fault 13 when the column holds other text.
        double number() const;
        bool boolean() const;
        QDateTime dateTime() const;
        /// The day of a moment; an invalid one for null. It costs an eighth of the moment.
        QDate date() const;
        /// The longest text that the column takes, as declared.
        int DefinedSize() const;
        /// Whether the column holds texts or moments, not numbers.
        bool takesText() const;
        bool takesFractions() const;

        Field& operator=(const QString& text);
        Field& operator=(const char* text); // which would otherwise be taken for a Boolean
        Field& operator=(double number);
        Field& operator=(int number);
        Field& operator=(bool flag);
        Field& operator=(const QDateTime& moment);
        void setNull() { assign({}); }
        /// The value as the engine holds it, invalid for null, for what copies rows as they are.
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

    /// Runs a statement, or opens a whole table, and stands on the first row. The rows of a keyset cursor and
    /// of a table can be changed. Throws DatabaseFault, with number 3709 when the connection is not open.
    void Open(const QString& source, const Connection& connection,
              CursorType cursor = CursorType::ForwardOnly, CommandType command = CommandType::Text);
    /// The same for a statement with a value for each of its ?: numbers, texts, days.
    void Open(const QString& source, const Connection& connection, const QVariantList& parameters,
              CursorType cursor = CursorType::ForwardOnly);
    void Close();

    /// True when there is no current row.
    bool AtEnd() const { return !onRow; }
    void MoveNext();
    int RecordCount() const { return cursor->count(); }
    /// The names of the columns, in the order of the table or statement.
    QStringList columnNames() const;
    /// A column by name, in any case. Throws DatabaseFault 3265 for an unknown name.
    Field operator[](const QString& name);

    /// Starts a new row, which Update stores and makes the current one.
    void AddNew();
    /// Stores the assigned columns in one write. What it stored survives a kill of the program and a power
    /// cut.
    void Update();
    /// Deletes the current row.
    void Delete();

  private:
    void step();
    void letGo();
    QVariant value(int column) const;
    int columnIndex(const QString& name) const;
    void requireRow() const;

    std::unique_ptr<EngineCursor> cursor;
    bool onRow = false;
    bool deleted = false; // the current row, by Delete
    bool resting = false; // the reading was given up for a write; the current row is in stored
    int position = 0;     // of the current row, from 0
    bool adding = false;
    qint64 rowKey = 0;
    QHash<int, QVariant> assigned; // columns that the next Update stores
    QHash<int, QVariant> stored;   // columns of the current row that an Update changed
};
