#include "bench/Footprint.h"

#include "bench/BenchData.h"
#include "core/store/Gateway.h"
#include "tests/support/TemporaryHome.h"

#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QThread>

#include <stdexcept>

namespace {

constexpr int runs = 5;
constexpr int restMilliseconds = 400; // this long without processor time counts as idle
constexpr int timeoutMilliseconds = 10000;

QString processFile(qint64 process, const QString& name) {
    QFile file(QStringLiteral("/proc/%1/%2").arg(process).arg(name));
    return file.open(QIODevice::ReadOnly) ? QString::fromLatin1(file.readAll()) : QString();
}

/// Processor time of all threads in milliseconds.
double processorTime(qint64 process) {
    double nanoseconds = 0;
    const auto threads =
        QDir(QStringLiteral("/proc/%1/task").arg(process)).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString& thread : threads)
        nanoseconds += processFile(process, "task/" + thread + "/schedstat").section(' ', 0, 0).toDouble();
    return nanoseconds / 1e6;
}

double peakMemory(qint64 process) {
    static const QRegularExpression peak("VmHWM:\\s+(\\d+)");
    return peak.match(processFile(process, "status")).captured(1).toDouble() / 1024;
}

/// Waits until only the status bar's clock still runs.
void waitForRest(qint64 process) {
    constexpr double still = 1; // milliseconds of processor time
    QElapsedTimer all;
    all.start();
    double before = processorTime(process);
    do {
        QThread::msleep(restMilliseconds);
        const double now = processorTime(process);
        if (before > 0 && now - before < still &&
            all.elapsed() > 3 * restMilliseconds) // the splash waits 500 ms
            return;
        before = now;
    } while (all.elapsed() < timeoutMilliseconds);
}

Footprint once(const QString& program, const QStringList& arguments) {
    const TemporaryHome home;
    home.installData();
    Bare(Gateway::dbConnection("User").dataSource()).run("UPDATE tblFirstTime SET FirstTime = 1");
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("HOME", home.path());
    environment.insert("XDG_CONFIG_HOME", home.path() + "/user");
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
    process.waitForStarted();
    waitForRest(process.processId());
    if (process.state() != QProcess::Running)
        throw std::runtime_error(program.toStdString() + " did not stay");
    const Footprint used{processorTime(process.processId()), peakMemory(process.processId())};
    process.kill();
    process.waitForFinished();
    return used;
}

} // namespace

Footprint footprintOf(const QString& program, const QStringList& arguments) {
    Footprint sum{};
    for (int run = 0; run < runs; ++run) {
        const Footprint used = once(program, arguments);
        sum.processorTime += used.processorTime / runs;
        sum.memory += used.memory / runs;
    }
    return sum;
}
