#include "core/store/SessionStore.h"
#include "tests/support/TemporaryHome.h"

#include <gtest/gtest.h>

using namespace Registry;

namespace {
QString fill(qsizetype length) {
    return QString(length, u'x');
}
} // namespace

TEST(SessionStore, LosesAWriteWithoutItsKey) {
    const TemporaryHome home;
    Session::Mode.write(QStringLiteral("New"));
    QString text = QStringLiteral("before");
    EXPECT_FALSE(Session::Mode.read(text));
    EXPECT_EQ(text, QString());
}

TEST(SessionStore, TellsAnEmptyTextFromAnAbsentOne) {
    const TemporaryHome home;
    createRegistryKey(HKeyCurrentUser(), AppRegistryKey());
    QString text;
    EXPECT_FALSE(Session::TankID.read(text));
    Session::TankID.write(QString());
    EXPECT_TRUE(Session::TankID.read(text));
}

TEST(SessionStore, ComparesNamesWithoutRegardToCase) {
    const TemporaryHome home;
    createRegistryKey(HKeyCurrentUser(), AppRegistryKey());
    Session::JobID.write(QStringLiteral("2001-17"));
    QString text;
    EXPECT_TRUE(GetRegValue(HKeyCurrentUser(), AppRegistryKey(), QStringLiteral("JobId"), text));
    EXPECT_EQ(text, QStringLiteral("2001-17"));
    SetRegValue(AppRegistryKey(), QStringLiteral("JOBID"), QStringLiteral("next"), RegistryType::Text);
    EXPECT_EQ(Session::JobID.text(), QStringLiteral("next"));
}

TEST(SessionStore, KeepsEveryKindOfText) {
    const TemporaryHome home;
    createRegistryKey(HKeyCurrentUser(), AppRegistryKey());
    for (const QString& text :
         {QStringLiteral("O'Brien \"and\" sons, 100%"), QStringLiteral("a,b"),
          QStringLiteral("@ByteArray(x)"), QStringLiteral(" blanks "), QStringLiteral("C:\\data\\"),
          QStringLiteral("Łódź 水 ø"), QStringLiteral("a;b=c"), fill(1023)}) {
        Session::JobID.write(text);
        EXPECT_EQ(Session::JobID.text().toStdString(), text.toStdString());
    }
}

TEST(SessionStore, CannotReadATextThatFillsTheBuffer) {
    const TemporaryHome home;
    createRegistryKey(HKeyCurrentUser(), AppRegistryKey());
    Session::JobID.write(fill(1024));
    QString text = QStringLiteral("before");
    EXPECT_FALSE(Session::JobID.read(text));
    EXPECT_EQ(text, QString());
}

TEST(SessionStore, CutsATextAtItsFirstNul) {
    const TemporaryHome home;
    createRegistryKey(HKeyCurrentUser(), AppRegistryKey());
    Session::JobID.write(QStringLiteral("ab") + QChar() + QStringLiteral("cd"));
    EXPECT_EQ(Session::JobID.text(), QStringLiteral("ab"));
}

TEST(SessionStore, KeepsNumbersToo) {
    const TemporaryHome home;
    createRegistryKey(HKeyCurrentUser(), AppRegistryKey());
    for (const int number : {0, 1, 255, 65536, -1, 2147483647}) {
        SetRegValue(AppRegistryKey(), QStringLiteral("Number"), number, RegistryType::Number);
        QString text;
        EXPECT_TRUE(GetRegValue(HKeyCurrentUser(), AppRegistryKey(), QStringLiteral("number"), text));
        EXPECT_EQ(text.toInt(), number);
    }
    EXPECT_EQ(SetValueEx({HKeyCurrentUser(), AppRegistryKey()}, QStringLiteral("Other"),
                         static_cast<RegistryType>(3), 1),
              0);
    QString text;
    EXPECT_FALSE(GetRegValue(HKeyCurrentUser(), AppRegistryKey(), QStringLiteral("Other"), text));
}

TEST(SessionStore, KeepsTheRootsApart) {
    const TemporaryHome home;
    createRegistryKey(HKeyLocalMachine(), AppRegistryKey());
    SetValueEx({HKeyLocalMachine(), AppRegistryKey()}, DatabaseDirectoryValue(), RegistryType::Text,
               QStringLiteral("/shared"));
    QString text;
    EXPECT_FALSE(GetRegValue(HKeyCurrentUser(), AppRegistryKey(), DatabaseDirectoryValue(), text));
    EXPECT_TRUE(GetRegValue(HKeyLocalMachine(), AppRegistryKey(), DatabaseDirectoryValue(), text));
    EXPECT_EQ(text, QStringLiteral("/shared"));
}
