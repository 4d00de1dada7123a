#include "core/store/Schema.h"
#include "core/base/Fault.h"
#include "core/store/DataCheck.h"
#include "core/store/Gateway.h"
#include "tests/support/TemporaryHome.h"

#include <gtest/gtest.h>

#include <QProcess>

#include <sqlite3.h>

using namespace Gateway;

namespace {

/// A user file of the first version, which stored no version number, with jobs and tank lines.
class SchemaTest : public testing::Test {
  protected:
    SchemaTest() {
        home.installData();
        QFile::remove(file());
        QFile script(QStringLiteral(SOURCE_FOLDER "/data/schema/user/1.sql"));
        if (!script.open(QIODevice::ReadOnly))
            ADD_FAILURE() << "no first script";
        run(script.readAll() + R"(
            INSERT INTO tblJobHeader (JobID, Engineer) VALUES ('Old ', 'E '), ('Other', NULL);
            INSERT INTO tblJobData (TankID, TankNo, JobID, TotSysVolume) VALUES ('Old .1', 1, 'Old ', 500);
            INSERT INTO tblSchedule (TankID, TankOD) VALUES ('Old .1', 24.5);)");
    }

    QString file() const { return home.dataFolder() + QStringLiteral("/BrennovalUserData.mdb"); }
    QStringList copies() const { return QDir(home.dataFolder() + "/backups").entryList(QDir::Files); }

    void run(const QByteArray& sql) const {
        sqlite3* handle = nullptr;
        sqlite3_open(file().toUtf8().constData(), &handle);
        EXPECT_EQ(sqlite3_exec(handle, sql.constData(), nullptr, nullptr, nullptr), SQLITE_OK)
            << sqlite3_errmsg(handle);
        sqlite3_close(handle);
    }

    static QString value(const QString& sql) {
        Rows rows("User", sql);
        return rows.atEnd() ? QStringLiteral("(no row)") : rows[QStringLiteral("V")].text();
    }

    static void expectJobs() {
        EXPECT_EQ(value("SELECT COUNT(*) AS V FROM tblJobHeader"), "2");
        EXPECT_EQ(value("SELECT TotSysVolume AS V FROM tblJobData WHERE TankID = 'Old .1'"), "500");
        EXPECT_EQ(value("SELECT integrity_check AS V FROM pragma_integrity_check"), "ok");
    }

    TemporaryHome home;
};

} // namespace

TEST_F(SchemaTest, UpgradesAnOlderFileAndSetsACopyAside) {
    {
        Connection user = openDatabase("User");
        EXPECT_EQ(Schema::versionOf(user), 1);
        Schema::upgrade(user);
        EXPECT_EQ(Schema::versionOf(user), Schema::currentVersion());
        Schema::upgrade(user); // already done
    }
    expectJobs();
    EXPECT_EQ(value("SELECT JobID & Engineer AS V FROM tblJobHeader WHERE Engineer = 'E'"), "OldE");
    EXPECT_EQ(value("SELECT JobID AS V FROM tblJobData"), "Old");
    {
        Rows schedule("User", "tblSchedule", CursorType::Keyset, CommandType::Table);
        EXPECT_EQ(schedule["TankOD"].DefinedSize(), 20) << "a text now";
    }
    ASSERT_EQ(copies().size(), 1);
    EXPECT_TRUE(copies().first().endsWith(" before upgrade.mdb"));
    QFile::remove(file());
    QFile::copy(home.dataFolder() + "/backups/" + copies().first(), file());
    expectJobs();
    EXPECT_EQ(Schema::versionOf(openDatabase("User")), 1);
}

// Every letter compares without regard to case, in keys, in statements and in LIKE.
TEST_F(SchemaTest, LettersOfAllScriptsCompareWithoutCase) {
    Connection user = openDatabase("User");
    run("INSERT INTO tblJobHeader (JobID, Engineer) VALUES ('Ökohaus', 'MÜLLER'); "
        "INSERT INTO tblJobData (TankID, TankNo, JobID) VALUES ('Ökohaus.1', 1, 'Ökohaus')");
    Schema::upgrade(user);
    EXPECT_EQ(Schema::versionOf(user), Schema::currentVersion());
    EXPECT_EQ(value("SELECT COUNT(*) AS V FROM tblJobHeader WHERE JobID = 'ökohaus'"), "1");
    EXPECT_EQ(value("SELECT JobID AS V FROM tblJobHeader WHERE Engineer LIKE '%müll%'"), "Ökohaus");
    EXPECT_EQ(value("SELECT TankID AS V FROM tblJobData WHERE TankID = 'ÖKOHAUS.1'"), "Ökohaus.1");
    EXPECT_THROW(execute("User", "INSERT INTO tblJobHeader (JobID) VALUES ('öKOHAUS')"), DatabaseFault);
    EXPECT_EQ(value("SELECT COUNT(*) AS V FROM tblJobHeader"), "3");
    EXPECT_EQ(value("SELECT integrity_check AS V FROM pragma_integrity_check"), "ok");
    EXPECT_EQ(value("SELECT COUNT(*) AS V FROM sqlite_master WHERE sql LIKE '%NOCASE%'"), "0");
}

// Two jobs whose names would become equal stay two: nothing is renamed, and the upgrade waits until one is
// gone.
TEST_F(SchemaTest, NamesThatWouldCollideAreReportedAndLeftAlone) {
    run("INSERT INTO tblJobHeader (JobID) VALUES ('Öl'), ('öl')");
    Connection user = openDatabase("User");
    for (int start = 0; start < 2; ++start) {
        Schema::upgrade(user);
        EXPECT_EQ(Schema::versionOf(user), 3);
        EXPECT_EQ(DataCheck::check(user).equalNames, QStringList("Öl / öl"));
        EXPECT_EQ(copies().size(), 1) << "no further copy at each start";
    }
    EXPECT_EQ(value("SELECT COUNT(*) AS V FROM tblJobHeader WHERE JobID = 'öl'"), "1");
    execute("User", "DELETE FROM tblJobHeader WHERE JobID = 'öl'");
    Schema::upgrade(user);
    EXPECT_EQ(Schema::versionOf(user), Schema::currentVersion());
    EXPECT_TRUE(DataCheck::check(user).equalNames.isEmpty());
    EXPECT_EQ(value("SELECT JobID AS V FROM tblJobHeader WHERE JobID = 'öL'"), "Öl");
}

TEST_F(SchemaTest, RefusesANewerFileAndLeavesItAlone) {
    run("PRAGMA user_version = 99;");
    Connection user = openDatabase("User");
    try {
        Schema::upgrade(user);
        ADD_FAILURE() << "a newer file was taken";
    } catch (const DatabaseFault& fault) {
        EXPECT_TRUE(QString(fault.what()).contains("newer version of the program")) << fault.what();
    }
    EXPECT_EQ(Schema::versionOf(user), 99);
    EXPECT_TRUE(copies().isEmpty());
}

TEST_F(SchemaTest, AFailingScriptChangesNothing) {
    Connection user = openDatabase("User");
    EXPECT_THROW(Schema::upgrade(user, {"", "DELETE FROM tblJobData; nonsense;"}), DatabaseFault);
    EXPECT_EQ(Schema::versionOf(user), 1);
    expectJobs();
}

// The upgrade runs in a separate program that is killed at some moment; the file must be entirely old or
// entirely new.
TEST_F(SchemaTest, AKillLeavesEitherVersionWhole) {
    const QString original = home.dataFolder() + "/original";
    QByteArray rows; // enough to make the upgrade take a while
    for (int i = 0; i < 20000; ++i)
        rows += "INSERT INTO tblEngineer VALUES ('Engineer " + QByteArray::number(i) + " ');";
    run("BEGIN;" + rows + "COMMIT;");
    ASSERT_TRUE(QFile::copy(file(), original));
    int older = 0;
    int newer = 0;
    for (int round = 0; round < 12; ++round) {
        QFile::remove(file());
        QFile::copy(original, file());
        QProcess upgrading;
        upgrading.start(QCoreApplication::applicationFilePath(),
                        {"--upgrade-data", QDir(home.path()).filePath("user")});
        ASSERT_TRUE(upgrading.waitForReadyRead(30000)); // it reports when it begins
        volatile int spun = 0;
        for (const int spins = round * 4000000; spun < spins;)
            spun = spun + 1;
        upgrading.kill();
        upgrading.waitForFinished();
        const int version = Schema::versionOf(openDatabase("User"));
        (version == 1 ? older : newer) += 1;
        expectJobs();
        EXPECT_EQ(value("SELECT COUNT(*) AS V FROM tblEngineer"), "20000");
        const QString wide =
            value("SELECT COUNT(*) AS V FROM tblEngineer WHERE length(fldName) <> length(rtrim(fldName))");
        EXPECT_EQ(wide, version == 1 ? "20000" : "0") << "all of it or nothing";
    }
    EXPECT_GT(older, 0);
    RecordProperty("upgraded", newer);
}
