#pragma once

#include <QString>

/// The files that an installer leaves for the first start: datasource.ini and demosource.ini, each of which
/// holds the full name of another file and nothing else.
namespace InstallerFiles {

/// The folder in which they stand, a setting of the build.
QString InstallerFolder();
/// Sets another. For tests.
void SetInstallerFolder(const QString& folder);

/// The whole text of one of them without NULs. Throws Fault 53 when there is no such file, or one of more
/// than 4,096 bytes, which holds no name; 76 when there is no such folder and 75 when the file cannot be
/// read.
QString ReadInstallerFile(const QString& name);

/// Whether a file that one of them names may be deleted or renamed: a plain file, no link, folder or device,
/// and none of the program's own databases or what the engine keeps beside them.
bool IsInstallersToTake(const QString& path);

} // namespace InstallerFiles
