#include "core/base/Program.h"

#include <QCoreApplication>

namespace UtilityFunctions {

QString ProgramVersion() {
    return QStringLiteral("%1.%2").arg(BRENNOVAL_MAJOR).arg(BRENNOVAL_MINOR);
}

QString FullProgramVersion() {
    return QStringLiteral("%1.%2").arg(ProgramVersion()).arg(BRENNOVAL_REVISION);
}

QString ProgramFolder() {
    return QCoreApplication::applicationDirPath();
}

} // namespace UtilityFunctions
