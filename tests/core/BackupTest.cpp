// Copies of the user's data: complete or absent, thinned, and set aside before an upgrade.

#include "core/store/Backup.h"
#include "core/base/Fault.h"
#include "core/store/Gateway.h"
#include "tests/support/TemporaryHome.h"

#include <gtest/gtest.h>

#include <QProcess>

using namespace Gateway;

namespace {

class BackupTest : public testing::Test {
  protected:
    BackupTest() {
        home.installData();
        execute("User", "INSERT INTO tblJobHeader (JobID) VALUES ('A'), ('B')");
        execute("User", "INSERT INTO tblJobData (TankID, TankNo, JobID) VALUES ('A.1', 1, 'A')");
    }
    QString file() const { return home.dataFolder() + "/BrennovalUserData.mdb"; }
    QString folder() const { return home.dataFolder() + "/backups"; }
    QStringList files() const { return QDir(folder()).entryList(QDir::Files | QDir::Hidden); }

    TemporaryHome home;
};

QDateTime noon(const char* day) {
    return QDate::fromString(day, Qt::ISODate).startOfDay().addSecs(43200);
}

} // namespace

TEST_F(BackupTest, IsWholeAndHasTheModeOfTheFile) {
    const auto mode =
        QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser | QFile::ReadGroup;
    QFile::setPermissions(file(), mode);
    const QString path = Backup::Make(openDatabase("User"), Backup::Reason::ByHand);
    EXPECT_EQ(QFile::permissions(path), QFile::permissions(file()));
    Connection copy;
    copy.setProperty("Data Source", path);
    copy.setReadOnly();
    copy.Open();
    EXPECT_EQ(Backup::countsOf(copy), (Backup::Counts{.jobs = 2, .tanks = 1}));
    EXPECT_THROW(Recordset().Open("DELETE * FROM tblJobData", copy), DatabaseFault)
        << "opened for reading alone";
    // Even within the same second each gets its own name.
    Backup::Make(openDatabase("User"), Backup::Reason::ByHand);
    const auto copies = Backup::copiesOf(file());
    ASSERT_EQ(copies.size(), 2);
    EXPECT_EQ(copies[0].reason, Backup::Reason::ByHand);
    EXPECT_EQ(copies[0].made.date(), QDate::currentDate());
    EXPECT_EQ(copies[0].size, QFileInfo(file()).size());
}

TEST_F(BackupTest, OfTheDayIsMadeOnce) {
    Backup::makeDaily(file());
    Backup::makeDaily(file());
    EXPECT_EQ(Backup::copiesOf(file()).size(), 1);
    // Other files and other people's copies are neither listed nor removed.
    for (const char* name : {"BrennovalUserData 2020-01-01 10.00.00 mine.mdb", "notes.txt",
                             "BrennovalUserData 2020-13-01 10.00.00 daily.mdb"})
        QFile::copy(file(), folder() + '/' + name);
    QFile::copy(file(), folder() + "/BrennovalUserData 2020-01-01 10.00.00 daily.mdb");
    EXPECT_EQ(Backup::copiesOf(file()).size(), 2);
    Backup::Make(openDatabase("User"), Backup::Reason::ByHand);
    EXPECT_EQ(Backup::copiesOf(file()).size(), 2);
    EXPECT_EQ(files().size(), 5);
}

TEST_F(BackupTest, ThatFailsLeavesNothingAndIsReported) {
    QString told;
    Backup::onFailure([&told](const QString& why) { told = why; });
    QFile inTheWay(folder());
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    EXPECT_FALSE(Backup::makeIfPossible(openDatabase("User"), Backup::Reason::Deletion));
    EXPECT_TRUE(told.contains("backups")) << told.toStdString();
    inTheWay.remove();
    // A file with damaged pages is not copied as if it were sound.
    {
        QFile damaged(file());
        ASSERT_TRUE(damaged.open(QIODevice::ReadWrite));
        for (qint64 page = 4096LL * 2; page < damaged.size(); page += 4096) {
            damaged.seek(page);
            damaged.write("no page at all");
        }
    }
    EXPECT_THROW(Backup::Make(openDatabase("User"), Backup::Reason::ByHand), DatabaseFault);
    EXPECT_TRUE(files().isEmpty()) << files().join(", ").toStdString();
    Backup::onFailure([](const QString&) {});
}

TEST(Backups, AreThinnedToDaysWeeksAndMonths) {
    const QDate today(2026, 3, 18); // a Wednesday
    const struct {
        const char* day;
        bool kept;
    } copies[] = {{"2026-03-18", true},  {"2026-03-18", true},                        // all of the day itself
                  {"2026-03-17", true},  {"2026-03-17", false}, {"2026-03-09", true}, // the tenth day
                  {"2026-03-08", true},                         // the newest of its week
                  {"2026-03-07", false}, {"2026-02-28", true},  // the newest of its week and month
                  {"2026-02-27", false}, {"2026-01-27", true},  // of the eighth week
                  {"2026-01-26", false}, {"2026-01-25", false}, // of the ninth
                  {"2025-04-01", true},                         // of the twelfth month
                  {"2025-03-31", false}};
    QList<QDateTime> moments;
    for (const auto& copy : copies)
        moments.append(noon(copy.day));
    const auto kept = Backup::Kept(moments, today);
    for (std::size_t i = 0; i < std::size(copies); ++i)
        EXPECT_EQ(kept[qsizetype(i)], copies[i].kept) << copies[i].day;
    const auto ofOneDay = Backup::Kept(QList<QDateTime>(30, noon("2026-03-18")), today);
    EXPECT_EQ(ofOneDay.count(true), 20);
}

// One copy of the program upgrades under a lock; the others wait and find it done. Each copy set aside is
// complete.
TEST_F(BackupTest, OfOlderDataIsMadeOnceByManyCopiesOfTheProgram) {
    QFile::remove(file());
    QFile script(QStringLiteral(SOURCE_FOLDER "/data/schema/user/1.sql"));
    ASSERT_TRUE(script.open(QIODevice::ReadOnly));
    QFile empty(file());
    ASSERT_TRUE(empty.open(QIODevice::WriteOnly));
    empty.close();
    {
        const Connection user = openDatabase("User");
        Transaction write(user);
        user.engine().runScript(QString::fromUtf8(script.readAll()), 0);
        for (int i = 0; i < 3000; ++i)
            Recordset().Open(QString("INSERT INTO tblEngineer VALUES ('Engineer %1 ')").arg(i), user);
        write.commit();
    }
    const QString original = home.path() + "/original";
    ASSERT_TRUE(QFile::copy(file(), original));
    for (const int count : {2, 5}) {
        QDir(folder()).removeRecursively();
        QFile::remove(file());
        QFile::copy(original, file());
        std::vector<std::unique_ptr<QProcess>> programs;
        for (int i = 0; i < count; ++i) {
            programs.push_back(std::make_unique<QProcess>());
            programs.back()->start(QCoreApplication::applicationFilePath(),
                                   {"--upgrade-data", QDir(home.path()).filePath("user")});
        }
        for (const auto& program : programs) {
            ASSERT_TRUE(program->waitForFinished(60000));
            EXPECT_EQ(program->exitCode(), 0) << program->readAllStandardError().toStdString();
        }
        const auto copies = Backup::copiesOf(file());
        ASSERT_EQ(copies.size(), 1);
        Connection copy;
        copy.setProperty("Data Source", copies.first().path);
        copy.Open();
        Recordset names;
        names.Open("SELECT COUNT(*) AS N FROM tblEngineer WHERE length(fldName) > length(rtrim(fldName))",
                   copy);
        EXPECT_EQ(names["N"].number(), 3000) << "as they were before";
        EXPECT_EQ(files().size(), 1);
    }
}
