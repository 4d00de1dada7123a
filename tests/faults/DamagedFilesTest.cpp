// Files and folders that are missing, damaged, locked, read-only or full: the error dialog or the path dialog
// opens, and everything stored before is kept.

#include "app/Register.h"
#include "core/shell/BrennovalMain.h"
#include "core/shell/Screens.h"
#include "core/store/Database.h"
#include "core/store/Gateway.h"
#include "tests/faults/Limits.h"
#include "tests/support/Driver.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QTimer>

#include <functional>
#include <random>

using namespace Gateway;

namespace {

class DamagedFiles : public testing::Test {
  protected:
    DamagedFiles() {
        home.installData();
        dialogs = &Driver::start();
        saveJob("Before");
    }
    ~DamagedFiles() override { Driver::stop(); }

    QString userFile() const { return home.dataFolder() + "/BrennovalUserData.mdb"; }
    QString systemFile() const { return home.dataFolder() + "/BrennovalSysData.mdb"; }

    static void saveJob(const QString& job) {
        Driver::command("mnuNewJob");
        Driver::enter("frmJobHeader", "txtJobID", job);
        Driver::press("frmJobHeader", "cmdNext");
        Driver::press("frmClassSelect", "cmdEXP");
        Driver::enterConditions();
        Driver::press("frmJobConditions", "cmdNext");
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
    ScriptedDialogs* dialogs = nullptr;
};

} // namespace

TEST_F(DamagedFiles, MissingFileAsksForTheFolder) {
    ASSERT_TRUE(QFile::rename(userFile(), userFile() + ".away"));
    Driver::command("mnuNewJob");
    EXPECT_TRUE(Driver::isOpen("frmDatabasePath"));
    EXPECT_EQ(dialogs->last.text, "Invalid Database Path!\nPlease indicate location of database.");
    ASSERT_TRUE(QFile::rename(userFile() + ".away", userFile()));
    EXPECT_EQ(jobs(), "Before");
}

TEST_F(DamagedFiles, UnreadableContentsEndInTheErrorDialog) {
    const QByteArray good = contents(userFile());
    std::mt19937 random(5);
    QByteArray noise(20000, Qt::Uninitialized);
    for (char& byte : noise)
        byte = static_cast<char>(random());
    QByteArray scratched = good; // valid header, broken pages
    for (qsizetype i = 4096; i < scratched.size(); i += 3)
        scratched[i] = static_cast<char>(random());
    const QByteArray damages[] = {
        "",       "plain text, no database at all", noise, good.left(good.size() * 2 / 5), good.left(100),
        scratched};
    for (const QByteArray& damage : damages) {
        write(userFile(), damage);
        saveJob("During");
        EXPECT_FALSE(Driver::report().isEmpty()) << "after " << damage.size() << " bytes";
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
    Driver::press("frmTankSeries", "OptRCB");
    Driver::press("frmTankSeries", "cmdNext");
    EXPECT_FALSE(Driver::report().isEmpty());
    EXPECT_TRUE(Driver::isOpen("frmTankSeries"));
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
        EXPECT_TRUE(Driver::report().contains("frmJobHeader.SaveRecord")) << Driver::report().toStdString();
        ASSERT_TRUE(Driver::isOpen("frmJobHeader")) << "the screen stays, and what was typed";
        EXPECT_EQ(Driver::control<QLineEdit>("frmJobHeader", "txtJobID")->text(), "During");
    }
    QFile(home.dataFolder()).setPermissions(QFile::Permissions(0x7777));
    EXPECT_EQ(jobs(), "Before");
    Driver::press("frmJobHeader", "cmdNext"); // the cause is gone
    EXPECT_EQ(jobs(), "Before,During");
}

TEST_F(DamagedFiles, FullDiskKeepsWhatWasStored) {
    {
        const FullDisk full(static_cast<rlim_t>(QFileInfo(userFile()).size()) / 4);
        saveJob("During");
        EXPECT_TRUE(Driver::report().contains("SaveRecord")) << Driver::report().toStdString();
        EXPECT_TRUE(Driver::isOpen("frmJobHeader"));
    }
    EXPECT_EQ(jobs(), "Before");
    Driver::press("frmJobHeader", "cmdNext");
    EXPECT_EQ(jobs(), "Before,During");
}

TEST_F(DamagedFiles, LockThatLastsIsAnOrdinaryError) {
    Connection other = openDatabase("User");
    Recordset().Open("BEGIN EXCLUSIVE", other);
    Driver::press("frmTankSeries", "cmdPrevious");
    EXPECT_TRUE(Driver::report().contains("locked")) << Driver::report().toStdString();
    other.Close();
    EXPECT_EQ(jobs(), "Before");
}

TEST_F(DamagedFiles, LockDoesNotHoldAComparisonBack) {
    Driver::command("mnuCompare");
    Driver::control<QComboBox>("frmCompare", "cmboApplication")->setCurrentText("Shock Arrestor Tank");
    Screens::show("frmTankSeries");
    Driver::settle();
    Connection other = openDatabase("User");
    Recordset().Open("BEGIN EXCLUSIVE", other);
    QElapsedTimer clock;
    clock.start();
    Screens::show("frmCompare");
    EXPECT_EQ(Screens::active(), "frmCompare");
    EXPECT_LT(clock.elapsed(), 2000); // a save waits longer for a lock
    EXPECT_TRUE(Driver::report().isEmpty());
}

TEST_F(DamagedFiles, FailedSaveAtClosingKeepsTheScreen) {
    Driver::command("mnuNewJob");
    Driver::enter("frmJobHeader", "txtJobID", "Typed");
    const QByteArray good = contents(userFile());
    write(userFile(), "damaged");
    dialogs->rule = [](const Message&) { return QMessageBox::Yes; };
    EXPECT_FALSE(Screens::unload("frmJobHeader"));
    EXPECT_FALSE(Driver::report().isEmpty());
    write(userFile(), good);
    EXPECT_TRUE(Screens::unload("frmJobHeader"));
    dialogs->rule = ScriptedDialogs::decline;
    EXPECT_EQ(jobs(), "Before,Typed");
}

TEST_F(DamagedFiles, FailedSaveStopsTheExit) {
    Driver::command("mnuNewJob");
    Driver::enter("frmJobHeader", "txtJobID", "Typed");
    execute("User",
            "CREATE TRIGGER refuses BEFORE INSERT ON tblJobHeader BEGIN SELECT RAISE(ABORT, 'refused'); END");
    dialogs->rule = [](const Message&) { return QMessageBox::Yes; };
    Driver::command("mnuExit");
    EXPECT_TRUE(Driver::isOpen("frmJobHeader"));
    EXPECT_TRUE(Driver::report().contains("refused"));
    dialogs->rule = ScriptedDialogs::decline;
}

TEST_F(DamagedFiles, HeldReturnStaysWithItsScreen) {
    Driver::command("mnuNewJob");
    Driver::enter("frmJobHeader", "txtJobID", "Held");
    const auto press = [](bool repeated) {
        QKeyEvent event(QEvent::KeyPress, Qt::Key_Return, {}, "\r", repeated);
        QCoreApplication::sendEvent(QApplication::focusWidget(), &event);
        Driver::settle();
    };
    press(false);
    ASSERT_TRUE(Driver::isOpen("frmClassSelect"));
    Driver::control("frmClassSelect", "cmdCancel")->setFocus();
    for (int i = 0; i < 5; ++i)
        press(true);
    EXPECT_TRUE(Driver::isOpen("frmClassSelect"));
    EXPECT_EQ(jobs(), "Before,Held");
}

// The splash continues during a lock: its report stays as it appeared, and becomes an ordinary window once
// the lock is gone.
TEST(Start, WaitsForALockWithoutFreezing) {
    const TemporaryHome home;
    home.installData();
    registerAll();
    ScriptedDialogs::install().rule = ScriptedDialogs::decline; // the first start asks for prior data
    Connection other = openDatabase("User");
    Recordset().Open("BEGIN EXCLUSIVE", other);
    Screens::open("frmSplash");
    ASSERT_TRUE(QTest::qWaitFor([] { return Driver::report().contains("locked"); }, 10000));
    const QString first = Driver::report();
    Driver::control("frmError", "lblTechSupport")->setProperty("seen", true);
    int ticks = 0;
    QObject::connect(Screens::find("frmSplash")->findChild<QTimer*>(), &QTimer::timeout,
                     [&ticks] { ++ticks; });
    ASSERT_TRUE(QTest::qWaitFor([&ticks] { return ticks >= 2; }, 10000));
    EXPECT_EQ(Driver::report(), first);
    other.Close();
    ASSERT_TRUE(QTest::qWaitFor([] { return BrennovalMain::instance() != nullptr; }, 10000));
    EXPECT_EQ(Screens::find("frmError")->Tag, "0");
    Driver::stop();
}

// A start without data says why, and can be given up from the dialog and from the picture behind it.
TEST(Start, WithoutDataSaysWhyAndCanBeGivenUp) {
    const TemporaryHome home;
    registerAll();
    ScriptedDialogs::install();
    qputenv("BRENNOVAL_INSTALL_FAILURE", "brennoval-install: no room on the disk");
    const std::function<void()> waysOut[] = {
        [] { Driver::press("frmDatabasePath", "CancelButton"); },
        [] { QTest::keyClick(Screens::find("frmDatabasePath"), Qt::Key_Escape); },
        [] { QTest::keyClick(Screens::find("frmSplash"), Qt::Key_Escape); }};
    for (const auto& leave : waysOut) {
        Screens::open("frmSplash");
        ASSERT_TRUE(QTest::qWaitFor([] { return Driver::isOpen("frmDatabasePath"); }, 10000));
        const QString why = Driver::control<QLabel>("frmDatabasePath", "lblFailed")->text();
        EXPECT_TRUE(why.endsWith("start again.\nno room on the disk")) << why.toStdString();
        QTimer::singleShot(0, leave);
        QTimer::singleShot(10000, [] { QCoreApplication::exit(1); });
        EXPECT_EQ(QCoreApplication::exec(), 0);
        Driver::stop();
    }
    qunsetenv("BRENNOVAL_INSTALL_FAILURE");
}
