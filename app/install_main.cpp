#include "app/Install.h"
#include "core/base/Fault.h"

#include <QCoreApplication>
#include <QStandardPaths>

#include <iostream>

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    QCoreApplication::setOrganizationName("Fennerbrooke");
    QCoreApplication::setApplicationName("Brennoval");
    try {
        InstallForUser(QCoreApplication::applicationDirPath() + "/Data",
                       QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
        return 0;
    } catch (const Fault& fault) {
        std::cerr << "brennoval-install: " << fault.what() << '\n';
        return 1;
    }
}
