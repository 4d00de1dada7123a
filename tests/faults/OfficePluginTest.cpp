// Only users of an office load libpq.

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QFile>

TEST(OfficePlugin, IsAllThatIsLinkedWithLibpq) {
    const auto mentions = [](const QString& file) {
        QFile program(QCoreApplication::applicationDirPath() + file);
        EXPECT_TRUE(program.open(QIODevice::ReadOnly)) << file.toStdString();
        return program.readAll().contains("libpq.so.");
    };
    EXPECT_TRUE(mentions("/Plugins/brennoval-libpq.so")) << "or the next line would prove nothing";
    EXPECT_FALSE(mentions("/brennoval"));
}
