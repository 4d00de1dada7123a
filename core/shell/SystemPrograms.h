#pragma once

#include <QString>

class QUrl;

/// The system's programs that ours hands things over to.
namespace SystemPrograms {

/// Whether the user is root or the like, for whom a web engine has no sandbox.
bool userIsAdministrator();

/// How a started program should open its window, on systems that allow asking.
enum class Window { Normal, Maximised };

/// Starts a program by its command line; false if it cannot be started.
bool start(const QString& commandLine, Window window);

/// Opens a page in the desktop's default browser; false if there is none.
bool openInBrowser(const QUrl& page);

/// Opens a file with the desktop's program for its kind; false if there is none.
bool openFile(const QString& path);

} // namespace SystemPrograms
