#include "core/shell/SystemPrograms.h"

#include <QDesktopServices>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>

#ifdef Q_OS_WIN
#include <qt_windows.h>
#endif
#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

namespace SystemPrograms {

bool userIsAdministrator() {
#ifdef Q_OS_UNIX
    return geteuid() == 0;
#else
    return false;
#endif
}

bool start(const QString& commandLine, [[maybe_unused]] Window window) {
    QStringList words = QProcess::splitCommand(commandLine);
    if (words.isEmpty())
        return false;
    QProcess program;
    program.setProgram(words.takeFirst());
    program.setArguments(words);
#ifdef Q_OS_WIN
    program.setCreateProcessArgumentsModifier([window](QProcess::CreateProcessArguments* arguments) {
        arguments->startupInfo->dwFlags |= STARTF_USESHOWWINDOW;
        arguments->startupInfo->wShowWindow = window == Window::Maximised ? SW_SHOWMAXIMIZED : SW_SHOWNORMAL;
    });
#endif
    return program.startDetached();
}

#ifdef Q_OS_LINUX
namespace {

/// The answer of the desktop's table of programs; empty if there is none.
QString desktopAnswer(const QStringList& question) {
    QProcess table;
    table.start(QStringLiteral("xdg-mime"), QStringList{QStringLiteral("query")} + question);
    return table.waitForFinished() ? QString::fromUtf8(table.readAllStandardOutput().trimmed()) : QString();
}

} // namespace
#endif

bool openFile(const QString& path) {
#ifdef Q_OS_LINUX
    // The desktop's opener reports success even when it finds no program.
    if (desktopAnswer({QStringLiteral("default"), desktopAnswer({QStringLiteral("filetype"), path})})
            .isEmpty())
        return false;
#endif
    return QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}

bool openInBrowser(const QUrl& page) {
#ifdef Q_OS_WIN
    Q_UNUSED(page);
    return false; // the browser is the registered command there, and that was tried already
#else
#ifdef Q_OS_LINUX
    if (desktopAnswer({QStringLiteral("default"), QStringLiteral("x-scheme-handler/https")}).isEmpty())
        return false;
#endif
    return QDesktopServices::openUrl(page);
#endif
}

} // namespace SystemPrograms
