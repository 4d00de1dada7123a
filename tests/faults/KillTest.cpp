// Kills the program at random moments while it saves. Every save it reported must be there, and the file must
// open.

#include "core/store/Backup.h"
#include "core/store/Gateway.h"
#include "tests/support/BothEngines.h"
#include "tests/support/Rounds.h"
#include "tests/support/TemporaryHome.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QFileInfo>
#include <QProcess>

#include <algorithm>
#include <array>
#include <map>
#include <random>

namespace {

/// A copy of the program that saves into the files of a home, with its own session store.
class SavingCopy {
  public:
    SavingCopy(const TemporaryHome& home, const QString& prefix, int count) {
        QDir(sessionFolder.path()).mkpath("Fennerbrooke");
        QFile::copy(home.sessionFile(), sessionFolder.filePath("Fennerbrooke/Brennoval.ini"));
        process.start(QCoreApplication::applicationDirPath() + "/brennoval-save-loop",
                      {sessionFolder.path(), prefix, QString::number(count)});
    }

    /// Waits until it has reported a number of saves; false if it ended first.
    bool waitForSaves(int count) {
        while (told.count('\n') < count) {
            if (!process.waitForReadyRead(30000))
                return false;
            told += process.readAllStandardOutput();
        }
        return true;
    }

    void kill() {
        process.kill();
        finish();
    }

    int finish() {
        process.waitForFinished(120000);
        told += process.readAllStandardOutput();
        return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    }

    /// The saves it reported, without a last line cut off by the kill.
    QStringList saves() const {
        QStringList lines = QString::fromUtf8(told).split('\n');
        lines.removeLast();
        return lines;
    }

  private:
    QTemporaryDir sessionFolder;
    QProcess process;
    QByteArray told;
};

Connection openUser() {
    return Gateway::openDatabase("User");
}

QString value(Connection& connection, const QString& sql) {
    Recordset rows;
    rows.Open(sql, connection);
    return rows.atEnd() ? QString() : rows["V"].text();
}

/// Saves on a file or in an office.
class KillTest : public BothEngines {};
ON_BOTH_ENGINES(KillTest);
class TwoCopiesTest : public BothEngines {};
ON_BOTH_ENGINES(TwoCopiesTest);

void expectAllThere(const QStringList& saves) {
    Connection user = openUser();
    EXPECT_EQ(user.engine().findDamage(Engine::Check::Thorough), "");
    for (const QString& save : saves) {
        const QString kind = save.section(' ', 0, 0);
        const QString key = save.section(' ', 1);
        const QString sql =
            kind == "header" ? "SELECT COUNT(*) AS V FROM tblJobHeader WHERE JobID = '" + key + "'"
            : kind == "tank"
                ? "SELECT COUNT(*) AS V FROM tblJobData WHERE TotSysVolume = 500 AND SOPMax = 30 AND "
                  "TankID = '" +
                      key + "'"
                : "SELECT COUNT(*) AS V FROM tblJobData WHERE ModelNo IS NOT NULL AND "
                  "RequiredVolume > 1 AND TankID = '" +
                      key + "'";
        EXPECT_EQ(value(user, sql), "1") << save.toStdString();
    }
}

bool isSameFile(const QString& one, const QString& other) {
    QFile first(one);
    QFile second(other);
    return first.open(QIODevice::ReadOnly) && second.open(QIODevice::ReadOnly) &&
           first.readAll() == second.readAll();
}

} // namespace

TEST_P(KillTest, LosesNoSaveThatHadReturned) {
    std::mt19937 random(77);
    QStringList all;
    const int kills = roundCount(12, 100);
    for (int i = 0; i < kills; ++i) {
        SavingCopy copy(home, QString("K%1-").arg(i), 1000);
        // After a random number of saves, somewhere in the next one.
        ASSERT_TRUE(copy.waitForSaves(std::uniform_int_distribution(1, 9)(random)));
        const int spins = std::uniform_int_distribution(0, 200000)(random);
        volatile int spun = 0;
        while (spun < spins)
            spun = spun + 1;
        copy.kill();
        all += copy.saves();
    }
    EXPECT_GT(all.size(), kills);
    expectAllThere(all);
}

// The data are complete and marked as done, or absent; the source is deleted only once everything is there.
TEST(Kill, TakesPriorDataOverWholeOrNotAtAll) {
    const QString source = SOURCE_FOLDER "/../shared/fixtures/prior/prior-worn.mdb";
    if (!QFile::exists(source))
        GTEST_SKIP() << "SKIPPED: there is no " << source.toStdString();
    std::mt19937 random(78);
    std::array<int, 2> outcomes{};
    qint64 longest = 0; // milliseconds, of an undisturbed conversion
    const int kills = roundCount(12, 300);
    for (int i = 0; i <= kills; ++i) {
        const TemporaryHome home;
        home.installData();
        const QString file = home.path() + "/Data.mdb";
        QFile::copy(source, file);
        QFile name(home.path() + "/datasource.ini");
        ASSERT_TRUE(name.open(QIODevice::WriteOnly) && name.write(file.toLocal8Bit()) > 0);
        name.close();
        QElapsedTimer clock;
        clock.start();
        QProcess copy;
        copy.start(QCoreApplication::applicationDirPath() + "/brennoval-convert-once",
                   {QFileInfo(home.sessionFile()).path() + "/..", home.path()});
        ASSERT_TRUE(copy.waitForStarted());
        if (longest == 0) {
            ASSERT_TRUE(copy.waitForFinished());
            longest = std::max<qint64>(1, clock.elapsed());
        } else if (!copy.waitForFinished(std::uniform_int_distribution(1, int(longest))(random))) {
            copy.kill();
            copy.waitForFinished();
        }
        Connection user = openUser();
        ASSERT_EQ(value(user, "SELECT integrity_check AS V FROM pragma_integrity_check"), "ok");
        const QString jobs = value(user, "SELECT COUNT(*) AS V FROM tblJobHeader");
        const QString tanks = value(user, "SELECT COUNT(*) AS V FROM tblJobData WHERE TankClass IS NOT NULL");
        const bool done = value(user, "SELECT Convert AS V FROM tblFirstTime") == "1";
        EXPECT_EQ(jobs + ", " + tanks, done ? "50, 214" : "0, 0");
        EXPECT_TRUE(done || isSameFile(file, source));
        EXPECT_TRUE(!QFile::exists(file) || isSameFile(file, source));
        ++outcomes[done ? 1 : 0];
    }
    RecordProperty("not done", outcomes[0]);
    RecordProperty("done", outcomes[1]);
    EXPECT_GT(outcomes[0], 0);
    EXPECT_GT(outcomes[1], 0);
}

// Backup, deletion, undo, export, import and restore: wherever the kill hits, the job is unchanged, or gone
// during its deletion, and every file under its final name is complete.
TEST(Kill, LeavesDataAndCopiesWholeDuringBackupAndRestore) {
    std::mt19937 random(79);
    std::map<std::string, int> last; // the last report before the kill
    const int kills = roundCount(12, 300);
    const TemporaryHome home;
    for (int i = 0; i < kills; ++i) {
        QDir(home.dataFolder()).removeRecursively();
        home.installData();
        Gateway::execute("User", "INSERT INTO tblJobHeader (JobID, JobInfo) VALUES ('Kept', 'As it was')");
        Gateway::execute("User", "INSERT INTO tblJobData (TankID, TankNo, JobID, Qty, TagID07) WITH "
                                 "RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 300) "
                                 "SELECT 'Kept.' || i, i, 'Kept', i % 9, 'T' || i FROM n");
        QProcess copy;
        copy.start(QCoreApplication::applicationDirPath() + "/brennoval-restore-loop",
                   {QFileInfo(home.sessionFile()).path() + "/..", home.path()});
        const int steps = std::uniform_int_distribution(0, 7)(random);
        QByteArray told;
        while (told.count('\n') < steps && copy.waitForReadyRead(30000))
            told += copy.readAllStandardOutput();
        copy.waitForFinished(std::uniform_int_distribution(0, 20)(random)); // somewhere in the next step
        copy.kill();
        copy.waitForFinished();
        told += copy.readAllStandardOutput();
        ASSERT_FALSE(told.contains("failed")) << told.toStdString();
        const QByteArray lastTold = told.left(told.lastIndexOf('\n')).split('\n').last();
        ++last[lastTold.toStdString()];
        const auto stateOf = [](const QString& file) {
            Connection data;
            data.setProperty("Data Source", file);
            data.Open();
            EXPECT_EQ(data.engine().findDamage(Engine::Check::Thorough), "") << file.toStdString();
            return value(data, "SELECT COUNT(*) AS V FROM tblJobHeader WHERE JobInfo = 'As it was'") + " " +
                   value(data, "SELECT COUNT(*) AS V FROM tblJobData WHERE TagID07 = 'T' || TankNo") + " " +
                   value(
                       data,
                       "SELECT SUM(CASE WHEN Qty = TankNo % 9 THEN 1 WHEN Qty = 99 THEN 99 ELSE 0 END) AS V "
                       "FROM tblJobData");
        };
        const QString sound = "1 300 300";
        const QString state = stateOf(home.dataFolder() + "/BrennovalUserData.mdb");
        const bool mayBeGone = lastTold == "exported" || lastTold == "deleted";
        const bool mayBeChanged = lastTold == "undone"; // until the import
        EXPECT_TRUE(state == sound || (mayBeGone && state == "0 0 ") ||
                    (mayBeChanged && state == "1 300 29700"))
            << lastTold.toStdString() << ": " << state.toStdString();
        for (const Backup::Copy& backup : Backup::copiesOf(home.dataFolder() + "/BrennovalUserData.mdb"))
            EXPECT_TRUE(stateOf(backup.path) == sound) << backup.path.toStdString();
        if (QFile::exists(home.path() + "/job.brennoval")) {
            EXPECT_EQ(stateOf(home.path() + "/job.brennoval"), sound);
        }
        QFile::remove(home.path() + "/job.brennoval");
    }
    EXPECT_GT(last.size(), 3U);
}

// Two users, each with a session. Two copies run by one user share a session and overwrite each other's
// values, so nothing is promised about them.
TEST_P(TwoCopiesTest, OfTwoUsersBothSaveAndNeitherCorrupts) {
    constexpr int jobs = 25;
    SavingCopy first(home, "A", jobs);
    SavingCopy second(home, "B", jobs);
    EXPECT_EQ(first.finish(), 0);
    EXPECT_EQ(second.finish(), 0);
    EXPECT_EQ(first.saves().size(), 3 * jobs);
    EXPECT_EQ(second.saves().size(), 3 * jobs);
    expectAllThere(first.saves() + second.saves());
}
