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

bool openInBrowser(const QUrl& page) {
#ifdef Q_OS_WIN
    Q_UNUSED(page);
    return false; // the browser is the registered command there, and that was tried already
#else
#ifdef Q_OS_LINUX
    // The desktop's opener reports success even when it finds no program for the page.
    QProcess opener;
    opener.start(QStringLiteral("xdg-mime"), {QStringLiteral("query"), QStringLiteral("default"),
                                              QStringLiteral("x-scheme-handler/https")});
    if (!opener.waitForFinished() || opener.readAllStandardOutput().trimmed().isEmpty())
        return false;
#endif
    return QDesktopServices::openUrl(page);
#endif
}

} // namespace SystemPrograms
