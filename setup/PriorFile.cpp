#include "setup/PriorFile.h"

#include "core/base/Fault.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QFileInfo>
#include <QProcess>
#include <QTimer>

#include <cmath>
#include <cstring>

namespace {

PriorHelper& installedHelper() {
    static PriorHelper helper;
    return helper;
}

[[noreturn]] void unreadable(const QString& why) {
    throw DatabaseFault(DatabaseFault::Unspecified, why.toStdString());
}

/// Lets the helper read the file; what it wrote, whole or not.
QByteArray outputOf(const PriorHelper& helper, const QString& path) {
    QProcess process;
    QByteArray output;
    QEventLoop loop;
    QTimer silence;
    silence.setSingleShot(true);
    QObject::connect(&process, &QProcess::finished, &loop, &QEventLoop::quit);
    QObject::connect(&process, &QProcess::errorOccurred, &loop, &QEventLoop::quit);
    QObject::connect(&silence, &QTimer::timeout, &loop, &QEventLoop::quit);
    QObject::connect(&process, &QProcess::readyReadStandardOutput, &loop, [&] {
        output += process.readAllStandardOutput();
        silence.start(helper.longestSilence);
    });
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(helper.program.isEmpty()
                      ? QCoreApplication::applicationDirPath() + QStringLiteral("/brennoval-prior")
                      : helper.program,
                  {path});
    silence.start(helper.longestSilence);
    if (process.state() != QProcess::NotRunning)
        loop.exec(QEventLoop::ExcludeUserInputEvents);
    if (process.error() == QProcess::FailedToStart)
        throw Fault(
            Fault::InternalError,
            QCoreApplication::translate("PriorFile", "The program that reads prior data cannot be started.")
                .toStdString());
    if (process.state() != QProcess::NotRunning) {
        process.kill();
        process.waitForFinished();
        unreadable(QCoreApplication::translate("PriorFile", "The prior database could not be read in time."));
    }
    return output + process.readAllStandardOutput();
}

/// Takes apart what the helper wrote.
class Reader {
  public:
    explicit Reader(const QByteArray& written) : bytes(written) {}

    void readInto(PriorRows& rows) {
        PriorRows::Table* table = nullptr;
        size_t begun = 0;
        for (char mark = this->mark(); mark != PriorTables::Finished; mark = this->mark()) {
            if (mark == PriorTables::TableBegins && begun < rows.tables.size()) {
                table = &rows.tables[begun];
                columns = PriorTables::all[begun++].columns.size();
                table->announced = number<std::uint32_t>();
            } else if (mark == PriorTables::RowBegins && table) {
                table->rows.push_back(row());
            } else {
                unreadable(QCoreApplication::translate("PriorFile", "The prior database could not be read."));
            }
        }
    }

  private:
    const char* take(qsizetype size) {
        if (size > bytes.size() - position) // the helper came to an end of its own
            unreadable(QCoreApplication::translate("PriorFile", "The prior database is damaged."));
        position += size;
        return bytes.constData() + position - size;
    }

    template<typename Number>
    Number number() {
        Number value;
        std::memcpy(&value, take(sizeof value), sizeof value);
        return value;
    }

    QString text() {
        const auto size = number<std::uint32_t>();
        return QString::fromUtf8(take(size), size);
    }

    /// The next mark. The helper can tell of a failure in the place of any.
    char mark() {
        const char found = *take(1);
        if (found != PriorTables::FailureFollows)
            return found;
        const auto fault = number<std::int32_t>();
        take(1);
        throw DatabaseFault(fault, text().toStdString());
    }

    QVariantList row() {
        QVariantList values;
        values.reserve(static_cast<qsizetype>(columns));
        for (size_t i = 0; i < columns; ++i)
            values.append(value());
        return values;
    }

    QVariant value() {
        switch (mark()) {
        case PriorTables::NullValue:
            return {};
        case PriorTables::NumberValue: {
            const auto found = number<double>();
            if (!std::isfinite(found))
                unreadable(QCoreApplication::translate("PriorFile",
                                                       "The prior database holds a number that is none."));
            return found;
        }
        case PriorTables::TextValue:
            return text();
        default:
            unreadable(QCoreApplication::translate("PriorFile", "The prior database could not be read."));
        }
    }

    const QByteArray& bytes;
    qsizetype position = 0;
    size_t columns = 0; // of the table that is being read
};

} // namespace

void SetPriorHelper(const PriorHelper& helper) {
    installedHelper() = helper;
}

void ReadPriorFile(const QString& path, PriorRows& rows) {
    if (!QFileInfo(path).isFile())
        unreadable(QStringLiteral("Could not find file '%1'.").arg(path));
    const QByteArray written = outputOf(installedHelper(), path);
    Reader(written).readInto(rows);
}
