// Copies of the user's data: complete or absent, thinned, and set aside before an upgrade.

#include "core/store/Backup.h"
#include "core/base/Fault.h"
#include "core/store/Gateway.h"
#include "core/store/Schema.h"
#include "tests/support/Rounds.h"
#include "tests/support/TemporaryHome.h"

#include <gtest/gtest.h>

#include <QProcess>

#include <map>
#include <random>

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
    const char* const others[] = {"BrennovalUserData 2020-01-01 10.00.00 mine.mdb",
                                  "notes.txt",
                                  "BrennovalUserData 2020-13-01 10.00.00 daily.mdb",
                                  "BrennovalUserData 2020-01-02 10.00.00 daily.MDB",
                                  "BrennovalUserData 2020-01-01 10.00.00 daily (copy).mdb",
                                  "BrennovalUserData 2020-01-01 10.00.00 daily (2) (3).mdb",
                                  "BrennovalUserData 2020-01-01 10.00.00 daily ().mdb",
                                  "BrennovalUserData 2020-01-01 10.00.00-daily.mdb",
                                  "BrennovalUserData 2020-01-01 10.00.00.mdb",
                                  "BrennovalUserData 2 2020-01-01 10.00.00 daily.mdb",
                                  "BrennovalUserData2020-01-01 10.00.00 daily.mdb"};
    for (const char* name : others)
        QFile::copy(file(), folder() + '/' + name);
    QFile::copy(file(), folder() + "/BrennovalUserData 2020-01-01 10.00.00 daily.mdb");
    QFile::copy(file(), folder() + "/BrennovalUserData 2020-01-01 10.00.00 before restore (12).mdb");
    EXPECT_EQ(Backup::copiesOf(file()).size(), 3);
    Backup::Make(openDatabase("User"), Backup::Reason::ByHand);
    EXPECT_EQ(Backup::copiesOf(file()).size(), 2);
    EXPECT_EQ(files().size(), 2 + std::ssize(others));
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
    const auto kept = Backup::keptOf(moments, today);
    for (std::size_t i = 0; i < std::size(copies); ++i)
        EXPECT_EQ(kept[qsizetype(i)], copies[i].kept) << copies[i].day;
    const auto ofOneDay = Backup::keptOf(QList<QDateTime>(30, noon("2026-03-18")), today);
    EXPECT_EQ(ofOneDay.count(true), 20);
}

namespace {

/// Data of the first version, with enough names for the upgrade to take a while, and copies of the program
/// that start on them at once.
class UpgradeByManyTest : public BackupTest {
  protected:
    UpgradeByManyTest() {
        QFile::remove(file());
        QFile script(QStringLiteral(SOURCE_FOLDER "/data/schema/user/1.sql"));
        EXPECT_TRUE(script.open(QIODevice::ReadOnly));
        QFile empty(file());
        EXPECT_TRUE(empty.open(QIODevice::WriteOnly));
        empty.close();
        {
            const Connection user = openDatabase("User");
            Transaction write(user);
            user.engine().runScript(QString::fromUtf8(script.readAll()), 0);
            for (int i = 0; i < Engineers; ++i)
                Recordset().Open(QString("INSERT INTO tblEngineer VALUES ('Engineer %1 ')").arg(i), user);
            write.commit();
        }
        EXPECT_TRUE(QFile::copy(file(), original));
    }

    void start(int count) {
        programs.clear();
        QDir(folder()).removeRecursively();
        for (const char* ending : {"", "-journal"})
            QFile::remove(file() + ending);
        QFile::copy(original, file());
        for (int i = 0; i < count; ++i) {
            programs.push_back(std::make_unique<QProcess>());
            programs.back()->start(QCoreApplication::applicationFilePath(),
                                   {"--upgrade-data", QDir(home.path()).filePath("user")});
        }
    }

    /// The version of sound data, in which all names are either as they were or without their trailing blank.
    static int versionOf(const QString& path) {
        Connection data;
        data.setProperty("Data Source", path);
        data.Open();
        EXPECT_EQ(data.engine().findDamage(Engine::Check::Thorough), "") << path.toStdString();
        const int version = Schema::versionOf(data);
        Recordset names;
        names.Open("SELECT COUNT(*) AS N FROM tblEngineer WHERE length(fldName) " +
                       QString(version == 1 ? ">" : "=") + " length(rtrim(fldName))",
                   data);
        EXPECT_EQ(names["N"].number(), Engineers) << path.toStdString();
        return version;
    }

    static constexpr int Engineers = 3000;
    const QString original = home.path() + "/original";
    std::vector<std::unique_ptr<QProcess>> programs;
};

} // namespace

// One copy of the program upgrades under a lock; the others wait and find it done. Each copy set aside is
// complete.
TEST_F(UpgradeByManyTest, SetsOneCopyAside) {
    for (const int count : {2, 5}) {
        start(count);
        for (const auto& program : programs) {
            ASSERT_TRUE(program->waitForFinished(60000));
            EXPECT_EQ(program->exitCode(), 0) << program->readAllStandardError().toStdString();
        }
        EXPECT_EQ(versionOf(file()), Schema::currentVersion());
        const auto copies = Backup::copiesOf(file());
        ASSERT_EQ(copies.size(), 1);
        EXPECT_EQ(versionOf(copies.first().path), 1) << "as they were before";
        EXPECT_EQ(files().size(), 1);
    }
}

// Some of them are killed, each at a moment of its own: the data have one of the two versions, and a copy of
// them as they were is there before they get the new one.
TEST_F(UpgradeByManyTest, IsWholeWhateverIsKilled) {
    std::mt19937 random(24);
    std::map<int, int> versions;
    const int rounds = roundCount(10, 300);
    for (int round = 0; round < rounds; ++round) {
        start(round % 2 == 0 ? 2 : 5);
        for (const auto& program : programs) {
            ASSERT_TRUE(program->waitForReadyRead(30000)); // it tells when it begins
            if (random() % 5 > 0) {
                program->waitForFinished(int(random() % 40));
                program->kill();
            }
        }
        for (const auto& program : programs)
            program->waitForFinished(60000);
        const int version = versionOf(file());
        ++versions[version];
        const auto copies = Backup::copiesOf(file());
        EXPECT_TRUE(version == 1 || !copies.isEmpty());
        for (const Backup::Copy& copy : copies)
            EXPECT_EQ(versionOf(copy.path), 1);
    }
    RecordProperty("not upgraded", versions[1]);
    if (rounds > 100) {
        EXPECT_GT(versions[1], 0) << "all killed too late to tell";
    }
}
