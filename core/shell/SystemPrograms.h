#pragma once

#include <QString>

class QUrl;

/// The programs of the system that ours hands something over to.
namespace SystemPrograms {

/// Whether the user is the system's administrator, for whom a web engine has no sandbox.
bool userIsAdministrator();

/// Starts a program by a command line, with its new window maximised where the system can be asked for that.
/// False when it cannot be started.
bool start(const QString& commandLine);

/// Opens a page in the browser that the desktop has chosen; false when it has none.
bool openInBrowser(const QUrl& page);

} // namespace SystemPrograms
