#include "tests/support/TemporaryHome.h"

#include <QApplication>

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    const TemporaryHome home; // no test sees the user's own settings or data
    return RUN_ALL_TESTS();
}
