#include "app/Install.h"
#include "core/base/Fault.h"
#include "core/base/Program.h"

#include <QCoreApplication>
#include <QStandardPaths>

#include <iostream>
#include <string_view>

namespace {

constexpr int failed = 1;
constexpr int notUnderstood = 2;

constexpr std::string_view help = R"(Usage: brennoval-install

Prepares Brennoval's data for the user who calls it: makes the data folder with an empty user database and the
catalog where no folder is stored yet, and replaces a catalog that is another than its own. A user database is never touched.

  --help     say this, and do nothing
  --version  say the version, and do nothing
)";

int install() {
    try {
        InstallForUser(UtilityFunctions::ProgramFolder() + "/Data",
                       QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
        return 0;
    } catch (const Fault& fault) {
        std::cerr << "brennoval-install: " << fault.what() << '\n';
        return failed;
    }
}

} // namespace

int main(int argc, char** argv) {
    int argumentCount = 1; // Qt's own options are unknown arguments too
    const QCoreApplication application(argumentCount, argv);
    QCoreApplication::setOrganizationName("Fennerbrooke");
    QCoreApplication::setApplicationName("Brennoval");
    if (argc < 2)
        return install();
    const std::string_view option = argv[1];
    if (argc == 2 && option == "--help") {
        std::cout << help;
        return 0;
    }
    if (argc == 2 && option == "--version") {
        std::cout << "brennoval-install " << UtilityFunctions::FullProgramVersion().toStdString() << '\n';
        return 0;
    }
    std::cerr << "brennoval-install: takes --help, --version or nothing\n";
    return notUnderstood;
}
