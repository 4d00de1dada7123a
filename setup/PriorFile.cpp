#include "setup/PriorFile.h"

#include "core/base/Fault.h"
#include "core/base/Numbers.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QFileInfo>
#include <QProcess>
#include <QTimer>

#include <cmath>
#include <cstring>
#include <exception>
#include <optional>

namespace {

PriorHelper& installedHelper() {
    static PriorHelper helper;
    return helper;
}

[[noreturn]] void unreadable(const QString& why) {
    throw DatabaseFault(DatabaseFault::Unspecified, why.toStdString());
}

[[noreturn]] void damaged() {
    unreadable(QCoreApplication::translate("PriorFile", "The prior database is damaged."));
}

/// Takes apart what the helper writes, as it comes.
class Reader {
  public:
    explicit Reader(PriorRows& target) : rows(target) {}

    void take(const QByteArray& bytes) {
        if (bytes.size() > left) // it may be the helper's own work no longer
            damaged();
        left -= bytes.size();
        waiting += bytes;
        position = 0;
        while (position < waiting.size() && takeMark())
            continue;
        waiting.remove(0, position);
    }

    /// Throws DatabaseFault when the helper came to an end of its own.
    void finish() const {
        if (!finished)
            damaged();
    }

  private:
    bool hasCome(qsizetype size) const { return size <= waiting.size() - position; }

    template<typename Number>
    Number numberAt(qsizetype place) const {
        Number value;
        std::memcpy(&value, waiting.constData() + position + place, sizeof value);
        return value;
    }

    /// Takes a mark and all that belongs to it; false when not all of that has come.
    bool takeMark() {
        switch (waiting[position]) {
        case PriorTables::TableBegins:
            return takeTable();
        case PriorTables::RowBegins:
            beginRow();
            return true;
        case PriorTables::NullValue:
            addValue({});
            ++position;
            return true;
        case PriorTables::NumberValue:
            return takeNumber();
        case PriorTables::TextValue:
            return takeText();
        case PriorTables::FailureFollows:
            return takeFailure();
        case PriorTables::Finished:
            finished = isRowWhole() && begun == rows.tables.size() && position + 1 == waiting.size();
            if (!finished)
                damaged();
            ++position;
            return true;
        default:
            damaged();
        }
    }

    bool isRowWhole() const { return !table || table->rows.empty() || table->rows.back().size() == columns; }

    bool takeTable() {
        if (!hasCome(1 + sizeof(std::uint32_t)))
            return false;
        if (!isRowWhole() || begun == rows.tables.size())
            damaged();
        table = &rows.tables[begun];
        columns = static_cast<qsizetype>(PriorTables::all[begun++].columns.size());
        table->announced = static_cast<std::uint32_t>(ToInt16(numberAt<std::uint32_t>(1)));
        position += 1 + sizeof(std::uint32_t);
        return true;
    }

    void beginRow() {
        if (!table || !isRowWhole() || table->rows.size() == table->announced)
            damaged();
        table->rows.emplace_back().reserve(columns);
        ++position;
    }

    void addValue(const QVariant& value) {
        if (!table || table->rows.empty() || table->rows.back().size() == columns)
            damaged();
        table->rows.back().append(value);
    }

    bool takeNumber() {
        if (!hasCome(1 + sizeof(double)))
            return false;
        const auto number = numberAt<double>(1);
        if (!std::isfinite(number))
            unreadable(
                QCoreApplication::translate("PriorFile", "The prior database holds a number that is none."));
        addValue(number);
        position += 1 + sizeof(double);
        return true;
    }

    /// A text behind its mark, at a place from here; nothing when not all of it has come.
    std::optional<QString> textAt(qsizetype place) const {
        constexpr qsizetype head = 1 + sizeof(std::uint32_t);
        if (!hasCome(place + head))
            return std::nullopt;
        const qsizetype size = numberAt<std::uint32_t>(place + 1);
        if (size > static_cast<qsizetype>(PriorTables::largestOutput))
            damaged();
        if (!hasCome(place + head + size))
            return std::nullopt;
        return QString::fromUtf8(waiting.constData() + position + place + head, size);
    }

    bool takeText() {
        const std::optional<QString> text = textAt(0);
        if (!text)
            return false;
        addValue(*text);
        position += 1 + sizeof(std::uint32_t) + numberAt<std::uint32_t>(1);
        return true;
    }

    /// The helper can tell of a failure in the place of any mark.
    bool takeFailure() const {
        const std::optional<QString> why = textAt(1 + sizeof(std::int32_t));
        if (!why)
            return false;
        throw DatabaseFault(numberAt<std::int32_t>(1), why->toStdString());
    }

    PriorRows& rows;
    PriorRows::Table* table = nullptr; // that is being read
    size_t begun = 0;                  // tables
    qsizetype columns = 0;             // of the table
    bool finished = false;
    QByteArray waiting; // for the rest of what it belongs to
    qsizetype position = 0;
    qsizetype left = PriorTables::largestOutput + PriorTables::roomForFailure;
};

QString programOf(const PriorHelper& helper) {
    return helper.program.isEmpty()
               ? QCoreApplication::applicationDirPath() + QStringLiteral("/brennoval-prior")
               : helper.program;
}

/// Lets the helper read the file, and the reader what it writes.
void run(const PriorHelper& helper, const QString& path, Reader& reader) {
    QProcess process;
    QEventLoop loop;
    QTimer silence;
    silence.setSingleShot(true);
    std::exception_ptr failure;
    const auto take = [&] {
        try {
            reader.take(process.readAllStandardOutput());
        } catch (...) { // no exception may pass through the event loop
            failure = std::current_exception();
            loop.quit();
        }
    };
    QObject::connect(&process, &QProcess::finished, &loop, &QEventLoop::quit);
    QObject::connect(&process, &QProcess::errorOccurred, &loop, &QEventLoop::quit);
    QObject::connect(&silence, &QTimer::timeout, &loop, &QEventLoop::quit);
    QObject::connect(&process, &QProcess::readyReadStandardOutput, &loop, [&] {
        silence.start(helper.longestSilence);
        if (!failure)
            take();
    });
    QTimer::singleShot(helper.longestRun, &loop, &QEventLoop::quit);
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(programOf(helper), {path});
    silence.start(helper.longestSilence);
    if (process.state() != QProcess::NotRunning)
        loop.exec(QEventLoop::ExcludeUserInputEvents);
    if (process.error() == QProcess::FailedToStart)
        throw Fault(
            Fault::InternalError,
            QCoreApplication::translate("PriorFile", "The program that reads prior data cannot be started.")
                .toStdString());
    const bool inTime = process.state() == QProcess::NotRunning;
    if (!inTime) {
        process.kill();
        process.waitForFinished();
    }
    if (inTime && !failure)
        take();
    if (failure)
        std::rethrow_exception(failure);
    if (!inTime)
        unreadable(QCoreApplication::translate("PriorFile", "The prior database could not be read in time."));
}

} // namespace

void SetPriorHelper(const PriorHelper& helper) {
    installedHelper() = helper;
}

void ReadPriorFile(const QString& path, PriorRows& rows) {
    if (!QFileInfo(path).isFile())
        unreadable(QStringLiteral("Could not find file '%1'.").arg(path));
    Reader reader(rows);
    run(installedHelper(), path, reader);
    reader.finish();
}
