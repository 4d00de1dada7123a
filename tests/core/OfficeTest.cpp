// What only an office has: many users at once, a server that goes and comes back, passwords, versions and
// rights.

#include "core/base/Fault.h"
#include "core/postgres/OfficeSchema.h"
#include "core/store/Backup.h"
#include "core/store/DataState.h"
#include "core/store/Deletion.h"
#include "core/store/JobCopies.h"
#include "core/store/NameList.h"
#include "core/store/NewTankLines.h"
#include "core/store/OfficeEngines.h"
#include "core/store/Schema.h"
#include "tests/support/OnOffice.h"

#include <atomic>
#include <thread>

using namespace Gateway;

namespace {

class OfficeTest : public OnOffice {
  protected:
    ~OfficeTest() override { onPasswordNeeded({}); }

    static void addJob(const QString& jobID) {
        execute("User", "INSERT INTO tblJobHeader (JobID, JobInfo) VALUES (?, 'first')", {jobID});
    }
    /// The row of a job, as a user has it open.
    static void openJob(Recordset& job, const Connection& user) {
        job.Open("SELECT * FROM tblJobHeader WHERE JobID = 'A'", user, CursorType::Keyset);
    }
    Connection connectionOf(const QString& user) const {
        Connection data;
        data.setProperty("Data Source", office.address(user));
        data.Open();
        return data;
    }
};

} // namespace

TEST_F(OfficeTest, NothingThatAnotherUserWroteIsOverwrittenSilently) {
    const char* const changed = "Could not update; currently locked or changed.";
    addJob("A");
    const Connection anna = openDatabase("User");
    const Connection ben = connectionOf("ben");
    Recordset mine;
    openJob(mine, anna);
    Recordset().Open("UPDATE tblJobHeader SET JobInfo = 'of Ben' WHERE JobID = 'A'", ben);
    mine["JobInfo"] = "of Anna";
    EXPECT_EQ(failureOf([&] { mine.Update(); }), changed);
    EXPECT_EQ(failureOf([&] { mine.Delete(); }), changed);
    EXPECT_EQ(value("SELECT JobInfo AS V FROM tblJobHeader"), "of Ben");
    openJob(mine, anna); // read once more, it can be written, and what was written once more
    for (const char* text : {"of Anna", "of Anna, too"}) {
        mine["JobInfo"] = text;
        mine.Update();
        EXPECT_EQ(value("SELECT JobInfo AS V FROM tblJobHeader"), text);
    }
    Recordset().Open("DELETE FROM tblJobHeader WHERE JobID = 'A'", ben);
    mine["JobInfo"] = "of nobody";
    EXPECT_EQ(failureOf([&] { mine.Update(); }), changed);
    EXPECT_EQ(value("SELECT COUNT(*) AS V FROM tblJobHeader"), "0");
}

TEST_F(OfficeTest, ASaveWaitsForAnotherAndThenSeesIt) {
    addJob("A");
    Connection anna = dbConnection("User");
    anna.setBusyTimeout(50);
    anna.Open();
    const Connection ben = connectionOf("ben");
    {
        Transaction saving(ben);
        Recordset his;
        openJob(his, ben);
        EXPECT_NE(failureOf<DataLocked>([&] {
                      const Transaction waiting(anna);
                      Recordset hers;
                      openJob(hers, anna);
                  }),
                  "");
        his["JobInfo"] = "of Ben";
        his.Update();
        saving.commit();
    }
    Transaction saving(anna);
    Recordset mine;
    openJob(mine, anna);
    EXPECT_EQ(mine["JobInfo"].text(), "of Ben");
    mine["JobInfo"] = "of Anna";
    mine.Update();
    saving.commit();
    EXPECT_EQ(value("SELECT JobInfo AS V FROM tblJobHeader"), "of Anna");
}

// Ten users add tanks to one job at once: each is told numbers of its own, without a gap.
TEST_F(OfficeTest, NumbersOfTanksNeverCollide) {
    constexpr int users = 10;
    constexpr int saves = 12;
    addJob("A");
    std::vector<QStringList> told(users);
    std::atomic<int> failures = 0;
    std::vector<std::thread> all;
    all.reserve(users);
    for (int i = 0; i < users; ++i)
        all.emplace_back([&, i] {
            for (int save = 0; save < saves; ++save)
                try {
                    told[std::size_t(i)] += Records::addTankLines("A", std::vector<TankLine>(1 + save % 3));
                } catch (const Fault&) {
                    ++failures;
                }
        });
    for (std::thread& one : all)
        one.join();
    EXPECT_EQ(failures, 0);
    QStringList keys;
    for (const QStringList& some : told)
        keys += some;
    QStringList expected;
    for (int number = 1; number <= users * saves * 2; ++number)
        expected.append(QString("A.%1").arg(number));
    keys.sort();
    expected.sort();
    EXPECT_EQ(keys, expected);
    EXPECT_EQ(value("SELECT COUNT(*) & '/' & MAX(TankNo) AS V FROM tblJobData"),
              QString("%1/%1").arg(expected.size()));
}

// A row that fails among many shows at the latest when the transaction ends, and then none is there.
TEST_F(OfficeTest, AFailingRowOfManyUndoesAll) {
    for (const int failing : {1, 2, 40}) {
        const Connection user = openDatabase("User");
        EXPECT_THROW(
            {
                Transaction write(user);
                Recordset jobs;
                jobs.Open("tblJobHeader", user, CursorType::Keyset, CommandType::Table);
                for (int i = 0; i < 50; ++i) {
                    jobs.AddNew();
                    jobs["JobID"] = i == failing ? QString("job 0") : QString("Job %1").arg(i);
                    jobs.Update();
                }
                write.commit();
            },
            DatabaseFault)
            << failing;
        EXPECT_EQ(value("SELECT COUNT(*) AS V FROM tblJobHeader"), "0");
    }
}

TEST_F(OfficeTest, ATransactionThatFailedIsNotTakenForStored) {
    const Connection user = openDatabase("User");
    Transaction write(user);
    Recordset().Open("INSERT INTO tblEngineer (fldName) VALUES ('Reed')", user);
    EXPECT_THROW(Recordset().Open("INSERT INTO tblNone (x) VALUES (1)", user), DatabaseFault);
    EXPECT_NE(failureOf([&] { write.commit(); }), "");
}

// Whatever an event did, nothing is locked and no transaction is open once it is over; the connection itself
// serves the next one.
TEST_F(OfficeTest, OnlyTheConnectionOutlivesAnEvent) {
    addJob("A");
    QSet<QString> servers;
    for (int event = 0; event < 5; ++event) {
        const Connection user = openDatabase("User");
        Recordset process;
        process.Open("SELECT pg_backend_pid() AS V", user);
        servers.insert(process["V"].text());
        Recordset job;
        openJob(job, user);
        const Transaction leftOpen(user);
        job["JobInfo"] = "never stored";
        job.Update();
    }
    EXPECT_EQ(servers.size(), 1);
    Postgres::Connection keeper = office.connection("postgres");
    EXPECT_EQ(keeper
                  .run("SELECT count(*) FROM pg_stat_activity WHERE datname = current_database() AND "
                       "usename = 'anna' AND state <> 'idle'")
                  .text(0, 0),
              "0");
    EXPECT_EQ(value("SELECT JobInfo AS V FROM tblJobHeader"), "first");
}
TEST_F(OfficeTest, TheCounterTellsEveryWrite) {
    const auto now = [] { return readDataState("A", {}).value_or(DataState()); };
    const quint32 before = now().version;
    EXPECT_EQ(now().version, before);
    const Connection ben = connectionOf("ben");
    {
        Transaction write(ben);
        Recordset().Open("INSERT INTO tblJobHeader (JobID) VALUES ('A')", ben);
        const DataState during = now(); // a reader that looks now must look again afterwards
        EXPECT_FALSE(during.jobExists);
        write.commit();
        EXPECT_NE(now().version, during.version);
    }
    EXPECT_NE(now().version, before);
    EXPECT_TRUE(now().jobExists);
    const quint32 stored = now().version;
    execute("User", "INSERT INTO tblUser (PostalCode) VALUES ('1')");
    EXPECT_NE(now().version, stored) << "another copy of the program may show the user's own tables";
    // What others do in their own tables, or elsewhere on the server, is no change.
    const quint32 own = now().version;
    const OfficeDatabase another;
    another.connection().run("INSERT INTO tblJobHeader (JobID) VALUES ('B')");
    Postgres::Connection elsewhere = another.connection();
    const Postgres::Transaction underWay(elsewhere);
    elsewhere.run("INSERT INTO tblJobHeader (JobID) VALUES ('C')");
    const Transaction filling(ben);
    Recordset().Open("INSERT INTO tblSchedule (TankID) VALUES ('A.1')", ben);
    EXPECT_EQ(now().version, own);
}

TEST_F(OfficeTest, AKilledServerIsAnErrorAndTheNextEventConnectsAnew) {
    OfficeServer server(OfficeServer::Of::Test);
    const OfficeDatabase mortal(server);
    mortal.use();
    addJob("A");
    {
        const Connection user = openDatabase("User");
        Transaction write(user);
        Recordset().Open("INSERT INTO tblJobHeader (JobID) VALUES ('B')", user);
        server.kill();
        const QString failure = failureOf([&] { write.commit(); });
        EXPECT_TRUE(failure.startsWith("The connection to the office's database is lost"))
            << failure.toStdString();
        EXPECT_FALSE(failure.contains("nevertheless")) << "the server was gone before";
    }
    EXPECT_NE(failureOf([] { openDatabase("User"); }), "");
    EXPECT_FALSE(readDataState("A", {}).has_value());
    server.startAgain();
    EXPECT_EQ(value("SELECT MAX(JobID) & COUNT(*) AS V FROM tblJobHeader"), "A1");
    addJob("C");
    server.kill();
    server.startAgain();
    EXPECT_EQ(value("SELECT MAX(JobID) & COUNT(*) AS V FROM tblJobHeader"), "C2") << "what was told is there";
}

// Nobody can know whether the server had stored what it was about to, so the user is told to look.
TEST_F(OfficeTest, AConnectionThatIsLostDuringTheCommitLeavesNobodySure) {
    office.connection("postgres")
        .runScript("CREATE FUNCTION office.die() RETURNS trigger LANGUAGE plpgsql AS $$BEGIN PERFORM "
                   "pg_terminate_backend(pg_backend_pid()); PERFORM pg_sleep(60); RETURN NULL; END$$;"
                   "CREATE CONSTRAINT TRIGGER die AFTER INSERT ON office.tblJobHeader DEFERRABLE INITIALLY "
                   "DEFERRED FOR EACH ROW EXECUTE FUNCTION office.die()");
    const QString failure = failureOf([] {
        const Connection user = openDatabase("User");
        Transaction write(user);
        Recordset().Open("INSERT INTO tblJobHeader (JobID) VALUES ('A')", user);
        write.commit();
    });
    EXPECT_TRUE(failure.contains("may have been stored nevertheless")) << failure.toStdString();
}
TEST_F(OfficeTest, APasswordIsAskedForOnceAndShownNowhere) {
    office.addUser("asked");
    office.connection("postgres").run("ALTER ROLE asked PASSWORD 'tide''s in'");
    useAddress(office.address("asked"));
    EXPECT_NE(failureOf<PasswordNeeded>([] { openDatabase("User"); }), "") << "nobody is there to be asked";
    QStringList answers = {""};
    QStringList reasons;
    onPasswordNeeded([&](const QString& address, const QString& why) {
        EXPECT_TRUE(address.startsWith(office.address("asked")));
        reasons.append(why);
        return answers.isEmpty() ? QString() : answers.takeFirst();
    });
    EXPECT_NE(failureOf<RefusedData>([] { openDatabase("User"); }), "") << "the user cancels";
    answers = QStringList{"wrong", "tide's in"};
    reasons.clear();
    const Connection user = openDatabase("User");
    ASSERT_EQ(reasons.size(), 2);
    EXPECT_EQ(reasons[0], "");
    EXPECT_NE(reasons[1], "") << "says what was wrong with the first";
    EXPECT_FALSE(user.connectionString().contains("tide"));
    std::thread([] { EXPECT_EQ(value("SELECT COUNT(*) AS V FROM tblJobHeader"), "0"); }).join();
    EXPECT_EQ(reasons.size(), 2);
    // A password that is right does not help against anything else, so no other is asked for.
    useAddress(office.address("asked") + "&dbname=none");
    answers = QStringList{"tide's in"};
    EXPECT_TRUE(failureOf([] { openDatabase("User"); }).contains("\"none\" does not exist"));
    EXPECT_EQ(reasons.size(), 3);
    useAddress(office.address("asked").replace("asked@", "asked:tide%27s%20in@"));
    EXPECT_FALSE(dbConnection("User").connectionString().contains("tide"));
    useAddress("C:\\Data");
    EXPECT_NE(failureOf<RefusedData>([] { dbConnection("User"); }), "");
}

TEST_F(OfficeTest, AnotherVersionIsRefusedClearly) {
    const auto upgrade = [] {
        Connection user = openDatabase("User");
        Schema::upgrade(user);
    };
    EXPECT_NO_THROW(upgrade());
    Postgres::Connection keeper = office.connection();
    const std::pair<int, const char*> others[] = {{Schema::officeVersion() + 1, "newer version"},
                                                  {Schema::officeVersion() - 1, "not that of an office"}};
    for (const auto& [version, text] : others) {
        keeper.run("UPDATE office.version SET version = $1", {version});
        EXPECT_TRUE(failureOf<RefusedData>(upgrade).contains(text)) << version;
        // A program that was open meanwhile stores nothing any more.
        EXPECT_NE(failureOf<RefusedData>([] { Records::addJobHeader(headerOf("A")); }), "") << version;
        EXPECT_NE(failureOf<RefusedData>([] { NameList::add("tblEngineer", "Stone"); }), "") << version;
        EXPECT_EQ(value("SELECT COUNT(*) AS V FROM tblJobHeader"), "0");
        EXPECT_EQ(value("SELECT COUNT(*) AS V FROM tblEngineer"), "0");
    }
}

TEST_F(OfficeTest, ATableThatWasOpenedEarlierIsNotWrittenInAnotherVersion) {
    const Connection user = openDatabase("User");
    Recordset engineers;
    engineers.Open("tblEngineer", user, CursorType::Keyset, CommandType::Table);
    const auto add = [&](const QStringList& names) {
        Transaction write(user);
        for (const QString& name : names) {
            engineers.AddNew();
            engineers["fldName"] = name;
            engineers.Update();
        }
        write.commit();
    };
    add({"A", "B", "C"}); // those after the first are queued
    office.connection().run("UPDATE office.version SET version = version + 1");
    EXPECT_NE(failureOf<RefusedData>([&] { add({"D"}); }), "");
    EXPECT_EQ(value("SELECT COUNT(*) AS V FROM tblEngineer"), "3");
}

// The two kinds of data have the same tables, columns and sizes, so that each statement and each file of a
// job fits both.
TEST_F(OfficeTest, HasTheTablesOfAFile) {
    Connection file;
    file.setProperty("Data Source", home.dataFolder() + "/BrennovalUserData.mdb");
    file.Open();
    const Connection user = openDatabase("User");
    for (const char* table : {"tblFirstTime", "tblUser", "tblRepMaster", "tblEngineer", "tblContractor",
                              "tblJobHeader", "tblJobData", "tblSchedule", "tblOwn"}) {
        Recordset inFile;
        inFile.Open(table, file, CursorType::Keyset, CommandType::Table);
        Recordset inOffice;
        inOffice.Open(table, user, CursorType::Keyset, CommandType::Table);
        EXPECT_EQ(inFile.columnNames(), inOffice.columnNames()) << table;
        for (const QString& column : inFile.columnNames()) {
            const std::string name = table + (' ' + column.toStdString());
            EXPECT_EQ(inFile[column].DefinedSize(), inOffice[column].DefinedSize()) << name;
            EXPECT_EQ(inFile[column].takesText(), inOffice[column].takesText()) << name;
            EXPECT_EQ(inFile[column].takesFractions(), inOffice[column].takesFractions()) << name;
        }
    }
}

TEST_F(OfficeTest, ATextThatTheServerCannotHoldIsNotCutShort) {
    EXPECT_NE(failureOf([] {
                  execute("User", "INSERT INTO tblEngineer (fldName) VALUES (?)",
                          {QString("Reed") + QChar(0) + QString("Stone")});
              }),
              "");
    EXPECT_EQ(value("SELECT COUNT(*) AS V FROM tblEngineer"), "0");
}

TEST_F(OfficeTest, HasNoCopiesButUndoesADeletion) {
    addJob("A");
    Records::addTankLines("A", std::vector<TankLine>(3));
    bool reported = false;
    Backup::onFailure([&](const QString&) { reported = true; });
    Deletion::deleteTankLines({"A.2"});
    EXPECT_FALSE(reported) << "that there is no copy is no failure";
    Backup::onFailure([](const QString&) {});
    EXPECT_EQ(Deletion::undoDeletion(), "");
    std::vector<QString> keys;
    for (const TankLine& line : Records::tankLinesOf("A"))
        keys.push_back(line.tankID.value_or(QString()));
    EXPECT_EQ(keys, std::vector<QString>({"A.1", "A.2", "A.3"})) << "in its old place";
    const Connection user = openDatabase("User");
    EXPECT_EQ(failureOf([&] { Backup::Make(user, Backup::Reason::ByHand); }), Backup::noneOfAnOffice());
    EXPECT_NE(failureOf([&] { user.engine().copyTo(home.path() + "/copy.mdb"); }), "");
}

TEST_F(OfficeTest, AUserWhoIsRemovedMeanwhileIsTold) {
    const Connection ben = connectionOf("ben");
    Postgres::Connection keeper = office.connection();
    OfficeSchema::removeUser(keeper, "ben");
    const std::function<void()> tries[] = {[&] { Recordset().Open("SELECT * FROM tblJobHeader", ben); },
                                           [&] {
                                               const Transaction saving(ben);
                                               Recordset().Open("DELETE FROM tblJobHeader", ben);
                                           }};
    for (const auto& attempt : tries)
        EXPECT_TRUE(failureOf(attempt).startsWith("You are no longer one of the office's users."));
}

// The server itself refuses what the program never does.
TEST_F(OfficeTest, AUserHasNoMoreRightsThanNeeded) {
    addJob("A");
    execute("User", "INSERT INTO tblUser (PostalCode) VALUES ('of Anna')");
    Postgres::Connection ben = office.connection("ben");
    EXPECT_EQ(ben.run("SELECT * FROM tblUser").rows(), 0);
    for (const char* statement : {"SELECT * FROM anna.tblUser",
                                  "INSERT INTO anna.tblUser (PostalCode) VALUES ('x')",
                                  "DROP TABLE tblJobHeader",
                                  "ALTER TABLE tblJobHeader ADD COLUMN x integer",
                                  "TRUNCATE tblJobData",
                                  "DROP SCHEMA ben CASCADE",
                                  "CREATE TABLE ben.x (x integer)",
                                  "CREATE TABLE office.x (x integer)",
                                  "CREATE TABLE public.x (x integer)",
                                  "DROP TABLE tblUser",
                                  "DROP FUNCTION jet_day",
                                  "ALTER TYPE text_50 RENAME TO x",
                                  "UPDATE office.version SET version = 99",
                                  "SET ROLE anna",
                                  "SET ROLE keeper",
                                  "CREATE ROLE x",
                                  "GRANT SELECT ON tblUser TO anna",
                                  "CREATE SCHEMA x",
                                  "COPY tblJobHeader TO '/tmp/x'",
                                  "SELECT setval('office.tblJobData_office_row_seq', 1)"}) {
        QByteArray state;
        try {
            ben.run(statement);
            // The server only warns that it grants nothing.
            if (QByteArrayView(statement).startsWith("GRANT"))
                state = office.connection("postgres")
                                    .run("SELECT has_table_privilege('anna', 'ben.tblUser', 'SELECT')")
                                    .text(0, 0) == "f"
                            ? "42501"
                            : "granted";
        } catch (const Postgres::ServerFault& fault) {
            state = fault.sqlState();
        }
        EXPECT_EQ(state, "42501") << statement;
    }
}
