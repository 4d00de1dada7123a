#pragma once

#include <QString>

namespace Program {

/// "1.0", the program's major and minor version.
QString ProgramVersion();
/// "1.0.0", including the revision.
QString FullProgramVersion();
/// The program's folder, which holds the drawings.
QString ProgramFolder();

/// Removes relative paths to the user's folders from the environment. The convention says that they count as
/// unset, and they must not depend on where the program is started. Must run before anything looks up a
/// folder.
void IgnoreRelativeFolders();

} // namespace Program
