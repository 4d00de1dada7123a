// Files and folders that are missing, damaged, locked, read-only or full: the error dialog or the path dialog
// comes, and what was stored before stays.

#include "core/base/Fault.h"
#include "core/store/SessionStore.h"
#include "tests/faults/Limits.h"
#include "tests/faults/Program.h"

#include <gtest/gtest.h>

#include <QLineEdit>
#include <QPlainTextEdit>

#include <random>

using namespace UtilityFunctions;

namespace {

class DamagedFiles : public testing::Test {
  protected:
    DamagedFiles() {
        home.installData();
        Program::start();
        saveJob("Before");
    }
    ~DamagedFiles() override { Program::stop(); }

    QString userFile() const { return home.dataFolder() + "/BrennovalUserData.mdb"; }
    QString systemFile() const { return home.dataFolder() + "/BrennovalSysData.mdb"; }

    static void saveJob(const QString& job) {
        Program::command("mnuNewJob");
        Program::enter("frmJobHeader", "txtJobID", job);
        Program::press("frmJobHeader", "cmdNext");
        Program::press("frmClassSelect", "cmdEXP");
        Program::enterConditions();
        Program::press("frmJobConditions", "cmdNext");
    }

    /// What the error dialog shows; an empty text when it is not open.
    static QString report() {
        auto* text = Program::control<QPlainTextEdit>("frmError", "lblTechSupport");
        return text ? text->toPlainText() : QString();
    }

    static QByteArray contents(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    static void write(const QString& path, const QByteArray& bytes) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(bytes);
    }

    QString jobs() {
        Connection user = openDatabase("User");
        Recordset rows;
        rows.Open("SELECT group_concat(JobID) AS V FROM tblJobHeader", user);
        return rows["V"].text();
    }

    TemporaryHome home;
};

} // namespace

TEST_F(DamagedFiles, MissingFileAsksForTheFolder) {
    ASSERT_TRUE(QFile::rename(userFile(), userFile() + ".away"));
    Program::command("mnuNewJob");
    EXPECT_TRUE(Program::isOpen("frmDatabasePath"));
    EXPECT_EQ(QuietDialogs::lastText(), "Invalid Database Path!\nPlease indicate location of database.");
    ASSERT_TRUE(QFile::rename(userFile() + ".away", userFile()));
    EXPECT_EQ(jobs(), "Before");
}

TEST_F(DamagedFiles, UnreadableContentsEndInTheErrorDialog) {
    const QByteArray good = contents(userFile());
    std::mt19937 random(5);
    QByteArray noise(20000, Qt::Uninitialized);
    for (char& byte : noise)
        byte = static_cast<char>(random());
    QByteArray scratched = good; // sound header, broken pages
    for (qsizetype i = 4096; i < scratched.size(); i += 3)
        scratched[i] = static_cast<char>(random());
    const QByteArray damages[] = {
        "",       "plain text, no database at all", noise, good.left(good.size() * 2 / 5), good.left(100),
        scratched};
    for (const QByteArray& damage : damages) {
        write(userFile(), damage);
        saveJob("During");
        EXPECT_FALSE(report().isEmpty()) << "after " << damage.size() << " bytes";
        EXPECT_EQ(contents(userFile()), damage) << "a damaged file is left as it is";
        for (const QString& name : Screens::loaded())
            Screens::unload(name);
        Screens::unload("frmJobHeader");
    }
    write(userFile(), good);
    EXPECT_EQ(jobs(), "Before");
}

TEST_F(DamagedFiles, DamagedCatalogueEndsInTheErrorDialog) {
    write(systemFile(), contents(systemFile()).left(5000));
    Program::press("frmTankSeries", "OptRCB");
    Program::press("frmTankSeries", "cmdNext");
    EXPECT_FALSE(report().isEmpty());
    EXPECT_TRUE(Program::isOpen("frmTankSeries"));
    EXPECT_EQ(jobs(), "Before");
}

TEST_F(DamagedFiles, ReadOnlyFolderKeepsTheUsersText) {
    for (const QString& path : {userFile(), systemFile()})
        QFile(path).setPermissions(QFile::Permissions(0x6666));
    QFile(home.dataFolder()).setPermissions(QFile::Permissions(0x5555));
    QFile(home.path()).setPermissions(QFile::Permissions(0x7777));
    {
        const OrdinaryUser user;
        saveJob("During");
        EXPECT_TRUE(report().contains("frmJobHeader.SaveRecord")) << report().toStdString();
        ASSERT_TRUE(Program::isOpen("frmJobHeader")) << "the screen stays, and what was typed";
        EXPECT_EQ(Program::control<QLineEdit>("frmJobHeader", "txtJobID")->text(), "During");
    }
    QFile(home.dataFolder()).setPermissions(QFile::Permissions(0x7777));
    EXPECT_EQ(jobs(), "Before");
    Program::press("frmJobHeader", "cmdNext"); // the cause is gone
    EXPECT_EQ(jobs(), "Before,During");
}

TEST_F(DamagedFiles, FullDiskKeepsWhatWasStored) {
    {
        const FullDisk full(static_cast<rlim_t>(QFileInfo(userFile()).size()) / 4);
        saveJob("During");
        EXPECT_TRUE(report().contains("SaveRecord")) << report().toStdString();
        EXPECT_TRUE(Program::isOpen("frmJobHeader"));
    }
    EXPECT_EQ(jobs(), "Before");
    Program::press("frmJobHeader", "cmdNext");
    EXPECT_EQ(jobs(), "Before,During");
}

TEST_F(DamagedFiles, LockThatLastsIsAnOrdinaryError) {
    Connection other = openDatabase("User");
    Recordset().Open("BEGIN EXCLUSIVE", other);
    Program::press("frmTankSeries", "cmdPrevious");
    EXPECT_TRUE(report().contains("locked")) << report().toStdString();
    other.Close();
    EXPECT_EQ(jobs(), "Before");
}

TEST_F(DamagedFiles, FailedSaveAtClosingKeepsTheScreen) {
    Program::command("mnuNewJob");
    Program::enter("frmJobHeader", "txtJobID", "Typed");
    const QByteArray good = contents(userFile());
    write(userFile(), "damaged");
    QuietDialogs::choose() = [](const Message&) { return QMessageBox::Yes; };
    EXPECT_FALSE(Screens::unload("frmJobHeader"));
    EXPECT_FALSE(report().isEmpty());
    write(userFile(), good);
    EXPECT_TRUE(Screens::unload("frmJobHeader"));
    QuietDialogs::choose() = [](const Message& m) {
        return m.buttons & QMessageBox::Yes ? QMessageBox::No : QMessageBox::Ok;
    };
    EXPECT_EQ(jobs(), "Before,Typed");
}
