// A user's file comes into an office whole or not at all, and a job goes back to a file as it was.

#include "tests/app/OfficeCommand.h"

#include "core/store/Gateway.h"
#include "core/store/Schema.h"
#include "core/store/SqliteLetters.h"
#include "core/store/StoredRows.h"
#include "tests/support/TemporaryHome.h"

#include <gtest/gtest.h>

#include <sqlite3.h>

#include <limits>
#include <memory>

using Gateway::readStoredRows;

namespace {

Connection opened(const QString& file) {
    Connection connection;
    connection.setProperty("Data Source", file);
    connection.Open();
    return connection;
}

void executeIn(const QString& file, const QString& statement) {
    const Connection data = opened(file);
    Recordset().Open(statement, data);
}

/// Adds a row with a different value in every column.
void addFullRow(const QString& file, const QString& table, const QHash<QString, QVariant>& given) {
    const Connection data = opened(file);
    Recordset row;
    row.Open(table, data, CursorType::Keyset, CommandType::Table);
    row.AddNew();
    double number = 1.0 / 3;
    for (const QString& name : row.columnNames()) {
        number = number * 7 + std::numeric_limits<double>::epsilon();
        QVariant value = row[name].takesText()        ? QVariant(name.right(3) + "'ä\\\"Ж\n")
                         : row[name].takesFractions() ? QVariant(number)
                                                      : QVariant(qint64(number) % 1000);
        if (name == u"DateCreated")
            value = "2026-11-27 10:11:12";
        if (row[name].DefinedSize() == 3)
            value = "EXP";
        row[name].setStored(given.value(name, value));
    }
    row.Update();
}

QList<QVariantList> rowsOf(const QString& file, const QString& table, const QString& jobID) {
    return readStoredRows(opened(file), table, "JobID", jobID).rows;
}

/// A user's file and an office with two users.
class OfficeImport : public testing::Test {
  protected:
    OfficeImport() : office({"anna", "ben"}) {
        home.installData();
        file = home.dataFolder() + "/BrennovalUserData.mdb";
        shipped = QCoreApplication::applicationDirPath() + "/Data/BrennovalUserData.mdb";
    }

    OfficeRun import(const QStringList& options, const QString& path, const QString& user = "anna") const {
        return runOffice(QStringList{"import", "--user", user} + options + QStringList{office.admin(), path});
    }
    std::string jobs() const {
        return office.value(
            "SELECT string_agg(JobID::text, ' ' ORDER BY office_row) FROM office.tblJobHeader");
    }
    std::string tanks() const {
        return office.value(
            "SELECT string_agg(TankID::text, ' ' ORDER BY office_row) FROM office.tblJobData");
    }
    std::string everything() const {
        QString all;
        for (const char* table :
             {"office.tblJobHeader", "office.tblJobData", "office.tblEngineer", "office.tblContractor",
              "anna.tblFirstTime", "anna.tblUser", "anna.tblRepMaster", "anna.tblOwn"})
            all += QString("%1(SELECT coalesce(string_agg(t::text, '|' ORDER BY office_row), '') FROM %2 t)")
                       .arg(all.isEmpty() ? "" : " || E'\\n' || ", table);
        return office.value("SELECT " + all);
    }
    /// Another file, with the same jobs or none.
    QString copyOf(const QString& original, const QString& name) const {
        QString path = home.dataFolder() + u'/' + name;
        EXPECT_TRUE(QFile::copy(original, path));
        QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner);
        return path;
    }

    TemporaryHome home;
    ToolOffice office;
    QString file;
    QString shipped;
};

std::string said(const OfficeRun& run) {
    return std::to_string(run.exitCode) + ": " + (run.output + run.errors).toStdString();
}

void expectSaid(const OfficeRun& run, int exitCode, const char* text) {
    EXPECT_TRUE(run.exitCode == exitCode && (run.output + run.errors).contains(text)) << text << "\n"
                                                                                      << said(run);
}

} // namespace

TEST_F(OfficeImport, TakesEveryColumnAndGivesJobsBackAsTheyWere) {
    addFullRow(file, "tblJobHeader", {{"JobID", "Full's"}});
    for (const char* tank : {"Full's.2", "Full's.1"}) // not in the order of their keys
        addFullRow(file, "tblJobData", {{"JobID", "full's"}, {"TankID", tank}});
    executeIn(file, "INSERT INTO tblJobHeader (JobID) VALUES ('Empty')");
    executeIn(file,
              QString("INSERT INTO tblJobData (TankID, JobID, ModelNo) VALUES ('Empty.1', 'Empty', '%1')")
                  .arg(QString(60, 'x'))); // longer than any screen lets it be
    for (const char* table : {"tblUser", "tblRepMaster", "tblOwn", "tblEngineer", "tblContractor"})
        addFullRow(file, table, {{"Default", 1}});
    executeIn(file, "UPDATE tblFirstTime SET FirstTime = 1");
    office.execute("INSERT INTO office.tblEngineer (fldName) SELECT upper('ame''ä\\\"Ж' || chr(10))");
    const std::string before = everything();
    expectSaid(import({"--dry-run"}, file), 0, "Dry run");
    EXPECT_EQ(everything(), before);
    const OfficeRun taken = import({}, file);
    expectSaid(taken, 0, "2 jobs with 3 tanks taken over.");
    expectSaid(taken, 0, "1 engineer or contractor is new");
    expectSaid(taken, 0, "are now those of anna");
    EXPECT_EQ(jobs(), "Full's Empty");
    EXPECT_EQ(tanks(), "Full's.2 Full's.1 Empty.1") << "in the order in which they were entered";
    EXPECT_EQ(
        office.value(
            "SELECT count(*) FROM anna.tblUser u, anna.tblRepMaster r, anna.tblOwn o, anna.tblFirstTime f "
            "WHERE "
            "u.PostalCode LIKE 'ode%' AND r.\"default\" = 1 AND o.Logo LIKE 'ogo%' AND f.FirstTime = 1"),
        "1");
    EXPECT_EQ(office.value("SELECT count(*) FROM ben.tblUser"), "0");
    for (const char* job : {"Full's", "EMPTY"}) {
        const QString back = home.dataFolder() + "/back.brennoval-job";
        expectSaid(runOffice({"export-job", "--dry-run", office.admin(), job, back}), 0,
                   "nothing was written");
        EXPECT_FALSE(QFile::exists(back));
        expectSaid(runOffice({"export-job", office.admin(), job, back}), 0, "is written to");
        for (const char* table : {"tblJobHeader", "tblJobData"}) {
            EXPECT_FALSE(rowsOf(back, table, job).isEmpty());
            EXPECT_EQ(rowsOf(back, table, job), rowsOf(file, table, job)) << job << ' ' << table;
        }
        EXPECT_EQ(Schema::versionOf(opened(back)), Schema::currentVersion());
        EXPECT_TRUE(QFile::remove(back));
    }
    const std::string after = everything();
    const OfficeRun again = import({}, file);
    expectSaid(again, 0, "0 jobs with 0 tanks taken over.");
    expectSaid(again, 0, "2 jobs were in the office already");
    expectSaid(again, 0, "those of the file are left out");
    EXPECT_EQ(everything(), after);
    expectSaid(runOffice({"export-job", office.admin(), "Full", "/tmp/x"}), 1, "no job Full");
    expectSaid(runOffice({"export-job", office.admin(), "Empty", file}), 1, "is a database");
}

TEST_F(OfficeImport, JobsWithANumberInUseAreRefusedOrGetAnother) {
    executeIn(file, "INSERT INTO tblJobHeader (JobID, JobDscrptn) VALUES ('A', 'of anna')");
    executeIn(file, "INSERT INTO tblJobHeader (JobID) VALUES ('A-2')");
    executeIn(file, "INSERT INTO tblJobHeader (JobID) VALUES ('B')");
    for (const char* tank : {"A.1", "A.7"})
        executeIn(file, QString("INSERT INTO tblJobData (TankID, TankNo, JobID) VALUES ('%1', %2, 'A')")
                            .arg(tank, QString(tank).last(1)));
    executeIn(file, "INSERT INTO tblJobData (TankID, JobID) VALUES ('C.1', 'C')"); // its job is gone
    office.execute(
        "INSERT INTO office.tblJobHeader (JobID, JobDscrptn) VALUES ('a', 'of ben'), ('A-3', NULL)");
    office.execute("INSERT INTO office.tblJobData (TankID, JobID) VALUES ('a.1', 'a'), ('B.1', 'gone')");
    const std::string before = everything();
    const OfficeRun refused = import({}, file);
    expectSaid(refused, 1, "other jobs with these numbers: A.");
    expectSaid(refused, 1, "Nothing was taken over");
    EXPECT_EQ(everything(), before);
    const OfficeRun taken = import({"--new-numbers"}, file);
    expectSaid(taken, 0, "Job A is taken over as A-4");
    expectSaid(taken, 0, "1 tank without a job left out: C.1.");
    EXPECT_EQ(jobs(), "a A-3 A-4 A-2 B");
    EXPECT_EQ(tanks(), "a.1 B.1 A-4.1 A-4.7");
    EXPECT_EQ(office.value("SELECT JobDscrptn FROM office.tblJobHeader WHERE JobID = 'A-4'"), "of anna");
    const std::string after = everything();
    expectSaid(import({"--new-numbers"}, file), 0, "3 jobs were in the office already");
    EXPECT_EQ(everything(), after) << "taken over before under its new number";
    // Neither is a job the same whose header alone is.
    executeIn(file, "INSERT INTO tblJobHeader (JobID) VALUES ('E')");
    executeIn(file, "INSERT INTO tblJobData (TankID, JobID, Qty) VALUES ('E.1', 'E', 1)");
    office.execute("INSERT INTO office.tblJobHeader (JobID) VALUES ('E')");
    office.execute("INSERT INTO office.tblJobData (TankID, JobID, Qty) VALUES ('E.1', 'E', 2)");
    expectSaid(import({}, file), 1, "numbers: A, E.");
    office.execute("UPDATE office.tblJobData SET Qty = 1 WHERE TankID = 'E.1'");
    expectSaid(import({}, file), 1, "numbers: A.");
    // A tank whose key belongs to another job is a collision too.
    executeIn(file, "INSERT INTO tblJobHeader (JobID) VALUES ('D')");
    executeIn(file, "INSERT INTO tblJobData (TankID, TankNo, JobID) VALUES ('b.1', 1, 'D')");
    expectSaid(import({}, file), 1, "numbers: A, D.");
    expectSaid(import({"--new-numbers"}, file), 0, "Job D is taken over as D-2");
    EXPECT_EQ(office.value("SELECT TankID FROM office.tblJobData WHERE JobID = 'D-2'"), "D-2.1");
}

TEST_F(OfficeImport, ConversionsOfSteelTanksJoinThoseOfTheOffice) {
    const QString other = copyOf(shipped, "other.mdb");
    for (const QString& path : {file, other}) {
        executeIn(path, "INSERT INTO tblJobHeader (JobID) VALUES ('CONVERT')");
        for (int number = 1; number <= 2; ++number)
            executeIn(path, QString("INSERT INTO tblJobData (TankID, TankNo, JobID, TotSysVolume) "
                                    "VALUES ('CONVERT.%1', %1, 'CONVERT', %2)")
                                .arg(number)
                                .arg(path == file ? number : 10 * number));
    }
    expectSaid(import({}, file), 0, "1 job with 2 tanks taken over.");
    executeIn(other, "UPDATE tblJobHeader SET JobDscrptn = 'other'");
    expectSaid(import({}, other, "ben"), 0, "2 conversions of steel tanks join");
    EXPECT_EQ(office.value(
                  "SELECT string_agg(TankID || ' ' || TankNo || ' ' || TotSysVolume, ', ' ORDER BY TankNo) "
                  "FROM office.tblJobData"),
              "CONVERT.1 1 1, CONVERT.2 2 2, CONVERT.3 3 10, CONVERT.4 4 20");
    expectSaid(import({}, other, "ben"), 0, "0 conversions of steel tanks join");
}

TEST_F(OfficeImport, AFileIsTakenOverWholeOrNotAtAll) {
    const struct {
        const char* name;
        const char* statement;
        const char* said;
    } cases[] = {
        {"text in a number", "UPDATE tblJobData SET Qty = 'two'", "column Qty of tblJobData, row 1 (J.1)"},
        {"fraction in a whole number", "UPDATE tblJobData SET TankNo = 1.5", "column TankNo"},
        {"infinity", "UPDATE tblJobData SET SOPMin = 9e999", "column SOPMin"},
        {"too large", "UPDATE tblJobData SET Qty = 3000000000", "column Qty"},
        {"no date", "UPDATE tblJobHeader SET DateCreated = 'yesterday'", "something that is no date"},
        {"NUL", "UPDATE tblJobHeader SET JobInfo = 'a' || char(0) || 'b'", "a character that is none"},
        {"newer", "PRAGMA user_version = 99", "newer version"},
        {"none of ours", "DROP TABLE tblJobData", "no jobs of Brennoval"},
        {"with a view",
         "CREATE VIEW tblOther AS SELECT * FROM tblJobHeader; DROP TABLE tblUser; CREATE VIEW tblUser AS "
         "SELECT 1",
         "tblUser"},
    };
    executeIn(file, "INSERT INTO tblJobHeader (JobID) VALUES ('J')");
    executeIn(file, "INSERT INTO tblJobData (TankID, JobID) VALUES ('J.1', 'J')");
    const std::string before = everything();
    for (const auto& row : cases) {
        SCOPED_TRACE(row.name);
        const QString path = copyOf(file, QString(row.name) + ".mdb");
        sqlite3* handle = nullptr;
        ASSERT_EQ(sqlite3_open(path.toUtf8().constData(), &handle), SQLITE_OK);
        const std::unique_ptr<sqlite3, int (*)(sqlite3*)> closing(handle, sqlite3_close);
        SqliteLetters::add(handle);
        ASSERT_EQ(sqlite3_exec(handle, row.statement, nullptr, nullptr, nullptr), SQLITE_OK)
            << sqlite3_errmsg(handle);
        expectSaid(import({"--new-numbers"}, path), 1, row.said);
        EXPECT_EQ(everything(), before);
    }
    expectSaid(import({}, file, "carl"), 1, "no user carl");
    EXPECT_EQ(everything(), before) << "not even the jobs";
    const QString cut = copyOf(file, "cut.mdb");
    EXPECT_TRUE(QFile::resize(cut, QFileInfo(cut).size() - 1000));
    expectSaid(import({}, cut), 1, "damaged");
    // A user takes over the user's own file.
    expectSaid(runOffice({"import", office.uri("ben"), file}), 0, "1 job with 1 tank taken over.");
    EXPECT_EQ(jobs(), "J");
}

TEST_F(OfficeImport, AnOlderFileIsTakenOverAndStaysAsItIs) {
    const QString older = home.dataFolder() + "/older.mdb";
    sqlite3* handle = nullptr;
    ASSERT_EQ(sqlite3_open(older.toUtf8().constData(), &handle), SQLITE_OK);
    const std::unique_ptr<sqlite3, int (*)(sqlite3*)> closing(handle, sqlite3_close);
    ASSERT_EQ(
        sqlite3_exec(
            handle,
            (Schema::ownScripts().first() +
             "INSERT INTO tblJobHeader (JobID) VALUES ('Öl'); INSERT INTO tblUser (PostalCode) VALUES ('1');"
             "INSERT INTO tblJobData (TankID, JobID, Qty) VALUES ('Öl.1', 'Öl', 2);")
                .toUtf8()
                .constData(),
            nullptr, nullptr, nullptr),
        SQLITE_OK);
    QFile bytes(older);
    ASSERT_TRUE(bytes.open(QIODevice::ReadOnly));
    const QByteArray before = bytes.readAll();
    expectSaid(import({}, older), 0, "1 job with 1 tank taken over.");
    EXPECT_EQ(office.value("SELECT Qty FROM office.tblJobData WHERE JobID = 'öL'"), "2");
    bytes.seek(0);
    EXPECT_EQ(bytes.readAll(), before);
    ASSERT_EQ(
        sqlite3_exec(handle, "INSERT INTO tblJobHeader (JobID) VALUES ('öl')", nullptr, nullptr, nullptr),
        SQLITE_OK);
    expectSaid(import({}, older), 1, "differ only in case: Öl / öl");
}
