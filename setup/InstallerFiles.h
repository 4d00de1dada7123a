#pragma once

#include <QString>

/// The files that an installer leaves for the first start: datasource.ini and demosource.ini, each of which
/// holds the full name of another file and nothing else.
namespace UtilityFunctions {

/// The folder in which they stand, a setting of the build.
QString InstallerFolder();
/// Sets another. For tests.
void SetInstallerFolder(const QString& folder);

/// The whole text of one of them. Throws Fault 53 when there is no such file, 76 when there is no such folder
/// and 75 when the file cannot be read.
QString ReadInstallerFile(const QString& name);

/// Whether a file is one of the program's own databases, which no installer's file may take away.
bool IsOwnDatabase(const QString& path);

} // namespace UtilityFunctions
