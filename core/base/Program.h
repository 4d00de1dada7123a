#pragma once

#include <QString>

namespace Program {

/// "1.0", the program's major and minor version.
QString programVersion();
/// "1.0.0", including the revision.
QString fullProgramVersion();
/// The program's folder, which holds the drawings.
QString programFolder();
/// The folder of the files that depend on no machine: catalogue, drawings, manual, demonstration,
/// translations. An installed program has them under share; a build has them beside itself.
QString dataFolder();
/// A function that the plugin of a name exports. The caller knows its type. Null if there is no such plugin.
QFunctionPointer pluginFunction(const QString& plugin, const char* function);
/// Which build of its version the program is, as in the names of its packages.
QString buildName();

/// Removes relative paths to the user's folders from the environment. The convention says that they count as
/// unset, and they must not depend on where the program is started. Must run before anything looks up a
/// folder.
void ignoreRelativeFolders();

} // namespace Program
