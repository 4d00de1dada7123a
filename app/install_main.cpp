#include "app/Install.h"
#include "core/base/Fault.h"
#include "core/base/Program.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#include <iostream>
#include <string_view>

namespace {

constexpr int failed = 1;
constexpr int usageError = 2;

constexpr std::string_view help = R"(Usage: brennoval-install [--restore-catalogue]

Prepares Brennoval's data for the user who calls it: makes the data folder with an empty user database and the
catalog where no folder is stored yet, and replaces a catalog that is another than its own. A user database is never touched.

  --restore-catalogue  put the catalog back as it was shipped, whatever has become of it
  --help               say this, and do nothing
  --version            say the version, and do nothing
)";

/// The environment says where the user's files go; otherwise they go below the home folder. Throws Fault 76
/// when there is neither.
void requireHome() {
#ifndef Q_OS_WIN
    const QString home = qEnvironmentVariable("HOME");
    if (QDir::isAbsolutePath(home) && QFileInfo(home).isDir())
        return;
    for (const char* name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME"})
        if (qEnvironmentVariableIsEmpty(name))
            throw Fault(Fault::PathNotFound,
                        home.isEmpty() ? "There is no home folder: HOME is not set"
                                       : "There is no home folder: HOME is \"" + home.toStdString() + '"');
#endif
}

int install(bool restoresCatalogue) {
    try {
        requireHome();
        const QString shipped = Program::dataFolder() + "/Data";
        const QString data = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
        if (restoresCatalogue)
            std::cout << "Restored " << restoreCatalogue(shipped, data).toStdString() << '\n';
        else
            installForUser(shipped, data);
        return 0;
    } catch (const Fault& fault) {
        std::cerr << "brennoval-install: " << fault.what() << '\n';
        return failed;
    }
}

} // namespace

int main(int argc, char** argv) {
    Program::ignoreRelativeFolders();
    int argumentCount = 1; // Qt sees none of the options: its own count as unknown too
    const QCoreApplication application(argumentCount, argv);
    QCoreApplication::setOrganizationName("Fennerbrooke");
    QCoreApplication::setApplicationName("Brennoval");
    if (argc < 2)
        return install(false);
    const std::string_view option = argv[1];
    if (argc == 2 && option == "--restore-catalogue")
        return install(true);
    if (argc == 2 && option == "--help") {
        std::cout << help;
        return 0;
    }
    if (argc == 2 && option == "--version") {
        std::cout << "brennoval-install " << Program::fullProgramVersion().toStdString() << '\n';
        return 0;
    }
    std::cerr << "brennoval-install: takes --restore-catalogue, --help, --version or nothing\n";
    return usageError;
}
