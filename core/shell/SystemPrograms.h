#pragma once

#include <QString>

class QUrl;

/// The programs of the system that ours hands something over to.
namespace SystemPrograms {

/// Whether the user is the system's administrator, for whom a web engine has no sandbox.
bool userIsAdministrator();

/// How the window of a program that is started shall open, where the system can be asked for that.
enum class Window { Normal, Maximised };

/// Starts a program by a command line; false when it cannot be started.
bool start(const QString& commandLine, Window window);

/// Opens a page in the browser that the desktop has chosen; false when it has none.
bool openInBrowser(const QUrl& page);

} // namespace SystemPrograms
