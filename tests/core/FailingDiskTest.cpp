// Each write of every way back fails once, and once more as if the program were killed there: the data are as
// they were or as they were to be, whoever told success is right, and every copy and file is whole.

#include "tests/support/FailingDisk.h"
#include "core/base/Fault.h"
#include "core/store/Backup.h"
#include "core/store/Deletion.h"
#include "core/store/Gateway.h"
#include "core/store/JobCopies.h"
#include "core/store/Schema.h"
#include "tests/support/Rounds.h"
#include "tests/support/TemporaryHome.h"

#include <gtest/gtest.h>

using namespace Deletion;
using namespace Gateway;
using JobCopies::Origin;
using JobCopies::Source;

namespace {

/// All rows of jobs and tanks, and the version of the data.
QString contentsOf(const QString& path) {
    Connection data;
    data.setProperty("Data Source", path);
    data.Open();
    EXPECT_EQ(data.engine().findDamage(Engine::Check::Thorough), "") << path.toStdString();
    QString all = QString::number(Schema::versionOf(data));
    for (const char* sql :
         {"SELECT group_concat(quote(JobID) || quote(JobInfo)) AS V FROM (SELECT * FROM tblJobHeader ORDER "
          "BY JobID)",
          "SELECT group_concat(quote(TankID) || quote(JobID) || quote(Qty) || quote(TagID07)) AS V FROM "
          "(SELECT * FROM tblJobData ORDER BY TankID)"}) {
        Recordset rows;
        rows.Open(sql, data);
        all += '\n' + rows["V"].text();
    }
    return all;
}

class FailingDiskTest : public testing::Test {
  protected:
    FailingDiskTest() {
        home.installData();
        QFile::remove(file());
        QFile empty(file());
        EXPECT_TRUE(empty.open(QIODevice::WriteOnly));
        empty.close();
        Connection user = openDatabase("User");
        user.engine().runScript(Schema::ownScripts()[0], 0);
        Recordset().Open(
            "INSERT INTO tblJobHeader (JobID, JobInfo) VALUES ('Kept', 'As it was'), ('Other', NULL)", user);
        Recordset().Open(
            "INSERT INTO tblJobData (TankID, TankNo, JobID, Qty, TagID07) WITH RECURSIVE n(i) AS (SELECT 1 "
            "UNION "
            "ALL SELECT i + 1 FROM n WHERE i < 60) SELECT 'Kept.' || i, i, 'Kept', i % 9, 'T' || i FROM n",
            user);
        QFile::copy(file(), older);
        Schema::upgrade(user, Schema::ownScripts(), Schema::CopyFirst::No);
        QFile::copy(file(), sound);
        JobCopies::Export(user, "Kept", job);
        Recordset().Open("UPDATE tblJobData SET Qty = 99", user);
        Recordset().Open("DELETE FROM tblJobHeader WHERE JobID = 'Other'", user);
        user.Close();
        QFile::copy(file(), changed);
    }

    QString file() const { return home.dataFolder() + "/BrennovalUserData.mdb"; }

    void begin(const QString& original) const {
        QFile::remove(file() + "-journal");
        QFile::remove(file());
        QFile::copy(original, file());
        QDir(Backup::folderOf(file())).removeRecursively();
    }

    TemporaryHome home;
    const QString older = home.path() + "/older.mdb";     // of the first version
    const QString sound = home.path() + "/sound.mdb";     // the same, brought up
    const QString changed = home.path() + "/changed.mdb"; // in which job and data have become others
    const QString job = home.path() + "/job.brennoval";   // of the sound one
    const QString exported = home.path() + "/exported.brennoval";
};

} // namespace

TEST_F(FailingDiskTest, LeavesTheDataAsTheyWereOrAsTheyWereToBe) {
    const struct {
        const char* what;
        QString before;
        std::function<void()> prepare;
        std::function<void()> run;
    } ways[] = {{"backup", sound, [] {}, [] { Backup::Make(openDatabase("User"), Backup::Reason::ByHand); }},
                {"deletion of a job", sound, [] {}, [] { deleteJob("Kept"); }},
                {"deletion of a tank", sound, [] {}, [] { deleteTankLines({"Kept.7"}); }},
                {"undo", sound, [] { deleteJob("Kept"); },
                 [] {
                     if (const QString problem = undoDeletion(); !problem.isEmpty())
                         throw Fault(1, problem.toStdString());
                 }},
                {"export", sound, [this] { QFile::remove(exported); },
                 [this] { JobCopies::Export(openDatabase("User"), "Kept", exported); }},
                {"import", changed, [] {},
                 [this] {
                     JobCopies::Restore(Source(job, Origin::Foreign), openDatabase("User"), {"Kept"},
                                        {"Kept"});
                 }},
                {"import of an older file", changed, [] {},
                 [this] {
                     JobCopies::Restore(Source(older, Origin::Foreign), openDatabase("User"),
                                        {"Kept", "Other"}, {"Kept"});
                 }},
                {"restore of the whole file", changed, [] {},
                 [this] { JobCopies::restoreAll(Source(sound, Origin::Own), openDatabase("User")); }},
                {"upgrade", older, [] {},
                 [] {
                     Connection user = openDatabase("User");
                     Schema::upgrade(user);
                 }}};
    FailingDisk disk;
    using Then = FailingDisk::Then;
    const int step = roundCount(5, 1); // of the operations that fail
    int faults = 0;
    for (const auto& way : ways) {
        begin(way.before);
        way.prepare();
        const QString before = contentsOf(file());
        FailingDisk::failAt(0, Then::GoOn);
        way.run();
        const int operations = FailingDisk::operations();
        const QString after = contentsOf(file());
        ASSERT_GT(operations, 3) << way.what;
        for (const Then then : {Then::GoOn, Then::StayDead})
            for (int number = 1; number <= operations; number += number < 12 ? 1 : step) {
                const auto where = testing::Message() << way.what << ", operation " << number << " of "
                                                      << operations << (then == Then::GoOn ? "" : ", killed");
                begin(way.before);
                way.prepare();
                ++faults;
                bool told = true;
                FailingDisk::failAt(number, then);
                try {
                    way.run();
                } catch (const Fault&) {
                    told = false;
                }
                FailingDisk::failAt(0, Then::GoOn);
                const QString now = contentsOf(file());
                EXPECT_TRUE(now == after || (!told && now == before)) << where << " told " << told;
                for (const Backup::Copy& copy : Backup::copiesOf(file()))
                    EXPECT_EQ(contentsOf(copy.path),
                              way.what == std::string("undo") ? contentsOf(sound) : before)
                        << where;
                const QStringList halves = QDir(Backup::folderOf(file())).entryList({"*.part"}, QDir::Files) +
                                           QDir(home.path()).entryList({"*.part"}, QDir::Files);
                EXPECT_TRUE(halves.isEmpty()) << where;
                if (QFile::exists(exported)) {
                    EXPECT_EQ(contentsOf(exported), contentsOf(job)) << where;
                }
                if (HasFailure())
                    return;
                if (now == before && before != after) {
                    EXPECT_NO_THROW(way.run()) << where << ", again";
                    EXPECT_EQ(contentsOf(file()), after) << where << ", again";
                }
            }
    }
    RecordProperty("faults", faults);
}
