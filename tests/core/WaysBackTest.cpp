// The ways back among what may come between: other work, other names, foreign schemas, and faults of each
// write.

#include "core/base/Fault.h"
#include "core/base/Letters.h"
#include "core/store/Backup.h"
#include "core/store/Deletion.h"
#include "core/store/Gateway.h"
#include "core/store/JobCopies.h"
#include "core/store/Schema.h"
#include "core/store/StoredRows.h"
#include "tests/support/Rounds.h"
#include "tests/support/TemporaryHome.h"

#include <gtest/gtest.h>

#include <random>
#include <thread>

#include <sqlite3.h>

using namespace Deletion;
using namespace Gateway;
using JobCopies::Origin;
using JobCopies::Source;
using JobCopies::Today;

namespace {

class WaysBackTest : public testing::Test {
  protected:
    WaysBackTest() {
        home.installData();
        execute("User", "INSERT INTO tblJobHeader (JobID, JobInfo) VALUES ('A', 'first'), ('B', 'second')");
        execute("User", "INSERT INTO tblJobData (TankID, TankNo, JobID, SOPMax, TagID03) VALUES "
                        "('A.1', 1, 'A', 0.3, 'T'), ('A.2', 2, 'A', NULL, NULL), ('B.1', 1, 'B', 30, '')");
    }
    QString file() const { return home.dataFolder() + "/BrennovalUserData.mdb"; }
    static Connection user() { return openDatabase("User"); }
    static QString backup() { return Backup::Make(user(), Backup::Reason::ByHand); }
    static QString value(const QString& sql) {
        Rows rows("User", sql);
        return rows.atEnd() ? QString() : rows["V"].text();
    }
    static void run(const QString& path, const QByteArray& sql) {
        sqlite3* handle = nullptr;
        sqlite3_open(path.toUtf8().constData(), &handle);
        EXPECT_EQ(sqlite3_exec(handle, sql.constData(), nullptr, nullptr, nullptr), SQLITE_OK)
            << sqlite3_errmsg(handle) << sql.toStdString();
        sqlite3_close(handle);
    }

    TemporaryHome home;
};

} // namespace

TEST_F(WaysBackTest, LinesWithoutAHeaderAreNotReplacedUnasked) {
    const Source copy(backup(), Origin::Own);
    execute("User", "DELETE FROM tblJobHeader WHERE JobID = 'A'");
    execute("User", "UPDATE tblJobData SET TagID03 = 'newer' WHERE TankID = 'A.1'");
    const auto jobs = JobCopies::changedJobs(copy, user());
    ASSERT_EQ(jobs.size(), 1U);
    EXPECT_EQ(jobs[0].today, Today::Differs);
}

TEST_F(WaysBackTest, NamesAreTheSameForTheEngineAndAllThatLooksForThem) {
    execute("User", "INSERT INTO tblJobHeader (JobID) VALUES ('Maß'), ('Mass')");
    const Source copy(backup(), Origin::Own);
    execute("User", "DELETE FROM tblJobHeader WHERE JobID LIKE 'Ma%'");
    EXPECT_EQ(JobCopies::changedJobs(copy, user()).size(), 2U);
    EXPECT_TRUE(Schema::collidingNames(copy.data()).isEmpty());
}

TEST_F(WaysBackTest, ADifferenceInTheLastBitIsSeen) {
    const Source copy(backup(), Origin::Own);
    execute("User", "UPDATE tblJobData SET SOPMax = 0.1 + 0.2 WHERE TankID = 'A.1'");
    EXPECT_EQ(JobCopies::changedJobs(copy, user()).size(), 1U);
}

TEST_F(WaysBackTest, TheOldestOfManyCopiesCanBeRestored) {
    const QString oldest = backup();
    execute("User", "DELETE FROM tblJobHeader");
    for (int i = 0; i < 19; ++i)
        backup();
    ASSERT_TRUE(QFile::exists(oldest));
    const Source copy(oldest, Origin::Own);
    EXPECT_NO_THROW(JobCopies::restoreAll(copy, user()));
    EXPECT_EQ(value("SELECT COUNT(*) AS V FROM tblJobHeader"), "2");
    EXPECT_TRUE(QFile::exists(oldest));
}

// What a column, an index or a check computes may take any time and room, and is never asked.
TEST_F(WaysBackTest, TablesThatComputeAreRefused) {
    const QString sound = home.path() + "/job.brennoval";
    JobCopies::Export(user(), "A", sound);
    const QByteArray large = "length(hex(zeroblob(400000000 + length(DateCreated))))";
    const std::pair<const char*, QByteArray> computing[] = {
        {"generated column", "ALTER TABLE tblJobHeader ADD COLUMN Big GENERATED ALWAYS AS (" + large + ")"},
        {"index of an expression", "CREATE INDEX big ON tblJobHeader (" + large + ")"},
        {"index of some rows", "CREATE INDEX big ON tblJobHeader (DateCreated)\nWHERE\n" + large + " > 9"},
        {"check", "ALTER TABLE tblSchedule ADD COLUMN DateCreated cHeck(" + large + " > 0)"},
        {"default", "DROP TABLE tblSchedule; CREATE TABLE tblSchedule (TagID DEFAULT (hex(zeroblob(4e8))))"},
        {"virtual table", "DROP TABLE tblSchedule; CREATE VIRTUAL TABLE tblSchedule USING fts5(TankID)"}};
    for (const auto& [what, sql] : computing) {
        const QString path = home.path() + '/' + what;
        QFile::copy(sound, path);
        run(path, sql);
        EXPECT_THROW(Source(path, Origin::Foreign), DatabaseFault) << what;
        Connection data;
        data.setProperty("Data Source", path);
        data.Open();
        EXPECT_THROW(Schema::upgrade(data), DatabaseFault) << what << ", at the start";
    }
    EXPECT_EQ(JobCopies::allJobs(Source(sound, Origin::Foreign), user()).size(), 1U);
}

TEST(Letters, AreFoldedAlikeByEngineAndTexts) {
    for (char32_t code = 1; code < 0x110000; ++code) {
        if (code >= 0xD800 && code < 0xE000)
            continue;
        const QString one = QString::fromUcs4(&code, 1);
        const QString fold = one.toCaseFolded();
        EXPECT_EQ(compareLetters(one.toStdString(), fold.toStdString()), 0) << int(code);
    }
}

// Whoever made a job meanwhile, here or in another copy of the program, was not asked.
TEST_F(WaysBackTest, AJobThatCameMeanwhileIsNotReplaced) {
    const Source copy(backup(), Origin::Own);
    execute("User", "UPDATE tblJobHeader SET JobInfo = 'newer' WHERE JobID = 'B'");
    EXPECT_THROW(JobCopies::Restore(copy, user(), {"A", "B"}, {"A"}), DatabaseFault);
    EXPECT_EQ(value("SELECT JobInfo AS V FROM tblJobHeader WHERE JobID = 'B'"), "newer");
    EXPECT_EQ(JobCopies::existing({"A", "b", "C"}, user()), QStringList({"A", "b"}));
}

// An older copy is brought up beside itself, whatever the size of its pages, and leaves nothing behind.
TEST_F(WaysBackTest, AnOlderCopyLeavesNothingInTheTemporaryFolder) {
    const QString path = home.path() + "/older.mdb";
    run(path, "PRAGMA page_size = 1024;" + Schema::ownScripts()[0].toUtf8() +
                  "INSERT INTO tblJobHeader (JobID) VALUES ('Old')");
    const QDir temporary(home.path() + "/temporary");
    ASSERT_TRUE(temporary.mkpath("."));
    const QByteArray usual = qgetenv("TMPDIR");
    qputenv("TMPDIR", temporary.path().toLocal8Bit());
    const Source copy(path, Origin::Own);
    qputenv("TMPDIR", usual);
    EXPECT_TRUE(temporary.isEmpty());
    JobCopies::restoreAll(copy, user());
    EXPECT_EQ(value("SELECT group_concat(JobID) AS V FROM tblJobHeader"), "Old");
    EXPECT_EQ(Schema::versionOf(user()), Schema::currentVersion());
}

TEST_F(WaysBackTest, JobsThatSwapATankComeBackTogether) {
    const Source copy(backup(), Origin::Own);
    execute("User", "UPDATE tblJobData SET JobID = 'B' WHERE TankID = 'A.1'");
    JobCopies::Restore(copy, user(), {"A", "B"}, {"A", "B"});
    EXPECT_TRUE(JobCopies::changedJobs(copy, user()).empty());
}

TEST_F(WaysBackTest, AnExportDoesNotReplaceTheData) {
    EXPECT_THROW(JobCopies::Export(user(), "A", file()), DatabaseFault);
    EXPECT_EQ(value("SELECT COUNT(*) AS V FROM tblJobHeader"), "2");
}

TEST_F(WaysBackTest, AFileCutShortIsRefusedAndADamagedOneHarmsNothing) {
    const QString sound = home.path() + "/job.brennoval";
    JobCopies::Export(user(), "A", sound);
    QFile file(sound);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    const auto write = [this](const QByteArray& content) {
        QFile target(home.path() + "/other.brennoval");
        EXPECT_TRUE(target.open(QIODevice::WriteOnly) && target.write(content) == content.size());
        return target.fileName();
    };
    for (qsizetype size = 0; size < bytes.size(); size += 1000)
        EXPECT_THROW(Source(write(bytes.left(size)), Origin::Foreign), DatabaseFault) << size;
    std::mt19937 random(21);
    int taken = 0;
    const int rounds = roundCount(100, 10000);
    for (int round = 0; round < rounds; ++round) {
        QByteArray damaged = bytes;
        for (auto hits = 1 + random() % 20; hits > 0; --hits)
            damaged[qsizetype(random() % std::size_t(bytes.size()))] = char(random());
        try {
            const Source source(write(damaged), Origin::Foreign);
            JobCopies::allJobs(source, user());
            JobCopies::tanksOf(source, user(), "A");
            JobCopies::Restore(source, user(), {"A"}, {"A"});
            ++taken;
        } catch (const Fault&) {
            continue; // refused
        }
        EXPECT_EQ(value("SELECT JobInfo AS V FROM tblJobHeader WHERE JobID = 'B'"), "second");
    }
    EXPECT_LT(taken, rounds);
    EXPECT_EQ(value("SELECT COUNT(*) AS V FROM tblJobHeader"), "2");
    EXPECT_EQ(user().engine().findDamage(Engine::Check::Thorough), "");
}

TEST_F(WaysBackTest, ALockEndsTheRestoreAndChangesNothing) {
    const Source copy(backup(), Origin::Own);
    execute("User", "DELETE FROM tblJobHeader");
    for (const char* lock : {"BEGIN EXCLUSIVE", "BEGIN IMMEDIATE"}) {
        Connection other = user();
        Recordset().Open(lock, other);
        Connection waiting = dbConnection("User");
        waiting.setBusyTimeout(20);
        EXPECT_THROW(
            {
                waiting.Open();
                JobCopies::Restore(copy, waiting, {"A"}, {"A"});
            },
            DataLocked)
            << lock;
        EXPECT_THROW(
            {
                waiting.Open();
                JobCopies::restoreAll(copy, waiting);
            },
            DataLocked)
            << lock;
    }
    { // someone who only reads
        Connection other = user();
        const Transaction reading(other, Transaction::For::Reading);
        Connection waiting = dbConnection("User");
        waiting.setBusyTimeout(20);
        waiting.Open();
        EXPECT_THROW(JobCopies::restoreAll(copy, waiting), DataLocked);
    }
    EXPECT_EQ(value("SELECT COUNT(*) AS V FROM tblJobHeader"), "0");
    EXPECT_EQ(value("SELECT COUNT(*) AS V FROM tblJobData"), "3");
    JobCopies::restoreAll(copy, user());
    EXPECT_EQ(value("SELECT COUNT(*) AS V FROM tblJobHeader"), "2");
}

// Two copies of the program restore at once: each restore is one write, so one of the two states is there.
TEST_F(WaysBackTest, TwoAtOnceLeaveOneOfTheirStates) {
    const QString first = backup();
    execute("User", "UPDATE tblJobHeader SET JobInfo = 'later'");
    execute("User", "UPDATE tblJobData SET TagID03 = 'later'");
    const QString second = backup();
    const auto restore = [](const QString& path) {
        for (int round = 0; round < 8; ++round)
            try {
                JobCopies::restoreAll(Source(path, Origin::Own), user());
                JobCopies::Restore(Source(path, Origin::Own), user(), {"A", "B"}, {"A", "B"});
            } catch (const DataLocked&) {
                continue; // by the other, for longer than it waits
            }
    };
    std::thread other(restore, first);
    restore(second);
    other.join();
    const Connection data = user();
    EXPECT_EQ(data.engine().findDamage(Engine::Check::Thorough), "");
    EXPECT_TRUE(JobCopies::changedJobs(Source(first, Origin::Own), data).empty() ||
                JobCopies::changedJobs(Source(second, Origin::Own), data).empty());
}
