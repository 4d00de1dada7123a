#pragma once

#include <QDateTime>
#include <QHash>
#include <QString>
#include <QVariant>

#include <memory>

struct sqlite3;
struct sqlite3_stmt;

/// One database file, closed until Open. Closes itself.
class Connection {
  public:
    Connection();
    ~Connection();
    Connection(Connection&& other) noexcept;
    Connection& operator=(Connection&& other) noexcept;
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    /// Parameters by the names of the data layer: "Provider", "Mode", "Data Source" and the password.
    void setProperty(const QString& name, const QString& value);
    /// All parameters as one text. It holds the password.
    QString ConnectionString() const;
    QString dataSource() const { return properties.value(QStringLiteral("Data Source")); }

    /// Opens the file for reading and writing; it must exist. Throws DatabaseFault.
    void Open();
    void Close();
    bool IsOpen() const { return handle != nullptr; }

  private:
    friend class Recordset;
    sqlite3* handle = nullptr;
    QHash<QString, QString> properties;
};

enum class CursorType { ForwardOnly = 0, Keyset = 1 };
enum class LockType { Optimistic = 3, BatchOptimistic = 4 };
enum class CommandType { Text = 1, Table = 2 };

/// The rows of a query or a table, one at a time. Closes itself; the connection must outlive it.
class Recordset {
  public:
    /// A column of the current row.
    class Field {
      public:
        bool isNull() const;
        /// Text; an empty one for null. Numbers in their shortest decimal form.
        QString text() const;
        /// A number, 0 for null. Throws Fault 13 when the column holds other text.
        double number() const;
        bool boolean() const;
        QDateTime dateTime() const;
        /// The day of a moment; an invalid one for null. It costs an eighth of the moment.
        QDate date() const;
        /// The longest text that the column takes, as declared.
        int DefinedSize() const;

        Field& operator=(const QString& text);
        Field& operator=(const char* text); // which would otherwise be taken for a Boolean
        Field& operator=(double number);
        Field& operator=(int number);
        Field& operator=(bool flag);
        Field& operator=(const QDateTime& moment);

      private:
        friend class Recordset;
        Field(Recordset& owner, int column) : recordset(owner), index(column) {}
        void assign(const QVariant& value);
        Recordset& recordset;
        int index;
    };

    Recordset();
    ~Recordset();
    Recordset(const Recordset&) = delete;
    Recordset& operator=(const Recordset&) = delete;

    /// Runs a statement, or opens a whole table, and stands on the first row.
    /// Throws DatabaseFault, with number 3709 when the connection is not open.
    void Open(const QString& source, Connection& connection, CursorType cursor = CursorType::ForwardOnly,
              LockType lock = LockType::Optimistic, CommandType command = CommandType::Text);
    void Close();

    /// True when there is no current row.
    bool AtEnd() const { return !onRow; }
    void MoveFirst();
    void MoveNext();
    int RecordCount();
    /// A column by name, in any case. Throws DatabaseFault 3265 for an unknown name.
    Field operator[](const QString& name);

    /// Starts a new row, which Update stores and makes the current one.
    void AddNew();
    /// Stores the assigned columns. What it stored survives a kill of the program and a power cut.
    void Update();
    /// Deletes the current row.
    void Delete();

  private:
    struct Column {
        QString name;
        QString declaredType;
    };

    void step();
    void letGo();
    QVariant value(int column) const;
    int columnIndex(const QString& name) const;
    void requireRow() const;

    sqlite3* database = nullptr;
    sqlite3_stmt* statement = nullptr;
    QString table;      // whose rows can be changed; empty when the statement is not of that kind
    QString countQuery; // the statement, for RecordCount
    QList<Column> columns;
    bool onRow = false;
    bool deleted = false; // the current row, by Delete
    bool resting = false; // the statement was reset for a write; the current row is in stored
    int position = 0;     // of the current row, from 0
    bool adding = false;
    qint64 rowId = 0;
    QHash<int, QVariant> assigned; // columns that the next Update stores
    QHash<int, QVariant> stored;   // columns of the current row that an Update changed
};
