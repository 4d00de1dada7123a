#include "core/store/Database.h"
#include "core/base/Fault.h"
#include "core/base/Text.h"
#include "core/store/SqliteEngine.h"
#include "tests/support/BothEngines.h"

#include <gtest/gtest.h>

namespace {

/// The user's data, empty and open.
class DatabaseTest : public BothEngines {
  protected:
    DatabaseTest() : user(Gateway::openDatabase("User")), catalogue(Gateway::openDatabase("Sys")) {}

    QString value(Connection& connection, const QString& sql) {
        Recordset rows;
        rows.Open(sql, connection);
        return rows.atEnd() ? QStringLiteral("(no row)") : rows[QStringLiteral("V")].text();
    }

    void addJob(const QString& id) {
        Recordset jobs;
        jobs.Open(QStringLiteral("tblJobHeader"), user, CursorType::Keyset, CommandType::Table);
        jobs.AddNew();
        jobs[QStringLiteral("jobid")] = id;
        jobs[QStringLiteral("DateCreated")] = QDateTime(QDate(2026, 3, 14), QTime(15, 9, 26));
        jobs.Update();
    }

    Connection user;
    Connection catalogue;
};
ON_BOTH_ENGINES(DatabaseTest);

std::int32_t faultOf(const std::function<void()>& body) {
    try {
        body();
    } catch (const Fault& fault) {
        return fault.number();
    }
    return 0;
}

} // namespace

TEST_P(DatabaseTest, UnderstandsTheDialect) {
    const std::pair<const char*, const char*> cases[] = {
        {"SELECT 1/2 AS V", "0.5"},
        {"SELECT (1/4^.5) * (3) AS V", "1.5"},
        {"SELECT 2 ^ 3 AS V", "8"},
        {"SELECT 4^-1 AS V", "0.25"},
        {"SELECT 'a' & \"b\" & 'c' AS V", "abc"},
        {"SELECT 'a' & NULL & 'c' AS V", "ac"},
        {"SELECT \"it's\" AS V", "it's"},
        {"SELECT '1/2 & [x] #1/2/2026# \"q\" ^' AS V", "1/2 & [x] #1/2/2026# \"q\" ^"},
        {"SELECT 'O''Brien' AS V", "O'Brien"},
        {"SELECT #2026-03-14# AS V", "2026-03-14"},
        {"SELECT #3/14/2026# AS V", "2026-03-14"},
        {"SELECT DateValue('2026-03-14 15:09:26') AS V", "2026-03-14"},
        {"SELECT 'abc' LIKE '%B%' AS V", "1"},
        {"SELECT 2 + 3 & 4 * 5.0 & 'x' AS V", "520x"},
        {"SELECT 12.0 & ' X ' & 1/2 AS V", "12 X 0.5"},
        {"SELECT -2^2 + 10 / 4 AS V", "-1.5"},
        {"SELECT NULL ^ 2 AS V", ""},
        {"SELECT 1 / NULL AS V", ""},
        {"SELECT [t].[c] AS V FROM (SELECT 7 AS c) AS t", "7"},
        {"SELECT 'a' = 'a  ' AS V", "1"},
        {"SELECT 'a ' & 'b' AS V", "a b"},
    };
    for (const auto& [sql, expected] : cases)
        EXPECT_EQ(value(user, QString::fromUtf8(sql)).toStdString(), expected) << sql;
    EXPECT_EQ(
        value(catalogue,
              QStringLiteral("SELECT [100] AS V FROM tblExpFactor WHERE SOTMax >= 100 ORDER BY SOTMax")),
        QStringLiteral("0"));
    EXPECT_EQ(
        value(catalogue,
              QStringLiteral("SELECT Min(TankVolume) AS V FROM tblModelMaster WHERE TankVolume * 2 >= 100 "
                             "OR TankVolume > 9000 GROUP BY Class HAVING CLASS = 'rcb'")),
        QStringLiteral("52.8"));
}

TEST_P(DatabaseTest, OrdersNullsBeforeAllValues) {
    for (const char* sql :
         {"INSERT INTO tblJobHeader (JobID, DateCreated) VALUES ('new', '2026-03-14 00:00:00'), "
          "('never', NULL), ('old', '2020-01-01 00:00:00')",
          "INSERT INTO tblJobData (TankID, JobID, TankNo) VALUES ('b', 'new', 1), "
          "('a', 'new', NULL)"})
        Recordset().Open(QString::fromUtf8(sql), user);
    const std::pair<const char*, const char*> cases[] = {
        {"SELECT JobID AS V FROM tblJobHeader ORDER BY DateCreated", "never old new"},
        {"SELECT JobID AS V FROM tblJobHeader ORDER BY DateCreated DESC", "new old never"},
        {"SELECT JobID AS V FROM tblJobHeader ORDER BY DateCreated DESC LIMIT 1", "new"},
        {"SELECT JobID AS V FROM tblJobHeader ORDER BY DateValue(DateCreated) ASC, JobID DESC",
         "never old new"},
        {"SELECT JobID AS V FROM tblJobHeader ORDER BY DateCreated NULLS LAST", "old new never"},
        {"SELECT V FROM (SELECT JobID AS V FROM tblJobHeader ORDER BY DateCreated LIMIT 1) AS t", "never"},
        {"SELECT TankID AS V FROM tblJobData WHERE JobID = 'new'", "a b"},
        {"SELECT TankID AS V FROM tblJobData WHERE JobID = 'new' ; ", "a b"},
        {"SELECT JobID AS V FROM tblJobHeader ORDER BY DateCreated DESC;", "new old never"},
    };
    for (const auto& [sql, expected] : cases) {
        QStringList found;
        Recordset rows;
        for (rows.Open(QString::fromUtf8(sql), user); !rows.atEnd(); rows.moveNext())
            found.append(rows["V"].text());
        EXPECT_EQ(found.join(' ').toStdString(), expected) << sql;
    }
}

TEST_P(DatabaseTest, ATableThatCannotBeReadDoesNotPassForAnEmptyOne) {
    Recordset().Open("INSERT INTO tblEngineer (fldName) VALUES ('Stone')", user);
    Connection reader = Gateway::dbConnection("User");
    reader.setBusyTimeout(1);
    reader.Open();
    Recordset engineers;
    engineers.Open("tblEngineer", reader, CursorType::ForwardOnly, CommandType::Table);
    if (onOffice())
        office->connection("postgres")
            .run("SELECT pg_terminate_backend(pid) FROM pg_stat_activity "
                 "WHERE usename = 'anna' AND datname = current_database()");
    else
        Recordset().Open("BEGIN EXCLUSIVE", user);
    EXPECT_THROW(engineers.atEnd(), DatabaseFault);
    EXPECT_THROW(engineers.atEnd(), DatabaseFault);
    if (onOffice())
        return;
    Recordset().Open("COMMIT", user);
    EXPECT_EQ(engineers["fldName"].text(), "Stone");
}

TEST_P(DatabaseTest, RefusesBrokenStatements) {
    for (const char* sql :
         {"SELECT 'open", "SELECT [open", "SELECT #open", "SELECT #32/32/2026#", "SELECT #-2026-03-14#",
          "SELECT #0001-01-01#", "SELECT (1", "SELECT 1; DELETE FROM tblUser", "SELECT 1 -- rest", "",
          "nonsense", "SELECT ^ 2"})
        EXPECT_EQ(faultOf([&] { value(user, QString::fromUtf8(sql)); }), DatabaseFault::SyntaxError) << sql;
    const std::pair<const char*, std::int32_t> others[] = {
        {"SELECT * FROM tblNone", DatabaseFault::NoSuchTable},
        {"SELECT [115] AS V FROM tblJobHeader", DatabaseFault::SyntaxError},
        {"SELECT 1 / (3 - 3) AS V", Fault::DivisionByZero},
        {"SELECT 10 ^ 400 AS V", Fault::Overflow}};
    for (const auto& [statement, number] : others) {
        const QString sql = QString::fromUtf8(statement);
        EXPECT_EQ(faultOf([&] { value(user, sql); }), number) << statement;
    }
}

TEST(JetSqlTest, MovesTheGroupedConditionInFront) {
    const JetStatement moved = rewriteJetSql(
        QStringLiteral(
            "SELECT MAX(TankNo) AS M FROM tblJobData GROUP BY JobID HAVING JobID = 'a'' GROUP BY x'"),
        sqliteDialect());
    EXPECT_EQ(moved.sql.simplified().toStdString(),
              "SELECT MAX(TankNo) AS M FROM tblJobData WHERE JobID='a'' GROUP BY x' GROUP BY JobID");
    const QString other = QStringLiteral("SELECT Min(a) FROM t GROUP BY b HAVING Min(a) > 3");
    EXPECT_EQ(rewriteJetSql(other, sqliteDialect()).sql, other);
}

/// The smallest size of a series is read as the first of an ordered index, from a bound below which no size
/// can fit, and only if the greatest of each other column is not too small. No bound may be above a value
/// that just fits.
TEST_P(DatabaseTest, FindsTheMinimumOfAGroup) {
    const JetStatement first = rewriteJetSql(
        QStringLiteral(
            "SELECT Min(A) AS M FROM t WHERE A * 4 >= 10 AND B * 4 >= 7 GROUP BY C HAVING c = 'x'"),
        sqliteDialect());
    EXPECT_EQ(
        first.sql.simplified().toStdString(),
        "SELECT A AS M FROM t WHERE c='x' AND A >= 2.4999999999975002 AND ( A * 4 >= 10 AND B * 4 >= 7 ) "
        "ORDER BY A NULLS LAST LIMIT CASE WHEN ( SELECT MAX ( B ) FROM t WHERE c='x' ) "
        ">= 1.7499999999982501 THEN 1 ELSE 0 END");
    const auto least = [&](const QString& condition) {
        const QString all = QStringLiteral("SELECT Min(AcceptanceVolume) AS V FROM tblModelMaster WHERE ");
        const QString found = value(catalogue, all + condition + " GROUP BY Class HAVING Class = 'RCB'");
        const QString expected = value(catalogue, all + "Class = 'RCB' AND (" + condition + ")");
        EXPECT_EQ(found == "(no row)" ? QString() : found, expected) << condition.toStdString();
    };
    Recordset sizes;
    int tried = 0;
    for (sizes.Open("SELECT AcceptanceVolume FROM tblModelMaster WHERE Class = 'RCB'", catalogue);
         !sizes.atEnd(); sizes.moveNext())
        for (int quantity = 1; quantity <= 6; ++quantity) {
            const QString fitting = "AcceptanceVolume * " + QString::number(quantity) +
                                    " >= " + statementNumber(sizes["AcceptanceVolume"].number() * quantity);
            least(fitting);
            least("NOT " + fitting);
            least(fitting + " OR TankVolume > 100");
            least("(" + fitting + ") AND TankVolume * 2 >= 200");
            ++tried;
        }
    EXPECT_GT(tried, 50);
}

TEST_P(DatabaseTest, AddsChangesAndDeletesRows) {
    addJob(QStringLiteral("St. John's"));
    Recordset job;
    job.Open(QStringLiteral("SELECT * FROM tblJobHeader WHERE JobID = 'ST. JOHN''S'"), user,
             CursorType::Keyset);
    ASSERT_FALSE(job.atEnd());
    EXPECT_EQ(job.RecordCount(), 1);
    EXPECT_TRUE(job[QStringLiteral("Engineer")].isNull());
    EXPECT_EQ(job[QStringLiteral("DateCreated")].dateTime(), QDateTime(QDate(2026, 3, 14), QTime(15, 9, 26)));
    job[QStringLiteral("Engineer")] = QStringLiteral("Łukasz 水");
    job.Update();
    EXPECT_EQ(job[QStringLiteral("Engineer")].text(), QStringLiteral("Łukasz 水"));
    EXPECT_EQ(value(user, QStringLiteral("SELECT Engineer AS V FROM tblJobHeader")),
              QStringLiteral("Łukasz 水"));
    job.Delete();
    EXPECT_TRUE(job.atEnd());
    EXPECT_EQ(value(user, QStringLiteral("SELECT COUNT(*) AS V FROM tblJobHeader")), QStringLiteral("0"));
}

TEST_P(DatabaseTest, ContinuesAfterARowThatItChangedOrDeleted) {
    for (const char* id : {"A", "B", "C", "D"})
        addJob(QLatin1String(id));
    Recordset jobs;
    QString seen;
    for (jobs.Open(QStringLiteral("SELECT * FROM tblJobHeader ORDER BY JobID"), user, CursorType::Keyset);
         !jobs.atEnd(); jobs.moveNext()) {
        const QString id = jobs[QStringLiteral("JobID")].text();
        seen += id;
        if (id == QStringLiteral("B") || id == QStringLiteral("D"))
            jobs.Delete();
        else
            jobs[QStringLiteral("JobInfo")] = id;
        if (!jobs.atEnd()) {
            jobs.Update();
            EXPECT_EQ(jobs[QStringLiteral("JobID")].text(), id);
        }
        Connection other; // another copy of the program may save at any row
        other.setProperty(QStringLiteral("Data Source"), user.dataSource());
        other.Open();
        Recordset().Open(QStringLiteral("UPDATE tblUser SET PostalCode = '1'"), other);
    }
    EXPECT_EQ(seen, QStringLiteral("ABCD"));
    EXPECT_EQ(value(user, QStringLiteral("SELECT MIN(JobID & JobInfo) & MAX(JobID & JobInfo) & COUNT(*) AS V "
                                         "FROM tblJobHeader")),
              QStringLiteral("AACC2"));
}

/// The walk keeps to the rows that it began with: a change that takes a row out of the statement, or to
/// another place in its order, neither skips a row nor returns to one.
TEST_P(DatabaseTest, KeepsToTheRowsThatItBeganWith) {
    for (const char* id : {"A", "B", "C", "D", "E"})
        addJob(QLatin1String(id));
    Recordset jobs;
    QString seen;
    for (jobs.Open(QStringLiteral("SELECT * FROM tblJobHeader WHERE JobInfo IS NULL ORDER BY JobID"), user,
                   CursorType::Keyset);
         !jobs.atEnd(); jobs.moveNext()) {
        const QString id = jobs[QStringLiteral("JobID")].text();
        seen += id;
        jobs[QStringLiteral("JobInfo")] = id;
        jobs[QStringLiteral("JobID")] = u'Z' + id;
        jobs.Update();
        if (id != QStringLiteral("B"))
            continue;
        Recordset().Open(QStringLiteral("DELETE FROM tblJobHeader WHERE JobID = 'D'"), user);
        addJob(QStringLiteral("ZZ"));
    }
    EXPECT_EQ(seen, QStringLiteral("ABCE"));
    jobs.Open(QStringLiteral("tblJobHeader"), user, CursorType::Keyset, CommandType::Table);
    jobs.AddNew();
    jobs[QStringLiteral("JobID")] = QStringLiteral("last");
    jobs.Update();
    jobs.moveNext();
    EXPECT_TRUE(jobs.atEnd());
}

TEST_P(DatabaseTest, ContinuesWithARowThatItAdded) {
    Recordset tanks;
    tanks.Open(QStringLiteral("tblJobData"), user, CursorType::Keyset, CommandType::Table);
    tanks.AddNew();
    tanks[QStringLiteral("TankID")] = QStringLiteral("J.1");
    tanks.Update();
    tanks[QStringLiteral("TotSysVolume")] = QStringLiteral(" 1,234.5 ");
    tanks[QStringLiteral("Qty")] = "2.5";
    tanks[QStringLiteral("TankClass")] = "SHK";
    tanks.Update();
    EXPECT_EQ(value(user, QStringLiteral("SELECT TotSysVolume AS V FROM tblJobData WHERE TankID = 'J.1'")),
              QStringLiteral("1234.5"));
    EXPECT_EQ(value(user, QStringLiteral("SELECT Qty AS V FROM tblJobData")), QStringLiteral("2"));
    EXPECT_EQ(tanks[QStringLiteral("TankID")].text(), QStringLiteral("J.1"));
    EXPECT_EQ(tanks[QStringLiteral("TankClass")].text(), QStringLiteral("SHK"));
}

TEST_P(DatabaseTest, RefusesWhatAColumnCannotHold) {
    Recordset tanks;
    tanks.Open(QStringLiteral("tblJobData"), user, CursorType::Keyset, CommandType::Table);
    EXPECT_EQ(tanks[QStringLiteral("JobID")].DefinedSize(), 50);
    EXPECT_EQ(tanks[QStringLiteral("AtmPressure")].DefinedSize(), 8);
    tanks.AddNew();
    EXPECT_EQ(faultOf([&] { tanks[QStringLiteral("AtmPressure")] = QStringLiteral("abc"); }),
              Fault::TypeMismatch);
    EXPECT_EQ(faultOf([&] { tanks[QStringLiteral("AtmPressure")] = QString(); }), Fault::TypeMismatch);
    EXPECT_EQ(faultOf([&] { tanks[QStringLiteral("JobID")] = QString(51, u'x'); }),
              DatabaseFault::DataOverflow);
    EXPECT_EQ(faultOf([&] { tanks[QStringLiteral("Qty")] = 3e9; }), DatabaseFault::DataOverflow);
    EXPECT_EQ(faultOf([&] { tanks[QStringLiteral("Nothing")] = 1; }), DatabaseFault::NoSuchColumn);
    EXPECT_EQ(faultOf([&] {
                  addJob(QStringLiteral("a"));
                  addJob(QStringLiteral("A"));
              }),
              DatabaseFault::ConstraintViolation);
}

TEST_P(DatabaseTest, NamesTheFailureOfAnOpen) {
    Recordset rows;
    Connection closed;
    EXPECT_EQ(faultOf([&] { rows.Open(QStringLiteral("SELECT 1"), closed); }),
              DatabaseFault::InvalidConnection);
    EXPECT_EQ(faultOf([&] { closed.Open(); }), DatabaseFault::NoDataSource);
    closed.setProperty(QStringLiteral("Data Source"), home.dataFolder() + QStringLiteral("/none.mdb"));
    EXPECT_EQ(faultOf([&] { closed.Open(); }), DatabaseFault::Unspecified);
    EXPECT_FALSE(QFile::exists(home.dataFolder() + QStringLiteral("/none.mdb")));
    QFile text(home.dataFolder() + QStringLiteral("/text.mdb"));
    ASSERT_TRUE(text.open(QIODevice::WriteOnly));
    text.write(QByteArray(4096, 'x'));
    text.close();
    closed.setProperty(QStringLiteral("Data Source"), text.fileName());
    EXPECT_EQ(faultOf([&] { closed.Open(); }), DatabaseFault::Unspecified);
    EXPECT_FALSE(closed.isOpen());
}

TEST_P(DatabaseTest, KeepsEveryValueToTheLastBit) {
    constexpr double numbers[] = {0.0,
                                  0.1 + 0.2,
                                  1.0 / 3,
                                  -2.0 / 3,
                                  -1e-5,
                                  1e21,
                                  123456789012345680.0,
                                  1e-7,
                                  5e-324,
                                  2.5e-308,
                                  1.7976931348623157e308,
                                  14.696,
                                  9007199254740993.0};
    Recordset tanks;
    tanks.Open("tblJobData", user, CursorType::Keyset, CommandType::Table);
    int key = 0;
    for (const double number : numbers) {
        tanks.AddNew();
        tanks["TankID"] = QString::number(++key);
        tanks["SOPMax"] = number;
        tanks.Update();
        Recordset read;
        read.Open("SELECT * FROM tblJobData WHERE SOPMax = ?", user, {number});
        ASSERT_FALSE(read.atEnd()) << number;
        EXPECT_EQ(read["SOPMax"].number(), number);
        EXPECT_EQ(
            value(user, QString("SELECT SOPMax & '' AS V FROM tblJobData WHERE TankID = '%1'").arg(key)),
            shownNumber(number));
        Recordset same; // as the screens write numbers into statements
        same.Open("SELECT * FROM tblJobData WHERE SOPMax = " + statementNumber(number), user);
        EXPECT_FALSE(same.atEnd()) << number;
    }
}

TEST_P(DatabaseTest, KeepsFlagsTextsAndMoments) {
    Recordset own;
    own.Open("tblRepMaster", user, CursorType::Keyset, CommandType::Table);
    for (const bool flag : {true, false}) {
        own.AddNew();
        own["CompanyName"] = flag ? "Ökohaus 水 'n' \\ \"x\" 100%  " : "";
        own["Default"] = flag;
        own.Update();
    }
    EXPECT_EQ(value(user, "SELECT CompanyName AS V FROM tblRepMaster WHERE [Default] = TRUE"),
              QString::fromUtf8("Ökohaus 水 'n' \\ \"x\" 100%"));
    EXPECT_EQ(
        value(user, "SELECT COUNT(*) AS V FROM tblRepMaster WHERE [Default] = FALSE AND CompanyName = ''"),
        "1");
    EXPECT_EQ(value(user, "SELECT COUNT(*) AS V FROM tblRepMaster WHERE [Default] = 1"), "1");
    addJob("A");
    const std::pair<const char*, const char*> cases[] = {
        {"DateCreated = '2026-03-14 15:09:26'", "1"},
        {"DateCreated >= #3/14/2026#", "1"},
        {"DateCreated > #3/15/2026#", "0"},
        {"DateValue(DateCreated) = #3/14/2026#", "1"},
        {"DateValue(DateCreated) <= #3/13/2026#", "0"},
        {"DateCreated IS NULL", "0"},
        {"DateCreated BETWEEN #3/14/2026# AND #3/15/2026#", "1"}};
    for (const auto& [condition, expected] : cases)
        EXPECT_EQ(value(user, QString("SELECT COUNT(*) AS V FROM tblJobHeader WHERE %1").arg(condition)),
                  expected)
            << condition;
}

TEST_P(DatabaseTest, ComparesTextsAsUsersDo) {
    for (const char* id : {"Öl & Gas", "a_b", "a%b", "a\\b", "ab"})
        addJob(QString::fromUtf8(id));
    const std::pair<const char*, const char*> cases[] = {
        {"JobID = 'öL & gAS   '", "1"}, {"JobID LIKE 'ÖL%'", "1"},
        {"JobID LIKE 'A_B'", "3"},      {"JobID LIKE 'a!_b' ESCAPE '!'", "1"},
        {"JobID LIKE 'a\\b'", "1"},     {"JobID LIKE '%b' AND JobID NOT LIKE 'A%'", "0"},
        {"JobID LIKE 'a' & '%'", "4"},  {"JobID IN ('AB', 'öl & gas')", "2"},
        {"JobID <> 'AB'", "4"},         {"JobID < 'AC'", "4"},
        {"JobID & 'x' = 'abx'", "1"},   {"JobID LIKE NULL", "0"}};
    for (const auto& [condition, expected] : cases)
        EXPECT_EQ(value(user, QString("SELECT COUNT(*) AS V FROM tblJobHeader WHERE %1")
                                  .arg(QString::fromUtf8(condition))),
                  expected)
            << condition;
    Recordset found;
    found.Open("SELECT * FROM tblJobHeader WHERE JobID = ? OR JobID LIKE ?", user, {"AB  ", "öl%"});
    EXPECT_EQ(found.RecordCount(), 2);
}

// Rows come in the order in which they were entered, and a change does not move them.
TEST_P(DatabaseTest, ReadsRowsInTheirOrder) {
    for (const char* id : {"C", "A", "B"})
        addJob(QLatin1String(id));
    Recordset().Open("UPDATE tblJobHeader SET JobInfo = 'changed' WHERE JobID = 'C'", user);
    for (const char* statement :
         {"SELECT * FROM tblJobHeader", "SELECT JobInfo, JobID FROM tblJobHeader AS j",
          "SELECT JobID FROM tblJobHeader WHERE JobDscrptn IS NULL"}) {
        Recordset jobs;
        QString seen;
        for (jobs.Open(statement, user); !jobs.atEnd(); jobs.moveNext())
            seen += jobs["JobID"].text();
        EXPECT_EQ(seen, "CAB") << statement;
    }
}

// More rows than one page of a whole table, changed, added and counted on the way.
TEST_P(DatabaseTest, WalksThroughALongTable) {
    constexpr int rows = 1000;
    {
        Transaction write(user);
        Recordset names;
        names.Open("tblEngineer", user, CursorType::Keyset, CommandType::Table);
        for (int i = 0; i < rows; ++i) {
            names.AddNew();
            names["fldName"] = QString::number(i);
            names.Update();
        }
        names["fldName"] = "last";
        names.Update();
        write.commit();
    }
    for (const int changed : {-1, 3, 700}) {
        Recordset names;
        names.Open("tblEngineer", user, CursorType::Keyset, CommandType::Table);
        EXPECT_EQ(names.RecordCount(), rows);
        int seen = 0;
        for (; !names.atEnd(); names.moveNext(), ++seen) {
            const QString name = names["fldName"].text();
            ASSERT_EQ(name, seen == rows - 1 ? QString("last") : QString::number(seen));
            if (seen != changed)
                continue;
            names["fldName"] = name;
            names.Update();
        }
        EXPECT_EQ(seen, rows) << changed;
    }
}
