#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <memory>

/// What a column holds.
struct ColumnInfo {
    enum class Kind { Text, Memo, Double, Integer, SmallInteger, Boolean, Moment, Unknown };
    QString name;
    Kind kind = Kind::Unknown;
    int size = 0; // of a text, in characters; of all else, in bytes
};

/// A column of a row to be written, by its place, and its value.
using RowValues = QList<std::pair<int, QVariant>>;

/// A statement that runs. The keys of rows are the engine's own and mean nothing outside of it.
class EngineCursor {
  public:
    virtual ~EngineCursor() = default;
    EngineCursor() = default;
    EngineCursor(const EngineCursor&) = delete;
    EngineCursor& operator=(const EngineCursor&) = delete;

    virtual const QList<ColumnInfo>& columns() const = 0;
    /// Goes to the next row; false behind the last.
    virtual bool step() = 0;
    /// Goes back before the first row and gives up every lock that the reading holds.
    virtual void rewind() = 0;
    /// A column of the row: a whole number, a double, a text, or nothing for null.
    virtual QVariant value(int column) const = 0;
    virtual int count() const = 0;

    /// Whether the rows are those of one table and can be changed.
    virtual bool isUpdatable() const = 0;
    virtual qint64 rowKey() const = 0;
    /// Stores a new row at once; its key.
    virtual qint64 insert(const RowValues& values) = 0;
    virtual void update(qint64 row, const RowValues& values) = 0;
    virtual void remove(qint64 row) = 0;
};

/// How a statement is to be opened.
struct StatementOptions {
    QVariantList parameters = {}; // for each ? of the statement, in order
    bool wholeTable = false;      // the text is the name of a table
    bool forChange = false;       // the rows are going to be changed
};

/// An open database of one engine. What depends on the engine's dialect, types, keys and files stands behind
/// this. Everything throws DatabaseFault.
class Engine {
  public:
    virtual ~Engine() = default;
    Engine() = default;
    Engine(const Engine&) = delete;
    Engine& operator=(const Engine&) = delete;

    virtual std::unique_ptr<EngineCursor> open(const QString& statement, const StatementOptions& options) = 0;

    /// From begin to commit all writes are one: they stand together, or rollback takes them all back, which
    /// never fails.
    virtual void begin() = 0;
    /// From here to commit all reading sees the data as they stand now, and nothing is written.
    virtual void beginReading() = 0;
    virtual void commit() = 0;
    virtual void rollback() noexcept = 0;

    /// The number that the schema's author has stored with the data.
    virtual int schemaVersion() = 0;
    /// A number that every write to the data changes, also one of another copy of the program.
    virtual quint32 changeCounter() = 0;
    /// Whether a table stands.
    virtual bool hasTable(const QString& table) = 0;
    /// Runs a script of the schema in the transaction that the caller has begun, and stores the version that
    /// it makes.
    virtual void runScript(const QString& script, int versionAfter) = 0;
    /// The name of the first view, trigger, virtual table or computed column that stands under one of some
    /// tables' names or acts on one; an empty text when there is none. What computes can take any time and
    /// room.
    virtual QString foreignPart(const QStringList& tables) = 0;
    /// What a check of all that is stored finds wrong; an empty text when it is sound. A thorough one also
    /// compares the indexes with the rows, which takes several times as long.
    enum class Check { Quick, Thorough };
    virtual QString findDamage(Check check) = 0;
    /// Ends a statement that still runs so long from now with a fault, so that a hostile file cannot hold the
    /// program up; 0 takes the limit away.
    virtual void limitTime(int milliseconds) = 0;
    /// Copies the whole data, as they stand at one moment, into a file that is empty or not there yet.
    virtual void copyTo(const QString& path) = 0;
    /// Replaces the whole data by those of another engine of the same kind, in one write: a kill leaves the
    /// one or the other.
    virtual void replaceBy(Engine& other) = 0;
};
