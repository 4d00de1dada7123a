#include "core/shell/ErrorReport.h"

#include "core/base/Fault.h"
#include "core/shell/BrennovalMain.h"
#include "core/shell/Screens.h"
#include "core/shell/frmError.h"
#include "core/store/Database.h"
#include "core/store/Gateway.h"

#include <QApplication>
#include <QDateTime>
#include <QDir>
#include <QLockFile>
#include <QStandardPaths>

namespace UtilityFunctions {

namespace {

QString trueOrFalse(bool value) {
    return value ? "True" : "False";
}

/// Runs a procedure; true when it failed, and the failure has been reported.
bool fails(const QString& codeSource, const std::function<void()>& procedure, const QString& module) {
    const auto report = [&](std::int32_t number, const char* description, const QString& source) {
        ReportError(number, QString::fromUtf8(description), "0", source, codeSource, nullptr, nullptr,
                    module);
    };
    try {
        procedure();
        return false;
    } catch (const AlreadyReported&) {
        return true;
    } catch (const Fault& fault) {
        report(fault.number(), fault.what(), QString::fromStdString(fault.source()));
    } catch (const std::bad_alloc& error) {
        constexpr std::int32_t outOfMemory = 7;
        report(outOfMemory, error.what(), "Brennoval");
    } catch (const std::exception& error) {
        constexpr std::int32_t internalError = 51;
        report(internalError, error.what(), "Brennoval");
    }
    return true;
}

} // namespace

QString ProgramFolder() {
    return QCoreApplication::applicationDirPath();
}

bool PreviousInstance() {
    static QLockFile lock(QDir(QStandardPaths::writableLocation(QStandardPaths::TempLocation))
                              .filePath("brennoval-" + QDir::home().dirName() + ".lock"));
    static const bool other = [] {
        lock.setStaleLockTime(0);
        return !lock.tryLock(0) && lock.error() == QLockFile::LockFailedError;
    }();
    return other;
}

QString ProgramVersion() {
    return QString("%1.%2").arg(BRENNOVAL_MAJOR).arg(BRENNOVAL_MINOR);
}

void ShowErrorText(const QString& text, const QString& module) {
    Screen* screen = Screens::load("frmError");
    if (!screen)
        return;
    if (!module.isEmpty())
        screen->Tag = module;
    static_cast<frmError*>(screen)->setReport(text);
    Screens::show("frmError");
    screen->raise();
    screen->activateWindow();
}

void ReportError(std::int32_t number, const QString& description, const QString& dll, const QString& source,
                 const QString& codeSource, Connection* connection1, Connection* connection2,
                 const QString& module) {
    SetStatusText("Error");
    for (Connection* connection : {connection1, connection2})
        if (connection)
            connection->Close();
    while (QApplication::overrideCursor())
        QApplication::restoreOverrideCursor();
    const QString systemSource =
        source.isEmpty() ? codeSource : QString(source).replace(DatabasePassword(), "********");
    const QStringList lines = {
        "ERROR MESSAGE",
        QString("Version: %1.%2").arg(ProgramVersion()).arg(BRENNOVAL_REVISION),
        "Date: " + QDateTime::currentDateTime().toString("yyyy-MM-dd HH:mm:ss"),
        QString("Error No. %1").arg(number),
        "Desc: " + description,
        "DLL: " + dll,
        "System Source: " + systemSource,
        "Code Source: " + codeSource,
        "Path: " + ProgramFolder(),
        "File Description:Brennoval, electronic catalog tool and expansion tank selection software",
        QString("Instance:%1").arg(QCoreApplication::applicationPid()),
        "PrevInstance:" + trueOrFalse(PreviousInstance()),
        QString("Other: Qt %1, %2").arg(qVersion(), QGuiApplication::platformName()),
    };
    ShowErrorText(lines.join("\r\n") + "\r\n", module);
}

void Trap(const QString& codeSource, const std::function<void()>& procedure, const QString& module) {
    fails(codeSource, procedure, module);
}

void Procedure(const QString& codeSource, const std::function<void()>& procedure) {
    if (fails(codeSource, procedure, {}))
        throw AlreadyReported{};
}

} // namespace UtilityFunctions
