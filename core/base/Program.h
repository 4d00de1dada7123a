#pragma once

#include <QString>

namespace Program {

/// "1.0", the program's major and minor version.
QString ProgramVersion();
/// "1.0.0", with the revision.
QString FullProgramVersion();
/// The program's folder, where the drawings are.
QString ProgramFolder();

/// Takes folders for the user's files out of the environment when they are relative: they count as unset, as
/// the convention for them says, wherever the program is started. Comes ahead of everything that asks for a
/// folder.
void IgnoreRelativeFolders();

} // namespace Program
