#include "app/Install.h"
#include "core/base/Fault.h"
#include "core/store/Database.h"
#include "core/store/SessionStore.h"
#include "tests/faults/Limits.h"
#include "tests/support/TemporaryHome.h"

#include <gtest/gtest.h>

#include <QProcess>

using namespace Registry;

namespace {

const QString userFile = "BrennovalUserData.mdb";
const QString catalogueFile = "BrennovalSysData.mdb";

QString shippedFolder() {
    return QCoreApplication::applicationDirPath() + "/Data";
}

QString storedFolder() {
    QString folder;
    GetRegValue(HKeyCurrentUser(), AppRegistryKey(), DatabaseDirectoryValue(), folder);
    return folder;
}

QByteArray contents(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void write(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

} // namespace

TEST(Install, GivesANewUserKeyFolderAndFiles) {
    const TemporaryHome home;
    const QString folder = home.dataFolder();
    installForUser(shippedFolder(), folder);
    EXPECT_EQ(storedFolder(), folder);
    EXPECT_EQ(contents(folder + u'/' + userFile), contents(shippedFolder() + u'/' + userFile));
    EXPECT_EQ(contents(folder + u'/' + catalogueFile), contents(shippedFolder() + u'/' + catalogueFile));
}

TEST(Install, NeverTouchesAUserFileAndReplacesOnlyAnotherCatalogue) {
    const TemporaryHome home;
    const QString folder = home.dataFolder();
    installForUser(shippedFolder(), folder);
    write(folder + u'/' + userFile, "the user's own");
    write(folder + u'/' + catalogueFile, "not a catalogue");
    installForUser(shippedFolder(), folder);
    EXPECT_EQ(contents(folder + u'/' + userFile), "the user's own");
    EXPECT_EQ(contents(folder + u'/' + catalogueFile), contents(shippedFolder() + u'/' + catalogueFile));
    {
        Connection newer;
        newer.setProperty("Data Source", folder + u'/' + catalogueFile);
        newer.Open();
        Recordset().Open("DELETE * FROM tblPostalCodes", newer);
    }
    const QByteArray changed = contents(folder + u'/' + catalogueFile);
    installForUser(shippedFolder(), folder); // same version
    EXPECT_EQ(contents(folder + u'/' + catalogueFile), changed);
    EXPECT_EQ(restoreCatalogue(shippedFolder(), "/nowhere"), folder + u'/' + catalogueFile);
    EXPECT_EQ(contents(folder + u'/' + catalogueFile), contents(shippedFolder() + u'/' + catalogueFile));
    EXPECT_EQ(contents(folder + u'/' + userFile), "the user's own");
    QFile::remove(folder + u'/' + userFile);
    EXPECT_THROW(restoreCatalogue(shippedFolder(), "/nowhere"), Fault) << "not a folder of ours";
}

TEST(Install, NeverRewritesAStoredFolder) {
    const TemporaryHome home;
    const QString real = home.dataFolder() + "/real";
    installForUser(shippedFolder(), real);
    QFile::rename(real + u'/' + userFile, real + "/brennovaluserdata.MDB");
    QFile::link(home.dataFolder() + "/nowhere", home.dataFolder() + "/dangling");
    // Unchanged, with the other system's separators, temporarily missing, and a dangling link.
    for (const QString& stored : {real, QString(real).replace('/', '\\') + '\\', home.dataFolder() + "/away",
                                  home.dataFolder() + "/dangling"}) {
        SetRegValue(AppRegistryKey(), DatabaseDirectoryValue(), stored, RegistryType::Text);
        installForUser(shippedFolder(), home.dataFolder() + "/default");
        EXPECT_EQ(storedFolder(), stored);
        EXPECT_FALSE(QFile::exists(home.dataFolder() + "/default"));
        EXPECT_FALSE(QFile::exists(home.dataFolder() + "/away"));
    }
    EXPECT_EQ(QDir(real).entryList(QDir::Files).size(), 2) << "no second user file beside the renamed one";
    removeRegValue(HKeyCurrentUser(), AppRegistryKey(), DatabaseDirectoryValue());
    createRegistryKey(HKeyLocalMachine(), AppRegistryKey());
    SetValueEx({HKeyLocalMachine(), AppRegistryKey()}, DatabaseDirectoryValue(), RegistryType::Text, real);
    installForUser(shippedFolder(), home.dataFolder() + "/default");
    EXPECT_EQ(storedFolder(), QString()) << "the machine's folder serves";
}

TEST(Install, SaysWhatItCannotCopy) {
    const TemporaryHome home;
    EXPECT_THROW(installForUser(home.dataFolder() + "/none", home.dataFolder()), Fault);
    EXPECT_TRUE(QDir(home.dataFolder()).entryList(QDir::Files).isEmpty()) << "nothing is left half done";
}

TEST(Install, KeepsTheOldCatalogueWhenTheDiskIsFull) {
    const TemporaryHome home;
    const QString folder = home.dataFolder();
    installForUser(shippedFolder(), folder);
    write(folder + u'/' + catalogueFile, "an older catalogue");
    {
        const FullDisk full(100000);
        EXPECT_THROW(installForUser(shippedFolder(), folder), Fault);
        EXPECT_THROW(restoreCatalogue(shippedFolder(), folder), Fault);
    }
    EXPECT_EQ(contents(folder + u'/' + catalogueFile), "an older catalogue");
    EXPECT_EQ(QDir(folder).entryList(QDir::Files).size(), 2) << "no part is left";
}

/// Runs the command in a folder with only these variables, after a shell command.
int runCommand(const QString& folder, const QStringList& variables, QString& errors,
               const QString& before = ":") {
    QProcess command;
    command.setWorkingDirectory(folder);
    command.start("env", QStringList{"-i"} + variables +
                             QStringList{"sh", "-c",
                                         before + "; exec \"" + QCoreApplication::applicationDirPath() +
                                             "/brennoval-install\""});
    EXPECT_TRUE(command.waitForFinished());
    errors = QString::fromUtf8(command.readAllStandardError());
    return command.exitCode();
}

TEST(Install, CommandNeedsAHomeAndASessionThatCanBeStored) {
    const struct {
        QStringList variables; // {home} stands for the folder
        const char* error;     // part of it
        const char* session;   // where it is stored
    } cases[] = {
        {{"HOME={home}"}, "", ".config"},
        {{"HOME={home}", "XDG_CONFIG_HOME=config", "XDG_DATA_HOME=data"}, "", ".config"},
        {{"XDG_CONFIG_HOME={home}/config", "XDG_DATA_HOME={home}/data"}, "", "config"},
        {{}, "HOME is not set", nullptr},
        {{"HOME="}, "HOME is not set", nullptr},
        {{"HOME={home}/none"}, "HOME is \"", nullptr},
        {{"HOME=."}, "HOME is \"", nullptr},
        {{"XDG_CONFIG_HOME={home}/config", "XDG_DATA_HOME=data"}, "HOME is not set", nullptr},
        {{"HOME={home}", "XDG_CONFIG_HOME=/dev/null"}, "cannot be stored below /dev/null", nullptr},
    };
    for (const auto& row : cases) {
        const TemporaryHome home;
        QString errors;
        const int result = runCommand(
            home.path(), QStringList(row.variables).replaceInStrings("{home}", home.path()), errors);
        SCOPED_TRACE(row.variables.join(' ').toStdString());
        EXPECT_EQ(result, row.session ? 0 : 1) << errors.toStdString();
        EXPECT_TRUE(errors.contains(row.error) && errors.isEmpty() == bool(row.session))
            << errors.toStdString();
        const QString session = home.path() + u'/' + row.session + "/Fennerbrooke/Brennoval.ini";
        EXPECT_TRUE(row.session ? QFile::exists(session)
                                : QDir(home.path())
                                      .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot)
                                      .isEmpty());
        EXPECT_TRUE(row.variables != QStringList{"HOME={home}"} ||
                    QFile::exists(home.path() + "/.local/share/Fennerbrooke/Brennoval/" + userFile));
        EXPECT_FALSE(QFile::exists(home.path() + "/data/data"));
        EXPECT_EQ(QFile::exists(home.path() + "/data"),
                  row.variables.filter("{home}/data").size() == 1 && row.session);
    }
}

TEST(Install, SessionIsNobodyElsesToRead) {
    for (const char* mask : {"0", "022", "077"}) {
        const TemporaryHome home;
        const QString session = home.path() + "/.config/Fennerbrooke/Brennoval.ini";
        QString errors;
        for (const QString& before : {QString(), "chmod 644 " + session}) { // as an older version left it
            ASSERT_EQ(runCommand(home.path(), {"HOME=" + home.path(), "PATH=/usr/bin:/bin"}, errors,
                                 QString("umask %1; %2 :").arg(mask, before.isEmpty() ? "" : before + ";")),
                      0);
            EXPECT_EQ(QFile(session).permissions() & ~(QFile::ReadUser | QFile::WriteUser),
                      QFile::ReadOwner | QFile::WriteOwner)
                << mask;
        }
    }
}

TEST(Install, SaysThatTheDiskIsFullForTheSession) {
    const TemporaryHome home;
    const FullDisk full(8);
    EXPECT_THROW(installForUser(shippedFolder(), home.dataFolder()), Fault);
    EXPECT_FALSE(QFile::exists(home.dataFolder()));
}

TEST(Install, CommandReportsOrRefusesWithoutDoingAnything) {
    struct Case {
        QStringList arguments;
        int result;
        const char* output;
    };
    const TemporaryHome home;
    bool installed = false;
    for (const Case& run :
         {Case{{"--help"}, 0, "Usage: brennoval-install"}, Case{{"--version"}, 0, "brennoval-install 1."},
          Case{{"--help", "more"}, 2, ""}, Case{{"-platform", "xcb"}, 2, ""}, Case{{"something"}, 2, ""},
          Case{{"--restore-catalogue", "more"}, 2, ""}, Case{{"--restore-catalogue"}, 1, ""}, Case{{}, 0, ""},
          Case{{"--restore-catalogue"}, 0, "Restored "}}) {
        QProcess command;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const char* name : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME"})
            environment.insert(name, home.path());
        command.setProcessEnvironment(environment);
        command.start(QCoreApplication::applicationDirPath() + "/brennoval-install", run.arguments);
        ASSERT_TRUE(command.waitForFinished());
        SCOPED_TRACE(run.arguments.join(' ').toStdString());
        EXPECT_EQ(command.exitCode(), run.result);
        EXPECT_TRUE(command.readAllStandardOutput().startsWith(run.output));
        EXPECT_EQ(command.readAllStandardError().isEmpty(), run.result == 0);
        installed = installed || run.arguments.isEmpty();
        EXPECT_EQ(QDir(home.path()).isEmpty(), !installed) << "done without arguments only";
    }
}
