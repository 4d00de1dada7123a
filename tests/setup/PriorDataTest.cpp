// The earlier program's files, taken over through the getting-started screen: compared row by row with
// another reader, and damaged in every way.

#include "core/shell/Status.h"
#include "setup/InstallerFiles.h"
#include "setup/PriorFile.h"
#include "tests/faults/Limits.h"
#include "tests/support/Driver.h"
#include "tests/support/Rounds.h"

#include <gtest/gtest.h>

#include <QProcess>
#include <QTimer>

#include <random>

#include <sys/stat.h>

using namespace Gateway;
using namespace InstallerFiles;
using namespace StatusBar;

namespace {

const QString fixtures = QStringLiteral(SOURCE_FOLDER "/../shared/fixtures/prior/");

QByteArray contents(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void write(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(bytes) == bytes.size());
}

class PriorData : public testing::Test {
  protected:
    void SetUp() override {
        if (!QFileInfo::exists(fixtures))
            GTEST_SKIP() << "SKIPPED: there are no prior databases at " << fixtures.toStdString();
        home.installData();
        dialogs = &Driver::start();
        setInstallerFolder(home.path());
    }
    void TearDown() override {
        Driver::stop();
        setPriorHelper({});
    }

    QString priorFile() const { return home.path() + "/Data.mdb"; }

    /// Takes a file over, as the first start does.
    void convert(const QByteArray& file) const {
        write(priorFile(), file);
        convertNamed(priorFile());
    }
    void convertNamed(const QString& path) const {
        write(home.path() + "/datasource.ini", path.toLocal8Bit());
        Screens::open("frmFirstTime");
        Driver::settle();
    }
    /// Closes the program and restores the data as shipped.
    void beginAnew() const {
        for (const char* screen : {"frmFirstTime", "frmError"})
            Screens::unload(screen);
        home.installData();
    }

    static QString value(const QString& sql) {
        Rows rows("User", sql);
        return rows.atEnd() ? QString() : rows["V"].text();
    }
    static QString counts() {
        QStringList all;
        for (const char* table : {"tblContractor", "tblEngineer", "tblUser", "tblJobHeader", "tblJobData"})
            all.append(value(QString("SELECT COUNT(*) AS V FROM ") + table));
        return all.join(' ');
    }
    static QString converted() { return value("SELECT Convert AS V FROM tblFirstTime"); }

    TemporaryHome home;
    ScriptedDialogs* dialogs = nullptr;
};

using Row = QHash<QString, QString>; // by column; a null is an empty text

/// The rows of a table as read by mdbtools' exporter.
QList<Row> exported(const QString& file, const QString& table) {
    QProcess exporter;
    exporter.start("mdb-export", {"-Q", "-d", "\x1f", "-R", "\x1e", "-T", "%Y-%m-%d %H:%M:%S", "-D",
                                  "%Y-%m-%d", file, table});
    EXPECT_TRUE(exporter.waitForFinished() && exporter.exitCode() == 0) << "mdb-export of mdbtools";
    QStringList lines = QString::fromUtf8(exporter.readAllStandardOutput()).split(QChar(0x1e));
    const QStringList columns = lines.takeFirst().split(QChar(0x1f));
    lines.removeLast(); // the rest after the last row
    QList<Row> rows;
    for (const QString& line : lines) {
        const QStringList values = line.split(QChar(0x1f));
        Row row;
        for (qsizetype i = 0; i < values.size(); ++i)
            row.insert(columns[i], values[i]);
        rows.append(row);
    }
    return rows;
}

/// Compares a stored value as the exporter would write it: numbers with 16 digits.
bool isSame(Recordset::Field stored, const QString& expected) {
    bool isNumber = false;
    expected.toDouble(&isNumber);
    return stored.text() == expected || (isNumber && QString::asprintf("%.16g", stored.number()) == expected);
}

/// Compares a query's rows with expected ones, column by column under our names.
void expectRows(const QString& sql, const QList<Row>& expected) {
    const QHash<QString, QString> renamed = {
        {"PipeFt", "PipeLength"},
        {"TagID", "TagID01"},
        {"Registered", {}}, // columns of a later version that nobody needs
        {"Archived", {}}};
    Rows stored("User", sql);
    for (const Row& row : expected) {
        ASSERT_FALSE(stored.atEnd()) << sql.toStdString();
        for (auto column = row.cbegin(); column != row.cend(); ++column) {
            const QString name = renamed.value(column.key(), column.key());
            EXPECT_TRUE(name.isEmpty() || isSame(stored[name], *column))
                << name.toStdString() << ": " << stored[name].text().toStdString() << " for "
                << column->toStdString();
        }
        stored->moveNext();
    }
    EXPECT_TRUE(stored.atEnd()) << sql.toStdString();
}

QList<Row> withColumn(QList<Row> rows, const QString& from, const QString& to) {
    for (Row& row : rows)
        row.insert(to, row.take(from));
    return rows;
}

} // namespace

TEST_F(PriorData, ArrivesWholeAndToTheLastCharacter) {
    const QString today = QDate::currentDate().toString(Qt::ISODate);
    for (const char* name : {"typical", "distinct", "worn", "large", "empty"}) {
        SCOPED_TRACE(name);
        const QString file = fixtures + "prior-" + name + ".mdb";
        convert(contents(file));
        EXPECT_EQ(Driver::report(), "");
        expectRows("SELECT * FROM tblContractor",
                   withColumn(exported(file, "tblContractor"), "Contractor", "fldName"));
        expectRows("SELECT * FROM tblEngineer",
                   withColumn(exported(file, "tblEngineer"), "Engineer", "fldName"));
        expectRows("SELECT * FROM tblJobHeader", exported(file, "tblJobHeader"));
        QList<Row> users = exported(file, "tblUser");
        for (Row& user : users) { // the contractor is in both places
            user["DefaultEngineer"] = user["DefaultContractor"];
            if (user["DefaultPSIa"].isEmpty())
                user["DefaultPSIa"] = "14.7";
        }
        expectRows("SELECT * FROM tblUser", users);
        QList<Row> tanks = exported(file, "tblJobData");
        for (qsizetype i = 0; i < tanks.size(); ++i) {
            tanks[i]["TankNo"] = QString::number(i + 1);
            tanks[i]["TankID"] = tanks[i]["JobID"] + "." + tanks[i]["TankNo"];
            Rows model("Sys",
                       "SELECT Class FROM tblModelMaster WHERE ModelDscrptn = '" + tanks[i]["ModelNo"] + "'");
            tanks[i]["TankClass"] = model.atEnd() ? "" : model["Class"].text();
        }
        expectRows("SELECT * FROM tblJobData ORDER BY TankNo", tanks);
        EXPECT_EQ(
            value("SELECT COUNT(*) AS V FROM tblJobData WHERE ifnull(DateCreated, '') < '" + today + "'"),
            "0");
        EXPECT_EQ(converted(), "1");
        EXPECT_FALSE(QFile::exists(priorFile())) << "what arrived is deleted";
        beginAnew();
    }
}

TEST_F(PriorData, KeepsANullApartFromAnEmptyText) {
    convert(contents(fixtures + "prior-distinct.mdb"));
    EXPECT_EQ(value("SELECT COUNT(*) AS V FROM tblJobData WHERE TagID01 IS NULL"), "1");
    EXPECT_EQ(value("SELECT COUNT(*) AS V FROM tblJobData WHERE TagID01 = ''"), "1");
    EXPECT_EQ(value("SELECT JobID AS V FROM tblJobHeader WHERE JobInfo = ''"), "Job.With.Points");
    EXPECT_EQ(value("SELECT JobID AS V FROM tblJobHeader WHERE JobInfo IS NULL"), "2001-18");
    EXPECT_EQ(value("SELECT JobID AS V FROM tblJobHeader WHERE DateCreated IS NULL"), "7");
}

TEST_F(PriorData, ComesFromTheFileThatTheUserShowsAndKeepsTheWindowsAlive) {
    QStringList told; // status bar texts, as seen by a timer that runs while the windows are alive
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&told] { told.append(statusText()); });
    timer.start(0);
    dialogs->rule = [](const Message&) { return QMessageBox::Yes; };
    dialogs->files = {fixtures + "prior-large.mdb"};
    Screens::open("frmFirstTime");
    EXPECT_EQ(converted() + ", " + counts(), "1, 300 300 1 2000 10000");
    EXPECT_FALSE(told.filter(" of 10,000 tanks").isEmpty());
    EXPECT_EQ(statusText(), "Finished!");
    EXPECT_TRUE(QFile::exists(fixtures + "prior-large.mdb")) << "his file stays";
}

// Later, on request: next to the user's own data, whose jobs and names do not change.
TEST_F(PriorData, ComesOnceMoreBesideTheUsersOwn) {
    convert(contents(fixtures + "prior-typical.mdb"));
    const QString all = counts();
    const QString job = value("SELECT JobID AS V FROM tblJobHeader");
    execute("User", "DELETE FROM tblJobHeader WHERE JobID = '" + job + "'");
    execute("User", "DELETE FROM tblJobData WHERE JobID = '" + job + "'");
    execute("User", "UPDATE tblJobHeader SET Engineer = 'His own'");
    execute("User", "UPDATE tblUser SET DefaultPSIa = 13");
    const QString file = fixtures + "prior-typical.mdb";
    const QByteArray bytes = contents(file);
    const QString before = counts();
    dialogs->files = {file};
    Driver::command("mnuPriorData"); // its question is declined
    EXPECT_TRUE(dialogs->last.text.startsWith("These jobs are in your data already:\n"));
    EXPECT_FALSE(dialogs->last.text.contains(job + ",")) << "which does not";
    EXPECT_EQ(counts(), before);
    dialogs->files = {file};
    dialogs->rule = [](const Message& message) {
        return message.buttons & QMessageBox::Yes ? QMessageBox::Yes : QMessageBox::Ok;
    };
    Driver::command("mnuPriorData");
    EXPECT_TRUE(dialogs->last.text.startsWith("Taken over: 1 jobs, ")) << dialogs->last.text.toStdString();
    EXPECT_EQ(counts(), all);
    EXPECT_EQ(value("SELECT COUNT(*) AS V FROM tblJobHeader WHERE Engineer <> 'His own'") + " " +
                  value("SELECT DefaultPSIa AS V FROM tblUser") + " " +
                  value("SELECT COUNT(*) AS V FROM tblJobData WHERE TankClass IS NULL"),
              "1 13 0");
    EXPECT_EQ(contents(file), bytes);
}

// Tank lines that have lost their header are the user's own as well.
TEST_F(PriorData, LeavesOutAJobOfWhichOnlyTankLinesStand) {
    convert(contents(fixtures + "prior-typical.mdb"));
    const QString job = value("SELECT JobID AS V FROM tblJobData");
    execute("User", "DELETE FROM tblJobHeader");
    execute("User", "DELETE FROM tblJobData WHERE JobID <> '" + job + "'");
    const QString lines = value("SELECT COUNT(*) AS V FROM tblJobData");
    QString question;
    dialogs->rule = [&question](const Message& message) {
        if (!(message.buttons & QMessageBox::Yes))
            return QMessageBox::Ok;
        question = message.text;
        return QMessageBox::Yes;
    };
    dialogs->files = {fixtures + "prior-typical.mdb"};
    Driver::command("mnuPriorData");
    EXPECT_TRUE(question.startsWith("These jobs are in your data already:\n" + job + "\n"))
        << question.toStdString();
    EXPECT_TRUE(dialogs->last.text.startsWith("Taken over: 4 jobs, ")) << dialogs->last.text.toStdString();
    EXPECT_EQ(value("SELECT COUNT(*) AS V FROM tblJobData WHERE JobID = '" + job + "'"), lines);
}

TEST_F(PriorData, ReportsWhyAFileIsOfNoUse) {
    const QByteArray typical = contents(fixtures + "prior-typical.mdb");
    QByteArray foreign = typical;
    foreign.replace(QByteArray("t\0b\0l\0U\0s\0e\0r\0", 14), QByteArray("t\0b\0l\0U\0s\0e\0x\0", 14));
    ASSERT_NE(foreign, typical);
    const struct {
        const char* name;
        QByteArray file;
        const char* converted;
        const char* report; // part of it
        bool keepsFile;
    } cases[] = {
        {"text", contents(fixtures + "not-a-database.mdb"), "1", "", false},
        {"cut", contents(fixtures + "prior-truncated.mdb"), "1", "", false},
        {"nothing", {}, "1", "", false},
        {"protected", contents(fixtures + "protected.mdb"), "0", "Not a valid password", true},
        {"foreign", foreign, "0", "tblUser", true},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.name);
        convert(row.file);
        EXPECT_EQ(converted(), row.converted);
        EXPECT_EQ(counts(), "0 0 0 0 0");
        EXPECT_EQ(Driver::report().isEmpty(), *row.report == '\0');
        EXPECT_TRUE(Driver::report().contains(row.report)) << Driver::report().toStdString();
        EXPECT_EQ(QFile::exists(priorFile()), row.keepsFile);
        if (row.keepsFile) { // tried again, with the installer's file as it stands: mended by now
            for (const char* screen : {"frmFirstTime", "frmError"})
                Screens::unload(screen);
            write(priorFile(), typical);
            Screens::open("frmFirstTime");
            Driver::settle();
            EXPECT_EQ(converted(), "1");
            EXPECT_NE(counts(), "0 0 0 0 0");
            EXPECT_FALSE(QFile::exists(priorFile()));
        }
        beginAnew();
    }
}

TEST_F(PriorData, TakesACrashOrAHangOfItsReaderForADamagedFile) {
    const QString helper = home.path() + "/helper";
    for (const char* line : {"kill -SEGV $$", "exec sleep 60", "printf T; exit 0"}) {
        write(helper, QByteArray("#!/bin/sh\n") + line + "\n");
        QFile(helper).setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        setPriorHelper({helper, std::chrono::milliseconds(300)});
        convert(contents(fixtures + "prior-typical.mdb"));
        EXPECT_EQ(converted() + ", " + counts(), "1, 0 0 0 0 0") << line;
        EXPECT_EQ(Driver::report(), "");
        EXPECT_EQ(contents(priorFile() + ".unread1"), contents(fixtures + "prior-typical.mdb"));
        QFile::remove(priorFile() + ".unread1");
        beginAnew();
    }
}

TEST_F(PriorData, PutsAsideUnderAFreeNameOrLeavesIt) {
    const QDir folder(home.path() + "/prior");
    ASSERT_TRUE(folder.mkpath("."));
    const auto find = [&folder](const QByteArray& text) {
        QStringList names;
        for (const QString& name : folder.entryList(QDir::Files))
            if (contents(folder.filePath(name)) == text)
                names.append(name);
        return names;
    };
    for (int number = 1; number <= 120; ++number)
        write(folder.filePath(QString("Data.mdb.unread%1").arg(number)), "of another year");
    QFile::link(folder.filePath("nowhere"), folder.filePath("Data.mdb.unread121"));
    for (const QString& name : {QString("Data.mdb"), QString(255, 'n'), QString(120, QChar(0xe9)) + ".mdb"}) {
        write(folder.filePath(name), "torn");
        convertNamed(folder.filePath(name));
        EXPECT_EQ(Driver::report(), "");
        EXPECT_FALSE(QFile::exists(folder.filePath(name)));
        ASSERT_EQ(find("torn").size(), 1) << name.toStdString();
        EXPECT_TRUE(find("torn").first().contains(".unread"));
        EXPECT_EQ(find("of another year").size(), 120);
        QFile::remove(folder.filePath(find("torn").first()));
        beginAnew();
    }
    write(folder.filePath("Data.mdb"), "torn");
    for (const QString& path : QDir(home.dataFolder()).entryList(QDir::Files))
        QFile(home.dataFolder() + "/" + path).setPermissions(QFile::Permissions(0x6666));
    for (const QString& path : {home.path(), home.dataFolder()})
        QFile(path).setPermissions(QFile::Permissions(0x7777));
    QFile(folder.path()).setPermissions(QFile::Permissions(0x5555));
    {
        const OrdinaryUser user;
        convertNamed(folder.filePath("Data.mdb"));
    }
    EXPECT_EQ(Driver::report(), "");
    EXPECT_EQ(converted(), "1");
    EXPECT_EQ(find("torn"), QStringList("Data.mdb")) << "what cannot be put aside stays";
    QFile(folder.path()).setPermissions(QFile::Permissions(0x7777));
}

TEST_F(PriorData, TouchesNothingButPlainFiles) {
    const QByteArray typical = contents(fixtures + "prior-typical.mdb");
    const QDir folder(home.path() + "/prior");
    ASSERT_TRUE(folder.mkpath("folder"));
    write(folder.filePath("whole.mdb"), typical);
    write(folder.filePath("torn.mdb"), "torn");
    QFile::link("whole.mdb", folder.filePath("link"));
    QFile::link("torn.mdb", folder.filePath("link to torn"));
    QFile::link("nowhere", folder.filePath("link to nothing"));
    ASSERT_EQ(mkfifo(QFile::encodeName(folder.filePath("pipe")).constData(), 0600), 0);
    const QStringList before = folder.entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot);
    const QString journal = home.dataFolder() + "/BrennovalUserData.mdb-journal";
    for (const QString& path :
         {folder.filePath("folder"), folder.filePath("folder/"), folder.filePath("link"),
          folder.filePath("link to torn"), folder.filePath("link to nothing"), folder.filePath("pipe"),
          QString("/dev/null"), home.dataFolder(), journal}) {
        write(journal, {}); // the engine ignores an empty journal
        convertNamed(path);
        EXPECT_EQ(Driver::report(), "") << path.toStdString();
        EXPECT_EQ(converted(), "1");
        EXPECT_EQ(folder.entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot), before);
        EXPECT_TRUE(QFile::exists("/dev/null"));
        EXPECT_FALSE(QFile::exists(journal + ".unread1"));
        beginAnew();
    }
    EXPECT_EQ(contents(folder.filePath("whole.mdb")), typical);
}

TEST_F(PriorData, IgnoresAnOverlongInstallersFileAndANulInIt) {
    const QByteArray typical = contents(fixtures + "prior-typical.mdb");
    write(priorFile(), typical);
    QStringList asked;
    dialogs->rule = [&asked](const Message& message) {
        asked.append(message.title);
        return QMessageBox::No;
    };
    convertNamed(priorFile() + QString(4096 - priorFile().toLocal8Bit().size() + 1, ' '));
    EXPECT_EQ(asked, QStringList("Convert Data?"));
    EXPECT_EQ(converted(), "0");
    EXPECT_EQ(contents(priorFile()), typical);
    EXPECT_TRUE(QFile::exists(home.path() + "/datasource.ini"));
    beginAnew();
    convertNamed(priorFile() + QChar(0));
    EXPECT_EQ(converted() + ", " + counts(), "1, 4 3 1 5 9")
        << "the file that is deleted is the one that was read";
    EXPECT_FALSE(QFile::exists(priorFile()));
}

TEST_F(PriorData, LeavesNothingBehindWhenAWriteFails) {
    const Rows taken("User",
                     "INSERT INTO tblJobHeader (JobID) VALUES ('A-7')"); // the fourth of the file's five jobs
    convert(contents(fixtures + "prior-typical.mdb"));
    EXPECT_TRUE(Driver::report().contains("ConvertPriorData")) << Driver::report().toStdString();
    EXPECT_EQ(converted() + ", " + counts(), "0, 0 0 0 1 0");
    EXPECT_TRUE(QFile::exists(priorFile()));
    Screens::unload("frmError");
    Screens::unload("frmFirstTime");
    execute("User", "DELETE FROM tblJobHeader");
    Screens::open("frmFirstTime"); // the cause is gone
    EXPECT_EQ(converted() + ", " + counts(), "1, 4 3 1 5 9");
}

TEST_F(PriorData, SurvivesEveryDamage) {
    const QHash<QString, QString> whole = {
        {"typical", "4 3 1 5 9"}, {"distinct", "4 3 1 5 9"}, {"worn", "10 0 1 50 214"}};
    std::mt19937 random(14);
    const auto below = [&random](qsizetype limit) {
        return std::uniform_int_distribution<qsizetype>(0, limit - 1)(random);
    };
    setPriorHelper({{}, std::chrono::seconds(2)});
    int arrived = 0;
    const int rounds = roundCount(60, 10000);
    for (int round = 0; round < rounds; ++round) {
        const QString name = QStringList{"typical", "distinct", "worn"}[round % 3];
        QByteArray file = contents(fixtures + "prior-" + name + ".mdb");
        if (below(10) == 0)
            file.truncate(below(file.size()));
        for (qsizetype hit = below(40); hit >= 0 && !file.isEmpty(); --hit) {
            const qsizetype at = below(4) == 0 ? below(4096) : below(file.size()); // the header now and then
            for (qsizetype i = at; i < std::min(at + 1 + below(4), file.size()); ++i)
                file[i] = static_cast<char>(random());
        }
        convert(file);
        const QString found = counts();
        EXPECT_TRUE(found == "0 0 0 0 0" || found == whole[name])
            << name.toStdString() << ", round " << round << ": " << found.toStdString();
        arrived += found == whole[name] ? 1 : 0;
        beginAnew();
    }
    EXPECT_GT(arrived, rounds / 100) << "no damage was so small that the file could still be read";
    EXPECT_LT(arrived, rounds);
}
