// brennoval-office as an administrator uses it, against a server: what it does, refuses, repeats and takes
// back.

#include "tests/app/OfficeCommand.h"

#include "tests/support/TemporaryHome.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include <array>
#include <cstdlib>

#include <fcntl.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

/// Everything in the databases and roles of a server that a command could change.
std::string stateOf(const ToolOffice& office) {
    return office.value(
        "SELECT concat_ws(E'\\n', "
        "(SELECT string_agg(concat_ws(' ', datname, datacl), ',' ORDER BY datname) FROM pg_database), "
        "(SELECT string_agg(concat_ws(' ', rolname, rolcanlogin), ',' ORDER BY rolname) FROM pg_roles), "
        "(SELECT count(*) FROM pg_auth_members), "
        "(SELECT string_agg(concat_ws(' ', n.nspname, c.relname, coalesce(relacl, acldefault("
        "CASE relkind WHEN 'S' THEN 's'::\"char\" ELSE 'r' END, relowner))), E'\\n' ORDER BY c.oid) "
        "FROM pg_class c JOIN pg_namespace n ON n.oid = c.relnamespace "
        "WHERE n.nspname !~ '^pg_' AND relkind IN ('r', 'S')))");
}

void expectSaid(const OfficeRun& run, int exitCode, const QString& said) {
    EXPECT_EQ(run.exitCode, exitCode) << run.output.toStdString() << run.errors.toStdString();
    EXPECT_TRUE((exitCode == 0 ? run.output : run.errors).contains(said))
        << said.toStdString() << " is not in:\n"
        << run.output.toStdString() << run.errors.toStdString();
    EXPECT_EQ(run.errors.isEmpty(), exitCode == 0) << run.errors.toStdString();
}

/// Runs brennoval-office on a terminal of its own and types a line at each prompt. Returns its exit code and
/// what the terminal showed.
std::pair<int, QByteArray> runOnTerminal(const QStringList& arguments, QByteArrayList lines) {
    const QByteArray program =
        QFile::encodeName(QCoreApplication::applicationDirPath() + "/brennoval-office");
    QByteArrayList words{program};
    for (const QString& argument : arguments)
        words.append(argument.toUtf8());
    std::vector<char*> argumentList;
    for (QByteArray& word : words)
        argumentList.push_back(word.data());
    argumentList.push_back(nullptr);
    int terminal = 0;
    const pid_t process = forkpty(&terminal, nullptr, nullptr, nullptr);
    if (process == 0) {
        execv(program.constData(), argumentList.data());
        _exit(127);
    }
    QByteArray shown;
    std::array<char, 1000> piece{};
    qsizetype answered = 0;
    for (ssize_t got = 0; (got = read(terminal, piece.data(), piece.size())) > 0;) {
        shown.append(piece.data(), got);
        if (shown.size() > answered && shown.endsWith(": ") && !lines.isEmpty()) {
            const QByteArray line = lines.takeFirst() + '\n';
            EXPECT_EQ(write(terminal, line.constData(), size_t(line.size())), line.size());
            answered = shown.size();
        }
    }
    close(terminal);
    int status = 0;
    waitpid(process, &status, 0);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, shown};
}

} // namespace

TEST(OfficeCommandLine, IsUnderstoodOrRefusedBeforeAnythingIsDone) {
    const struct {
        QStringList arguments;
        int result;
        const char* said;
    } cases[] = {
        {{"--help"}, 0, "Usage: brennoval-office COMMAND"},
        {{"create", "--help"}, 0, "Usage: brennoval-office create"},
        {{"add-user", "--help"}, 0, "Usage: brennoval-office add-user"},
        {{"remove-user", "--help"}, 0, "Usage: brennoval-office remove-user"},
        {{"list-users", "x", "--help"}, 0, "Usage: brennoval-office list-users"},
        {{"import", "--help"}, 0, "Usage: brennoval-office import"},
        {{"export-job", "--help"}, 0, "Usage: brennoval-office export-job"},
        {{"upgrade", "--help"}, 0, "Usage: brennoval-office upgrade"},
        {{"--version"}, 0, "brennoval-office 1."},
        {{}, 2, "--help lists the commands"},
        {{"destroy", "postgresql:///x"}, 2, "no command destroy"},
        {{"create"}, 2, "create takes other arguments"},
        {{"create", ""}, 2, "create takes other arguments"},
        {{"create", "postgresql:///x", "more"}, 2, "create takes other arguments"},
        {{"create", "postgresql:///x", "--new-numbers"}, 2, "create takes no --new-numbers"},
        {{"create", "postgresql:///x", "--maintenance"}, 2, "--maintenance needs a value"},
        {{"import", "postgresql:///x", "file", "--user"}, 2, "--user needs a value"},
        {{"export-job", "postgresql:///x", "--", "--job"}, 2, "export-job takes other arguments"},
        {{"create", "postgresql://a:secret@/x"}, 2, "holds a password"},
        {{"create", "postgresql://a@/x?password=secret"}, 2, "holds a password"},
        {{"create", "postgresql:///x?sslpassword=secret"}, 2, "holds a password"},
        {{"create", "dbname=x"}, 1, "must be one such as postgresql://"},
        {{"create", "postgresql://a@/x?nonsense=1"}, 1, "cannot be understood"},
        {{"create", "postgresql://a:secret@[::1/x"}, 1, "postgresql://a:********@[::1/x"},
        {{"create", "postgresql://postgres@/?host=/nowhere"}, 1, "does not say which database"},
        {{"create", "postgresql://postgres@/x?host=/nowhere"}, 1, "/nowhere"},
        {{"create", "postgresql://postgres@/" + QString(60, 'x')}, 1, "too long"},
        {{"add-user", "postgresql:///x", "office"}, 1, "cannot have the name office"},
        {{"add-user", "postgresql:///x", "pg_anna"}, 1, "cannot have the name pg_anna"},
        {{"add-user", "postgresql:///x", "none"}, 1, "cannot have the name none"},
        {{"add-user", "postgresql:///x", "$user"}, 1, "cannot have the name $user"},
        {{"import", "postgresql:///x", "/nowhere"}, 1, "no file /nowhere"},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.arguments.join(' ').toStdString());
        expectSaid(runOffice(row.arguments), row.result, row.said);
    }
}

TEST(OfficeTool, CreatesAnOfficeOnceAndRepairsARestoredOne) {
    const ToolServer server;
    const auto uri = [&](const char* role, const char* database) { return server.uri(role, database); };
    Postgres::Connection(uri("postgres", "postgres"))
        .runScript("CREATE ROLE admin LOGIN CREATEDB CREATEROLE; CREATE ROLE weak LOGIN;");
    // An administrator need not be the superuser.
    expectSaid(runOffice({"create", uri("weak", "o")}), 1, "weak may not create databases");
    expectSaid(runOffice({"create", "--dry-run", uri("admin", "o")}), 0, "The database o would be created");
    expectSaid(runOffice({"list-users", uri("admin", "o")}), 1, "does not exist");
    expectSaid(runOffice({"create", uri("admin", "o")}), 0, "o is an office of version");
    expectSaid(runOffice({"create", uri("admin", "o")}), 0, "o is an office already");
    EXPECT_TRUE(runOffice({"create", uri("admin", "o")}).output.endsWith("Nothing was changed.\n"));
    expectSaid(runOffice({"add-user", uri("admin", "o"), "anna"}, "secret\n"), 0, "anna is made");
    {
        Postgres::Connection anna(uri("anna", "o"));
        anna.runScript("INSERT INTO tblJobHeader (JobID) VALUES ('J')");
        // The upgrade and every other command stop at a newer office.
        Postgres::Connection(uri("admin", "o")).runScript("UPDATE office.version SET version = 99");
        for (const QStringList& command : {QStringList{"upgrade", uri("admin", "o")},
                                           {"list-users", uri("admin", "o")},
                                           {"remove-user", uri("admin", "o"), "anna"},
                                           {"export-job", uri("admin", "o"), "J", "/nowhere/x"}})
            expectSaid(runOffice(command), 1, "newer program");
        Postgres::Connection(uri("admin", "o")).runScript("UPDATE office.version SET version = 1");
        expectSaid(runOffice({"upgrade", uri("admin", "o")}), 0, "Nothing was changed");
    }
    // A backup brings the tables back, but neither the roles nor who may connect.
    Postgres::Connection(uri("postgres", "postgres"))
        .runScript("CREATE DATABASE again OWNER admin TEMPLATE template0 LOCALE 'C.UTF-8'");
    QProcess copy;
    copy.start("sh", {"-c", QString("pg_dump -Fc '%1' | pg_restore -d '%2'")
                                .arg(uri("postgres", "o"), uri("postgres", "again"))});
    ASSERT_TRUE(copy.waitForFinished(60000));
    EXPECT_EQ(copy.exitCode(), 0) << copy.readAllStandardError().toStdString();
    expectSaid(runOffice({"add-user", uri("postgres", "again"), "anna"}), 1, "brennoval-office create");
    expectSaid(runOffice({"create", uri("postgres", "again")}), 0, "The user anna is a member of it.");
    Postgres::Connection anna(uri("anna", "again"));
    EXPECT_EQ(anna.run("SELECT JobID FROM tblJobHeader").text(0, 0), "J");
    EXPECT_THROW(Postgres::Connection(uri("weak", "again")), Postgres::ServerFault);
}

TEST(OfficeTool, CompletesOneUserAfterTheOtherWhereARestoredBackupFoundNoRoles) {
    const ToolOffice office({"anna", "ben"});
    // What is left of users whose roles the server does not know.
    for (const char* role : {"anna", "ben"})
        office.execute(QString("REASSIGN OWNED BY %1 TO postgres; DROP OWNED BY %1; DROP ROLE %1").arg(role));
    expectSaid(runOffice({"upgrade", office.admin()}), 0, "Nothing was changed");
    for (const char* role : {"anna", "ben"}) {
        expectSaid(runOffice({"add-user", "--no-password", office.admin(), role}), 0,
                   "has the rights to its tables back");
        EXPECT_NO_THROW(Postgres::Connection(office.uri(role)).run("SELECT * FROM tblUser, tblJobData"))
            << role;
    }
}

TEST(OfficeTool, LeavesADatabaseAloneThatCannotBecomeAnOffice) {
    const ToolServer server;
    const auto uri = [&](const char* database) { return server.uri("postgres", database); };
    Postgres::Connection maintenance(uri("postgres"));
    maintenance.runScript("CREATE DATABASE accounts TEMPLATE template0 LOCALE 'C.UTF-8'");
    maintenance.runScript("CREATE DATABASE latin TEMPLATE template0 LOCALE 'C' ENCODING 'LATIN1'");
    maintenance.runScript("CREATE DATABASE ready TEMPLATE template0 LOCALE 'C.UTF-8'");
    maintenance.runScript("CREATE DATABASE taken TEMPLATE template0 LOCALE 'C.UTF-8'; ");
    maintenance.runScript("CREATE ROLE taken_users LOGIN");
    Postgres::Connection(uri("accounts")).runScript("CREATE TABLE ledger (a int)");
    expectSaid(runOffice({"create", uri("accounts")}), 1,
               "holds other things already, such as public.ledger");
    expectSaid(runOffice({"create", uri("latin")}), 1, "must have the encoding UTF8");
    expectSaid(runOffice({"create", uri("taken")}), 1, "There is a role taken_users already");
    for (const char* database : {"accounts", "latin", "taken"}) {
        Postgres::Connection untouched(uri(database));
        EXPECT_EQ(untouched.run("SELECT 1 FROM pg_namespace WHERE nspname = 'office'").rows(), 0) << database;
        EXPECT_EQ(
            untouched.run("SELECT 1 FROM pg_database WHERE datname = current_database() AND datacl IS NULL")
                .rows(),
            1)
            << database;
    }
    // As after a failure half-way, or made by whoever runs the server.
    expectSaid(runOffice({"create", "--dry-run", uri("ready")}), 0, "Dry run");
    expectSaid(runOffice({"list-users", uri("ready")}), 1, "ready is no office");
    expectSaid(runOffice({"create", uri("ready")}), 0, "ready is an office of version");
    expectSaid(runOffice({"list-users", uri("ready")}), 0, "no users yet");
}

TEST(OfficeTool, LetsUsersInAndOutAgain) {
    const ToolOffice office;
    office.execute("CREATE ROLE boss LOGIN CREATEDB");
    office.execute("CREATE ROLE deputy LOGIN IN ROLE boss");
    office.execute("CREATE ROLE reader LOGIN IN ROLE pg_read_all_data");
    office.execute("CREATE ROLE quiet NOLOGIN");
    office.execute("CREATE ROLE old LOGIN PASSWORD 'kept'");
    office.execute("CREATE SCHEMA carl");
    const std::string empty = stateOf(office);
    for (const char* user : {"boss", "deputy", "reader"})
        expectSaid(runOffice({"add-user", office.admin(), user}), 1, "may do more on the server");
    expectSaid(runOffice({"add-user", office.admin(), "quiet"}), 1, "may not log in");
    expectSaid(runOffice({"add-user", office.admin(), "anna"}), 1, "needs a password");
    expectSaid(runOffice({"add-user", office.admin(), "anna"}, "\n"), 1, "needs a password");
    expectSaid(runOffice({"add-user", office.admin(), "carl"}, "x\n"), 1,
               "has a schema carl that is no user's");
    expectSaid(runOffice({"remove-user", office.admin(), "anna"}), 1, "has no user anna");
    expectSaid(runOffice({"add-user", "--dry-run", office.admin(), "anna"}, "x\n"), 0, "Dry run");
    EXPECT_EQ(stateOf(office), empty);
    for (const char* user : {"anna", "Bén O'Hara", "50%1", "old"}) {
        expectSaid(runOffice({"add-user", office.admin(), user}, "a pässword\n"), 0, "has tables of its own");
        const std::string one = stateOf(office);
        expectSaid(runOffice({"add-user", office.admin(), user}, "another\n"), 0, "is in the office already");
        EXPECT_EQ(stateOf(office), one) << user;
        Postgres::Connection connection(office.uri(user));
        connection.runScript("INSERT INTO tblUser (PostalCode) VALUES ('1')");
        EXPECT_EQ(
            connection
                .run("SELECT rolsuper OR rolcreatedb OR rolcreaterole OR rolreplication OR rolbypassrls FROM "
                     "pg_roles WHERE rolname = current_user")
                .text(0, 0),
            "f");
        const QString listed = runOffice({"list-users", office.admin()}).output;
        EXPECT_TRUE(listed.contains(QString(user).leftJustified(20) + "  in the office, 1 connected"))
            << listed.toStdString();
    }
    EXPECT_TRUE(office.value("SELECT rolpassword FROM pg_authid WHERE rolname = 'anna'")
                    .starts_with("SCRAM-SHA-256$"));
    // After a restore on another server the role is not there, or has lost its rights.
    office.execute("REVOKE ALL ON anna.tblUser FROM anna; REVOKE brennoval_users FROM anna");
    EXPECT_TRUE(runOffice({"list-users", office.admin()}).output.contains("add-user completes it"));
    expectSaid(runOffice({"add-user", office.admin(), "anna"}), 0, "has the rights to its tables back");
    EXPECT_EQ(Postgres::Connection(office.uri("anna")).run("SELECT PostalCode FROM tblUser").text(0, 0), "1");
    for (const char* user : {"anna", "Bén O'Hara", "50%1"}) {
        expectSaid(runOffice({"remove-user", "--dry-run", office.admin(), user}), 0, "Dry run");
        expectSaid(runOffice({"remove-user", office.admin(), user}), 0, "is removed from the server");
    }
    office.execute("CREATE DATABASE accounts OWNER old");
    expectSaid(runOffice({"remove-user", office.admin(), "old"}), 0, "stays on the server");
    office.execute("DROP DATABASE accounts; ");
    expectSaid(runOffice({"list-users", office.admin()}), 0, "no users yet");
    EXPECT_EQ(stateOf(office), empty);
}

TEST(OfficeTool, AsksForPasswordsWithoutShowingThem) {
    const int terminal = posix_openpt(O_RDWR | O_NOCTTY);
    if (terminal < 0 || !QFile::exists("/dev/tty"))
        GTEST_SKIP() << "SKIPPED: this system has no terminals";
    close(terminal);
    const ToolOffice office({}, {"local all postgres trust", "local all all scram-sha-256"});
    office.execute("CREATE ROLE admin LOGIN SUPERUSER PASSWORD 'root and branch'");
    const QString address = office.uri("admin");
    const struct {
        QByteArrayList typed;
        int result;
        const char* shown;
    } cases[] = {
        {{"wrong"}, 1, "password authentication failed"},
        {{"root and branch", "first", "second"}, 1, "differ"},
        {{"root and branch", "", ""}, 1, "needs a password"},
        {{"root and branch", "her own", "her own"}, 0, "The role anna is made."},
    };
    for (const auto& row : cases) {
        const auto [result, shown] = runOnTerminal({"add-user", address, "anna"}, row.typed);
        SCOPED_TRACE(row.typed.join(", ").toStdString() + " shows " + shown.toStdString());
        EXPECT_EQ(result, row.result);
        EXPECT_TRUE(shown.contains(row.shown));
        for (const QByteArray& typed : row.typed)
            EXPECT_TRUE(typed.isEmpty() || !shown.contains(typed)) << typed.toStdString();
    }
    EXPECT_NO_THROW(Postgres::Connection(office.uri("anna"), "her own"));
    expectSaid(runOffice({"list-users", address}), 1, "password"); // nobody to ask
    const auto [result, shown] =
        runOnTerminal({"list-users", office.uri("admin", "none")}, {"root and branch"});
    EXPECT_EQ(result, 1);
    EXPECT_TRUE(shown.contains("\"none\" does not exist")) << shown.toStdString();
    // As libpq has it.
    QTemporaryDir folder;
    QFile passwords(folder.filePath("pgpass"));
    ASSERT_TRUE(passwords.open(QIODevice::WriteOnly));
    passwords.write("*:*:*:admin:root and branch\n");
    passwords.close();
    passwords.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    expectSaid(runOffice({"list-users", address + "&passfile=" + passwords.fileName()}), 0, "anna");
}
