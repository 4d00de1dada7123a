// A restored, imported or undeleted job equals the original in every column; foreign files are refused.

#include "core/store/JobCopies.h"
#include "core/base/Fault.h"
#include "core/store/Backup.h"
#include "core/store/Deletion.h"
#include "core/store/Gateway.h"
#include "core/store/Schema.h"
#include "core/store/StoredRows.h"
#include "tests/support/BothEngines.h"

#include <gtest/gtest.h>

#include <array>
#include <functional>

using namespace Deletion;
using namespace Gateway;
using JobCopies::Origin;
using JobCopies::Source;

namespace {

/// One job with a different value in every column, and one of nulls.
class JobCopiesTest : public BothEngines {
  protected:
    JobCopiesTest() {
        const Connection user = openDatabase("User");
        for (const char* table : {"tblJobHeader", "tblJobData"}) {
            Recordset row;
            row.Open(table, user, CursorType::Keyset, CommandType::Table);
            row.AddNew();
            double value = 0.1;
            for (const QString& name : row.columnNames()) {
                value += 1.7;
                row[name].setStored(row[name].takesMoments() ? QVariant("2026-03-14 15:09:26")
                                    : row[name].takesText()  ? QVariant(name.right(3) + "'s \"ä\" ")
                                    : name == "TankNo" || name == "Qty" ? QVariant(qint64(value))
                                                                        : QVariant(value));
            }
            row["JobID"].setStored("Full's");
            row.Update();
        }
        execute("User", "INSERT INTO tblJobHeader (JobID) VALUES ('Empty')");
        execute("User", "INSERT INTO tblJobData (TankID, JobID) VALUES ('Empty.1', 'Empty')");
        before = contents();
    }

    static QList<QList<QVariantList>> contents() {
        const Connection user = openDatabase("User");
        QList<QList<QVariantList>> all;
        for (const char* table : {"tblJobHeader", "tblJobData"})
            for (const char* job : {"Full's", "Empty"})
                all.append(readStoredRows(user, table, "JobID", job).rows);
        return all;
    }

    static void removeJobs() {
        execute("User", "DELETE FROM tblJobHeader");
        execute("User", "DELETE FROM tblJobData");
    }

    /// A job's file, as exported.
    QString exported() const {
        QString path = home.path() + "/job.brennoval";
        JobCopies::Export(openDatabase("User"), "Full's", path);
        return path;
    }

    QList<QList<QVariantList>> before;
};
ON_BOTH_ENGINES(JobCopiesTest);

/// What copies of a file are for. An office has none.
class FileCopiesTest : public JobCopiesTest {};
INSTANTIATE_TEST_SUITE_P(Engines, FileCopiesTest, testing::Values("File"));

class TravellingJobTest : public BothEngines {};
ON_BOTH_ENGINES(TravellingJobTest);

void change(const QString& path, const QString& statement) {
    Connection file;
    file.setProperty("Data Source", path);
    file.Open();
    Recordset().Open(statement, file);
}

} // namespace

TEST_P(FileCopiesTest, EveryColumnComesBack) {
    const QString backup = Backup::Make(openDatabase("User"), Backup::Reason::ByHand);
    const QString file = exported();
    removeJobs();
    JobCopies::Restore(Source(backup, Origin::Own), openDatabase("User"), {"Full's", "Empty"}, {});
    EXPECT_EQ(contents(), before) << "restored";
    JobCopies::Restore(Source(file, Origin::Own), openDatabase("User"), {"Full's"}, {"Full's"});
    EXPECT_EQ(contents(), before) << "over itself";
    removeJobs();
    JobCopies::restoreAll(Source(backup, Origin::Own), openDatabase("User"));
    EXPECT_EQ(contents(), before) << "the whole file";
}

TEST_P(JobCopiesTest, EveryColumnComesBackByFileAndByUndo) {
    const Source file(exported(), Origin::Own);
    execute("User", "DELETE FROM tblJobHeader WHERE JobID = 'Full''s'");
    execute("User", "DELETE FROM tblJobData WHERE JobID = 'Full''s'");
    JobCopies::Restore(file, openDatabase("User"), {"Full's"}, {});
    EXPECT_EQ(contents(), before) << "imported";
    deleteJob("Full's");
    deleteTankLines({"Empty.1"});
    EXPECT_NE(contents(), before);
    EXPECT_EQ(undoDeletion(), "");
    EXPECT_EQ(undoDeletion(), "");
    EXPECT_EQ(contents(), before) << "undone";
}

// A duplicate differs in its keys and in the date of its header, which is today's.
TEST_P(JobCopiesTest, ADuplicateHasEveryOtherColumn) {
    execute("User", "UPDATE tblJobData SET TankID = 'FULL''S.7' WHERE JobID = 'Full''s'");
    execute("User", "INSERT INTO tblJobData (TankID, JobID) VALUES ('Empty.2', 'Empty')"); // without numbers
    execute("User", "INSERT INTO tblJobData (TankID, JobID) VALUES ('Left.1', 'Left')");
    const Connection user = openDatabase("User");
    before = contents();
    for (const char* taken : {"EMPTY", "Left"})
        EXPECT_FALSE(JobCopies::duplicate(user, "Full's", taken)) << taken;
    EXPECT_THROW(JobCopies::duplicate(user, "None", "New"), RecordGone);
    EXPECT_EQ(contents(), before);
    const QDate today = QDate::currentDate();
    const auto rowsOf = [&](const char* table, const QString& job, const QStringList& except) {
        StoredRows stored = readStoredRows(user, table, "JobID", job);
        for (QVariantList& row : stored.rows)
            for (const QString& column : except)
                row[stored.columns.indexOf(column)].clear();
        return stored.rows;
    };
    for (const auto& [job, copy, tank] :
         {std::array{"Full's", "New", "New.7"}, {"Empty", "It's new", "It's new.2"}}) {
        ASSERT_TRUE(JobCopies::duplicate(user, job, copy));
        EXPECT_TRUE(hasRow(user, "tblJobData", "TankID", tank)) << tank;
        EXPECT_EQ(rowsOf("tblJobData", copy, {"JobID", "TankID"}),
                  rowsOf("tblJobData", job, {"JobID", "TankID"}));
        EXPECT_EQ(rowsOf("tblJobHeader", copy, {"JobID", "DateCreated"}),
                  rowsOf("tblJobHeader", job, {"JobID", "DateCreated"}));
        Rows header("User", "SELECT DateCreated FROM tblJobHeader WHERE JobID = ?", {QString(copy)});
        EXPECT_GE(header["DateCreated"].date(), today);
    }
    EXPECT_EQ(contents(), before);
}

// Changing any single column makes it a different job.
TEST_P(FileCopiesTest, ADifferenceInAnyColumnIsDetected) {
    const Source copy(Backup::Make(openDatabase("User"), Backup::Reason::ByHand), Origin::Own);
    EXPECT_TRUE(JobCopies::changedJobs(copy, openDatabase("User")).empty());
    for (const char* table : {"tblJobHeader", "tblJobData"})
        for (const QString& column :
             Rows("User", table, CursorType::ForwardOnly, CommandType::Table)->columnNames()) {
            if (column == "JobID")
                continue;
            const Connection user = openDatabase("User");
            user.engine().begin();
            Recordset().Open("UPDATE " + QString(table) + " SET [" + column + "] = 5 WHERE JobID = 'Full''s'",
                             user);
            const auto jobs = JobCopies::changedJobs(copy, user);
            ASSERT_EQ(jobs.size(), 1U) << column.toStdString();
            EXPECT_EQ(jobs[0].today, JobCopies::Today::Differs);
            user.engine().rollback();
        }
    deleteJob("Empty");
    ASSERT_EQ(JobCopies::changedJobs(copy, openDatabase("User")).size(), 1U);
}

TEST_P(FileCopiesTest, AnOlderFileIsUpgradedInACopy) {
    const QString path = home.path() + "/older.brennoval";
    {
        QFile empty(path);
        ASSERT_TRUE(empty.open(QIODevice::WriteOnly));
        Connection file;
        file.setProperty("Data Source", path);
        file.Open();
        file.engine().runScript(Schema::ownScripts()[0], 0); // the first version stored no version number
        Recordset().Open("INSERT INTO tblJobHeader (JobID) VALUES ('Old')", file);
    }
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    JobCopies::Restore(Source(path, Origin::Foreign), openDatabase("User"), {"Old"}, {});
    EXPECT_TRUE(hasRow(openDatabase("User"), "tblJobHeader", "JobID", "Old"));
    file.seek(0);
    EXPECT_EQ(file.readAll(), bytes);
}

TEST_P(FileCopiesTest, HostileFilesAreRefusedAndChangeNothing) {
    execute("User", "UPDATE tblJobData SET TankID = 'Full''s.1', DateCreated = NULL WHERE JobID = 'Full''s'");
    execute("User", "UPDATE tblJobHeader SET DateCreated = NULL");
    const QString sound = exported();
    removeJobs();
    execute("User", "INSERT INTO tblJobHeader (JobID) VALUES ('Mine')");
    execute("User", "INSERT INTO tblJobData (TankID, JobID) VALUES ('Mine.1', 'Mine')");
    const std::pair<const char*, const char*> hostile[] = {
        {"PRAGMA user_version = 99", "newer version"},
        {"CREATE TRIGGER t AFTER INSERT ON tblJobData BEGIN DELETE FROM tblJobHeader; END", "none of"},
        {"DROP TABLE tblJobData", "no jobs"},
        {"UPDATE tblJobHeader SET Engineer = printf('%.*c', 3000000, 'x')", "too long"},
        {"UPDATE tblJobData SET SOPMax = 'lots'", "wrong kind"},
        {"UPDATE tblJobData SET SOPMax = 9e999", "wrong kind"},
        {"UPDATE tblJobData SET TankNo = 1e10", "wrong kind"},
        {"UPDATE tblJobData SET TankID = TankID || char(32)", "none in"},
        {"UPDATE tblJobHeader SET JobInfo = char(65, 0, 66)", "none in"},
        {"INSERT INTO tblJobHeader (JobID) WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n "
         "WHERE "
         "i < 1001) SELECT 'J' || i FROM n",
         "more jobs"},
        {"UPDATE tblJobData SET TankID = 'Mine.1'", "another job"}};
    int number = 0;
    for (const auto& [statement, why] : hostile) {
        const QString path = home.path() + QString("/hostile%1").arg(++number);
        QFile::copy(sound, path);
        change(path, statement);
        try {
            JobCopies::Restore(Source(path, Origin::Foreign), openDatabase("User"), {"Full's"}, {});
            ADD_FAILURE() << statement << " was taken";
        } catch (const DatabaseFault& fault) {
            EXPECT_TRUE(QString(fault.what()).contains(why)) << fault.what();
        }
        Rows jobs("User", "SELECT COUNT(*) AS N FROM tblJobHeader");
        EXPECT_EQ(jobs["N"].number(), 1) << statement;
    }
    // An endless query in place of a table is never run.
    const QString path = home.path() + "/endless";
    QFile::copy(sound, path);
    change(path, "DROP TABLE tblJobHeader");
    change(path,
           "CREATE VIEW tblJobHeader AS WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n) "
           "SELECT i AS JobID FROM n");
    EXPECT_THROW(Source(path, Origin::Foreign), DatabaseFault);
    Connection user;
    user.setProperty("Data Source", path);
    user.Open();
    EXPECT_THROW(Schema::upgrade(user), DatabaseFault) << "nor at the start";
    // The sound file still works.
    JobCopies::Restore(Source(sound, Origin::Foreign), openDatabase("User"), {"Full's"}, {});
    EXPECT_TRUE(hasRow(openDatabase("User"), "tblJobData", "TankID", "Full's.1"));
}

TEST_P(FileCopiesTest, AnExportLeavesNoHalfFileAndNothingButPlainFiles) {
    const QString folder = home.path() + "/folder.brennoval";
    QDir().mkpath(folder);
    EXPECT_THROW(JobCopies::Export(openDatabase("User"), "Full's", folder), DatabaseFault);
    EXPECT_THROW(JobCopies::Export(openDatabase("User"), "None", home.path() + "/x.brennoval"), RecordGone);
    EXPECT_TRUE(QDir(home.path()).entryList({"*.part*", "x.brennoval"}).isEmpty());
    const QString file = exported();
    QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner);
    const auto mode = QFile::permissions(file);
    exported();
    EXPECT_EQ(QFile::permissions(file), mode);
}

// A file of a job fits the data of either engine, and every bit of it arrives.
TEST_P(TravellingJobTest, ArrivesWhole) {
    execute("User", "INSERT INTO tblJobHeader (JobID, DateCreated) VALUES ('A', '2026-03-14 15:09:26')");
    execute("User", "INSERT INTO tblJobData (TankID, TankNo, JobID, SOPMax, TagID03, DateCreated) VALUES "
                    "('A.1', 1, 'A', 0.1 + 0.2, 'Ökohaus ß', '2026-03-14 15:09:26'), "
                    "('A.2', 2, 'A', NULL, '', NULL)");
    const QString path = home.path() + "/job.brennoval";
    JobCopies::Export(openDatabase("User"), "A", path);
    const Source file(path, Origin::Foreign);
    const auto today = [&] { return JobCopies::allJobs(file, openDatabase("User")).at(0).today; };
    EXPECT_EQ(today(), JobCopies::Today::Same);
    execute("User", "UPDATE tblJobData SET SOPMax = 0.3 WHERE TankID = 'A.1'"); // differs in the last bit
    EXPECT_EQ(today(), JobCopies::Today::Differs);
    execute("User", "DELETE FROM tblJobData");
    EXPECT_EQ(today(), JobCopies::Today::Differs) << "its header is there";
    execute("User", "DELETE FROM tblJobHeader");
    EXPECT_EQ(today(), JobCopies::Today::Missing);
    JobCopies::Restore(file, openDatabase("User"), {"A"}, {});
    EXPECT_EQ(today(), JobCopies::Today::Same);
}
