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

/// Parses the helper's output as it arrives.
class Reader {
  public:
    explicit Reader(PriorRows& target) : rows(target) {}

    void take(const QByteArray& bytes) {
        if (bytes.size() > left) // it may no longer be under our control
            damaged();
        left -= bytes.size();
        waiting += bytes;
        position = 0;
        while (position < waiting.size() && takeMark())
            continue;
        waiting.remove(0, position);
    }

    /// Throws DatabaseFault if the helper stopped early.
    void finish() const {
        if (!finished)
            damaged();
    }

  private:
    bool hasArrived(qsizetype size) const { return size <= waiting.size() - position; }

    template<typename Number>
    Number numberAt(qsizetype place) const {
        Number value;
        std::memcpy(&value, waiting.constData() + position + place, sizeof value);
        return value;
    }

    /// Consumes a mark and everything that belongs to it; false if it has not fully arrived.
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
        if (!hasArrived(1 + sizeof(std::uint32_t)))
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
        if (!hasArrived(1 + sizeof(double)))
            return false;
        const auto number = numberAt<double>(1);
        if (!std::isfinite(number))
            unreadable(
                QCoreApplication::translate("PriorFile", "The prior database holds a number that is none."));
        addValue(number);
        position += 1 + sizeof(double);
        return true;
    }

    /// The text after a mark, at an offset from the current position; nothing if it has not fully arrived.
    std::optional<QString> textAt(qsizetype place) const {
        constexpr qsizetype head = 1 + sizeof(std::uint32_t);
        if (!hasArrived(place + head))
            return std::nullopt;
        const qsizetype size = numberAt<std::uint32_t>(place + 1);
        if (!hasArrived(place + head + size))
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

    /// The helper may report a failure instead of any mark.
    bool takeFailure() const {
        const std::optional<QString> why = textAt(1 + sizeof(std::int32_t));
        if (!why)
            return false;
        throw DatabaseFault(numberAt<std::int32_t>(1), why->toStdString());
    }

    PriorRows& rows;
    PriorRows::Table* table = nullptr; // the one being read
    size_t begun = 0;                  // tables started
    qsizetype columns = 0;             // of the current table
    bool finished = false;
    QByteArray waiting; // incomplete input, waiting for the rest
    qsizetype position = 0;
    qsizetype left = PriorTables::largestOutput + PriorTables::roomForFailure;
};

QString programOf(const PriorHelper& helper) {
    return helper.program.isEmpty()
               ? QCoreApplication::applicationDirPath() + QStringLiteral("/brennoval-prior")
               : helper.program;
}

/// Runs the helper on the file and feeds its output to the reader.
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

void setPriorHelper(const PriorHelper& helper) {
    installedHelper() = helper;
}

void readPriorFile(const QString& path, PriorRows& rows) {
    if (!QFileInfo(path).isFile())
        unreadable(QStringLiteral("Could not find file '%1'.").arg(path));
    Reader reader(rows);
    run(installedHelper(), path, reader);
    reader.finish();
}
