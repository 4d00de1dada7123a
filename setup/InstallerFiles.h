#pragma once

#include <QString>

/// The files that an installer leaves for the first start: datasource.ini and demosource.ini, each with the
/// full path of another file and nothing else.
namespace InstallerFiles {

/// Their folder, a build setting.
QString installerFolderPath();
/// Changes the folder. For tests.
void setInstallerFolder(const QString& folder);

/// The full text of one of them without NULs. Throws Fault 53 if the file is missing, or longer than 4,096
/// bytes and so not a path; 76 if the folder is missing; and 75 if the file cannot be read.
QString readInstallerFile(const QString& name);

/// Whether a file named by one of them may be deleted or renamed: it must be a plain file, not a link, folder
/// or device, and none of the program's own databases or the engine's files next to them.
bool isInstallersToTake(const QString& path);

} // namespace InstallerFiles
