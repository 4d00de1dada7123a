#pragma once

#include <QString>

namespace UtilityFunctions {

/// "1.0", the program's major and minor version.
QString ProgramVersion();
/// "1.0.0", with the revision.
QString FullProgramVersion();
/// The program's folder, where the drawings are.
QString ProgramFolder();

} // namespace UtilityFunctions
