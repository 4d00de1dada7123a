// What a user of an office can do, and what nobody lets a user do, tried on a server by the roles that
// brennoval-office makes.

#include "tests/app/OfficeCommand.h"

#include <gtest/gtest.h>

namespace {

/// The five characters with which the server refuses a statement; empty if it obeys.
std::string refusalOf(Postgres::Connection& connection, const QString& statement) {
    try {
        connection.runScript(statement);
        return {};
    } catch (const Postgres::ServerFault& fault) {
        return fault.sqlState().toStdString();
    }
}

/// Why a role cannot connect; empty if it can.
QString refusalToConnect(const QString& uri) {
    try {
        const Postgres::Connection connection(uri);
        return {};
    } catch (const Postgres::ServerFault& fault) {
        return fault.what();
    }
}

const std::string denied = "42501";

/// A digest of all tables that are not the server's own, with their columns and rights.
const QString tablesAndRights =
    "SELECT md5(string_agg(concat_ws(' ', n.nspname, c.relname, c.relacl, a.attname, a.attacl), ',' "
    "ORDER BY c.oid, a.attnum)) FROM pg_class c JOIN pg_namespace n ON n.oid = c.relnamespace "
    "LEFT JOIN pg_attribute a ON a.attrelid = c.oid WHERE n.nspname !~ '^pg_'";

} // namespace

TEST(OfficeRights, AUserReadsAndWritesTheOfficeAndTheUsersOwnTables) {
    const ToolOffice office({"anna", "ben"});
    Postgres::Connection anna(office.uri("anna"));
    for (const char* statement : {
             "INSERT INTO tblJobHeader (JobID) VALUES ('J')",
             "INSERT INTO tblJobData (TankID, JobID) VALUES ('J.1', 'J')",
             "UPDATE tblJobData SET Qty = 2 WHERE TankID = 'j.1'",
             "INSERT INTO tblEngineer (fldName) VALUES ('E')",
             "INSERT INTO tblContractor (fldName) VALUES ('C')",
             "UPDATE tblFirstTime SET FirstTime = 1",
             "INSERT INTO tblUser (PostalCode) VALUES ('44114')",
             "INSERT INTO tblRepMaster (CompanyName) VALUES ('R')",
             "INSERT INTO tblSchedule (TankID) VALUES ('J.1')",
             "DELETE FROM tblSchedule",
             "INSERT INTO tblOwn (OwnName) VALUES ('O')",
             "SELECT version FROM office.version",
             "ALTER ROLE anna PASSWORD 'her own'",
         })
        EXPECT_EQ(refusalOf(anna, statement), "") << statement;
    Postgres::Connection ben(office.uri("ben"));
    EXPECT_EQ(ben.run("SELECT Qty FROM tblJobData").text(0, 0), "2") << "shared";
    EXPECT_EQ(ben.run("SELECT PostalCode FROM tblUser").rows(), 0) << "each user's own";
    EXPECT_EQ(ben.run("SELECT FirstTime FROM tblFirstTime").text(0, 0), "0");
    EXPECT_EQ(refusalOf(ben, "DELETE FROM tblJobData; DELETE FROM tblJobHeader"), "");
}

TEST(OfficeRights, AUserCanDoNothingElse) {
    const ToolOffice office({"anna", "ben"});
    office.execute("INSERT INTO ben.tblUser (PostalCode) VALUES ('44114')");
    const std::string before = office.value(tablesAndRights);
    Postgres::Connection anna(office.uri("anna"));
    const char* const trigger = "CREATE TRIGGER x BEFORE INSERT ON office.tblJobData EXECUTE FUNCTION "
                                "suppress_redundant_updates_trigger()";
    const char* const eventTrigger = "CREATE EVENT TRIGGER x ON ddl_command_start EXECUTE FUNCTION "
                                     "suppress_redundant_updates_trigger()";
    const char* const endOthers =
        "SELECT pg_terminate_backend(pid) FROM pg_stat_activity WHERE pid <> pg_backend_pid() AND "
        "usename IS NULL";
    for (const char* statement : {
             // another user's own tables
             "SELECT * FROM ben.tblUser",
             "SELECT count(*) FROM ben.tblOwn",
             "INSERT INTO ben.tblUser (PostalCode) VALUES ('1')",
             "UPDATE ben.tblFirstTime SET FirstTime = 1",
             "DELETE FROM ben.tblUser",
             "TABLE ben.tblSchedule",
             "COPY ben.tblUser TO STDOUT",
             "SELECT nextval('ben.tbluser_office_row_seq')",
             // shape of the tables, her own included
             "DROP TABLE office.tblJobData",
             "DROP TABLE anna.tblUser",
             "DROP SCHEMA anna CASCADE",
             "DROP SCHEMA office CASCADE",
             "ALTER TABLE office.tblJobData ADD COLUMN x int",
             "ALTER TABLE anna.tblUser ADD COLUMN x int",
             "ALTER TABLE office.tblJobData DISABLE TRIGGER ALL",
             "ALTER SCHEMA anna RENAME TO anne",
             "ALTER DOMAIN office.text_50 DROP NOT NULL",
             "TRUNCATE office.tblJobHeader",
             "TRUNCATE anna.tblUser",
             "CREATE INDEX x ON office.tblJobData (Qty)",
             "CREATE RULE x AS ON INSERT TO office.tblJobData DO INSTEAD NOTHING",
             trigger,
             "COMMENT ON TABLE office.tblJobData IS 'x'",
             "UPDATE office.version SET version = 99",
             "DELETE FROM office.version",
             "INSERT INTO office.version VALUES (99)",
             "SELECT setval('office.tbljobdata_office_row_seq', 1)",
             // things of her own that would stand before the office's
             "CREATE TABLE office.tblX ()",
             "CREATE TABLE anna.tblJobHeader ()",
             "CREATE VIEW anna.tblJobData AS SELECT 1 AS JobID",
             "CREATE TABLE public.x ()",
             "CREATE TEMPORARY TABLE tblJobHeader ()",
             "CREATE FUNCTION anna.jet_day(timestamp) RETURNS date LANGUAGE sql AS 'SELECT NULL::date'",
             "CREATE FUNCTION office.f() RETURNS int LANGUAGE sql AS 'SELECT 1'",
             "CREATE FUNCTION public.f() RETURNS int LANGUAGE sql AS 'SELECT 1'",
             "CREATE TYPE anna.x AS (a int)",
             "CREATE SCHEMA x",
             "CREATE EXTENSION hstore",
             "DROP EXTENSION citext CASCADE",
             "CREATE PUBLICATION x",
             eventTrigger,
             // rights
             "GRANT brennoval_users TO ben",
             "GRANT ben TO anna",
             "SET ROLE postgres",
             "SET ROLE ben",
             "SET SESSION AUTHORIZATION ben",
             "CREATE ROLE x",
             "DROP ROLE ben",
             "ALTER ROLE ben PASSWORD 'x'",
             "ALTER ROLE anna SUPERUSER",
             "ALTER ROLE anna CREATEDB",
             "ALTER ROLE anna CREATEROLE",
             "ALTER ROLE anna BYPASSRLS",
             // the server and its other databases
             "CREATE DATABASE x",
             "DROP DATABASE brennoval",
             "ALTER DATABASE brennoval SET search_path = anna",
             "ALTER DATABASE brennoval RENAME TO x",
             "ALTER SYSTEM SET fsync = off",
             "SELECT pg_reload_conf()",
             "SELECT pg_read_file('/etc/passwd')",
             "SELECT lo_import('/etc/passwd')",
             "SELECT lo_create(0)",
             "SELECT lo_creat(-1)",
             "SELECT lo_from_bytea(0, 'x')",
             "COPY office.tblEngineer (fldName) FROM '/etc/passwd'",
             "COPY office.tblEngineer TO PROGRAM 'cat'",
             endOthers,
             "SELECT rolpassword FROM pg_authid",
             "SET log_statement = 'none'",
             "SET session_replication_role = replica",
         })
        EXPECT_EQ(refusalOf(anna, statement), denied) << statement;
    // The server only warns of a right that its holder may not pass on.
    EXPECT_EQ(refusalOf(anna, "GRANT ALL ON anna.tblUser, office.tblJobData TO ben"), "");
    EXPECT_EQ(office.value(tablesAndRights), before);
    const std::string nothing = "0";
    EXPECT_EQ(office.value(
                  "SELECT count(*) FROM pg_class c JOIN pg_roles r ON r.oid = c.relowner WHERE r.rolname IN "
                  "('anna', 'ben', 'brennoval_users')"),
              nothing)
        << "a user owns something, and could change it";
    EXPECT_EQ(office.value("SELECT count(*) FROM pg_proc p JOIN pg_namespace n ON n.oid = p.pronamespace "
                           "WHERE prosecdef AND "
                           "n.nspname <> 'pg_catalog'"),
              nothing)
        << "a function runs with the rights of its owner";
}

TEST(OfficeRights, NobodyGetsWhereTheRulesOfAccessDoNotLeadThem) {
    // As docs/office.md has them, for a socket.
    const ToolOffice office({"anna"}, {"local all postgres trust", "local brennoval +brennoval_users trust",
                                       "local all +brennoval_users reject", "local all all trust"});
    office.execute("CREATE ROLE stranger LOGIN");
    office.execute("CREATE DATABASE accounts");
    EXPECT_EQ(refusalToConnect(office.uri("anna")), QString());
    for (const char* other : {"postgres", "template1", "accounts"}) {
        const QString refusal = refusalToConnect(office.uri("anna", other));
        EXPECT_TRUE(refusal.contains("pg_hba.conf")) << other << ": " << refusal.toStdString();
    }
    EXPECT_EQ(refusalToConnect(office.uri("stranger", "accounts")), QString());
    EXPECT_TRUE(refusalToConnect(office.uri("stranger")).contains("permission denied for database"))
        << "a role of the server's that is no user of the office";
}

TEST(OfficeRights, ARemovedUserIsLockedOutAtOnce) {
    const ToolOffice office({"anna", "ben"});
    office.execute("CREATE DATABASE accounts; ");
    office.execute("GRANT CONNECT ON DATABASE accounts TO anna"); // so her role stays
    Postgres::Connection anna(office.uri("anna"));
    ASSERT_EQ(refusalOf(anna, "SELECT * FROM tblJobHeader"), "");
    ASSERT_EQ(runOffice({"remove-user", office.admin(), "anna"}).exitCode, 0);
    for (const char* statement :
         {"SELECT * FROM office.tblJobHeader", "INSERT INTO office.tblEngineer (fldName) VALUES ('x')",
          "SELECT * FROM office.version"})
        EXPECT_EQ(refusalOf(anna, statement), denied) << statement;
    EXPECT_TRUE(refusalToConnect(office.uri("anna")).contains("permission denied for database"));
    EXPECT_EQ(refusalToConnect(office.uri("anna", "accounts")), QString());
    EXPECT_EQ(refusalToConnect(office.uri("ben")), QString());
}
