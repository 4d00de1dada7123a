#include "core/base/Program.h"

#include <QCoreApplication>
#include <QDir>
#include <QLibrary>

namespace Program {

QString programVersion() {
    return QStringLiteral("%1.%2").arg(BRENNOVAL_MAJOR).arg(BRENNOVAL_MINOR);
}

QString fullProgramVersion() {
    return QStringLiteral("%1.%2").arg(programVersion()).arg(BRENNOVAL_REVISION);
}

QString programFolder() {
    return QCoreApplication::applicationDirPath();
}

QString dataFolder() {
    const QString shared = QDir::cleanPath(programFolder() + "/../../share/brennoval");
    return QDir(shared).exists() ? shared : programFolder();
}

QFunctionPointer pluginFunction(const QString& plugin, const char* function) {
    return QLibrary(programFolder() + "/Plugins/" + plugin).resolve(function);
}

QString buildName() {
    return QStringLiteral(BRENNOVAL_BUILD);
}

void ignoreRelativeFolders() {
    for (const char* name :
         {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_STATE_HOME", "XDG_RUNTIME_DIR"})
        if (!qEnvironmentVariableIsEmpty(name) && !qgetenv(name).startsWith('/'))
            qunsetenv(name);
}

} // namespace Program
