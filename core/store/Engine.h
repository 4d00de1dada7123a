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
    int size = 0; // texts: characters; all others: bytes
};

/// A row to be written: column indexes with their values.
using RowValues = QList<std::pair<int, QVariant>>;

/// A running statement. Row keys are the engine's own and mean nothing outside it.
class EngineCursor {
  public:
    virtual ~EngineCursor() = default;
    EngineCursor() = default;
    EngineCursor(const EngineCursor&) = delete;
    EngineCursor& operator=(const EngineCursor&) = delete;

    virtual const QList<ColumnInfo>& columns() const = 0;
    /// Moves to the next row; false after the last.
    virtual bool step() = 0;
    /// Leaves the current row and releases every read lock.
    virtual void rest() = 0;
    /// A column of the row: an integer, a double, a text, or invalid for null.
    virtual QVariant value(int column) const = 0;
    virtual int count() const = 0;

    /// Whether the rows come from a single table and can be changed.
    virtual bool isUpdatable() const = 0;
    virtual qint64 rowKey() const = 0;
    /// The keys of the rows that follow, in order. There is no current row afterwards.
    virtual QList<qint64> followingKeys() = 0;
    /// Moves to the row with this key; false if it is gone.
    virtual bool seek(qint64 row) = 0;
    /// Stores a new row at once and returns its key.
    virtual qint64 insert(const RowValues& values) = 0;
    virtual void update(qint64 row, const RowValues& values) = 0;
    virtual void remove(qint64 row) = 0;
};

/// How to open a statement.
struct StatementOptions {
    QVariantList parameters = {}; // for each ? of the statement, in order
    bool wholeTable = false;      // the text is the name of a table
    bool forChange = false;       // the rows are going to be changed
};

/// An open database of one engine: a file or an office's server. Hides everything that depends on the
/// engine's dialect, types, keys and files. Everything throws DatabaseFault.
class Engine {
  public:
    virtual ~Engine() = default;
    Engine() = default;
    Engine(const Engine&) = delete;
    Engine& operator=(const Engine&) = delete;

    virtual std::unique_ptr<EngineCursor> open(const QString& statement, const StatementOptions& options) = 0;

    /// All writes from begin to commit are atomic; rollback undoes them and never fails.
    virtual void begin() = 0;
    /// Until commit all reads see the data as it is now, and nothing may be written.
    virtual void beginReading() = 0;
    virtual void commit() = 0;
    virtual void rollback() noexcept = 0;

    /// The version number that the schema's author stored.
    virtual int schemaVersion() = 0;
    /// Changes with every write to the data, including those of another instance of the program.
    virtual quint32 changeCounter() = 0;
    /// The counter of changes, and after it the first row of a statement; empty if there is none. An engine a
    /// way off asks once for both, and may repeat its last answer within one event, as long as this program
    /// has written nothing since.
    struct Look {
        quint32 counter = 0;
        QVariantList row = {};
    };
    virtual Look look(const QString& statement, const QVariantList& parameters) {
        Look seen{.counter = changeCounter()}; // first, so that no change is missed
        const auto rows = open(statement, {.parameters = parameters});
        if (rows->step())
            for (int i = 0; i < rows->columns().size(); ++i)
                seen.row.append(rows->value(i));
        return seen;
    }
    /// Whether a table exists.
    virtual bool hasTable(const QString& table) = 0;
    /// Runs a schema script in the caller's transaction and stores the resulting version.
    virtual void runScript(const QString& script, int versionAfter) = 0;
    /// The name of the first view, trigger, virtual table or anything computed (a generated column, an index
    /// of an expression, a check) that has the name of one of these tables or acts on one; empty if there is
    /// none.
    virtual QString foreignPart(const QStringList& tables) = 0;
    /// What a check of the whole file finds wrong; empty if it is sound. A thorough check also compares the
    /// indexes with the rows and takes several times as long.
    enum class Check { Quick, Thorough };
    virtual QString findDamage(Check check) = 0;
    /// Fails any statement still running this long from now, so that a hostile file cannot hang the program;
    /// 0 removes the limit.
    virtual void limitTime(int milliseconds) = 0;
    // What only a file has; an office throws DatabaseFault.
    /// Copies a snapshot of all data to a file that is empty or does not exist yet.
    virtual void copyTo(const QString& path) = 0;
    /// Replaces all data with those of another engine of the same kind in one write: a kill leaves either the
    /// old or the new.
    virtual void replaceBy(Engine& other) = 0;
};
