#include "core/store/Gateway.h"
#include "core/store/Schema.h"
#include "tests/support/TemporaryHome.h"

#ifdef DRIVES_THE_PROGRAM // events go through the program's own application object
#include "core/shell/DesktopApplication.h"
using TestApplication = DesktopApplication;
#else
#include <QApplication>
using TestApplication = QApplication;
#endif

#include <gtest/gtest.h>

#include <cstdio>

namespace {

/// Upgrades user data to the program's version and reports when it begins, for the test that kills it.
int upgradeData(const QString& sessionFolder) {
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, sessionFolder);
    Connection user = Gateway::openDatabase("User");
    std::puts("begins");
    std::fflush(stdout);
    Schema::upgrade(user);
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const TestApplication application(argc, argv);
    if (argc == 3 && QLatin1String(argv[1]) == QLatin1String("--upgrade-data"))
        return upgradeData(QString::fromUtf8(argv[2]));
    const TemporaryHome home; // keeps every test away from the user's own settings and data
    return RUN_ALL_TESTS();
}
