#include "app/Install.h"
#include "core/base/Fault.h"
#include "core/store/Database.h"
#include "core/store/SessionStore.h"
#include "tests/faults/Limits.h"
#include "tests/support/TemporaryHome.h"

#include <gtest/gtest.h>

#include <QProcess>

using namespace UtilityFunctions;

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
    InstallForUser(shippedFolder(), folder);
    EXPECT_EQ(storedFolder(), folder);
    EXPECT_EQ(contents(folder + u'/' + userFile), contents(shippedFolder() + u'/' + userFile));
    EXPECT_EQ(contents(folder + u'/' + catalogueFile), contents(shippedFolder() + u'/' + catalogueFile));
}

TEST(Install, NeverTouchesAUserFileAndReplacesOnlyAnotherCatalogue) {
    const TemporaryHome home;
    const QString folder = home.dataFolder();
    InstallForUser(shippedFolder(), folder);
    write(folder + u'/' + userFile, "the user's own");
    write(folder + u'/' + catalogueFile, "not a catalogue");
    InstallForUser(shippedFolder(), folder);
    EXPECT_EQ(contents(folder + u'/' + userFile), "the user's own");
    EXPECT_EQ(contents(folder + u'/' + catalogueFile), contents(shippedFolder() + u'/' + catalogueFile));
    {
        Connection newer;
        newer.setProperty("Data Source", folder + u'/' + catalogueFile);
        newer.Open();
        Recordset().Open("DELETE * FROM tblPostalCodes", newer);
    }
    const QByteArray changed = contents(folder + u'/' + catalogueFile);
    InstallForUser(shippedFolder(), folder); // of the same version
    EXPECT_EQ(contents(folder + u'/' + catalogueFile), changed);
}

TEST(Install, NeverRewritesAStoredFolder) {
    const TemporaryHome home;
    const QString real = home.dataFolder() + "/real";
    InstallForUser(shippedFolder(), real);
    QFile::rename(real + u'/' + userFile, real + "/brennovaluserdata.MDB");
    QFile::link(home.dataFolder() + "/nowhere", home.dataFolder() + "/dangling");
    // As it is, with the other separators, away for the moment, and a link that leads nowhere.
    for (const QString& stored : {real, QString(real).replace('/', '\\') + '\\', home.dataFolder() + "/away",
                                  home.dataFolder() + "/dangling"}) {
        SetRegValue(AppRegistryKey(), DatabaseDirectoryValue(), stored, RegistryType::Text);
        InstallForUser(shippedFolder(), home.dataFolder() + "/default");
        EXPECT_EQ(storedFolder(), stored);
        EXPECT_FALSE(QFile::exists(home.dataFolder() + "/default"));
        EXPECT_FALSE(QFile::exists(home.dataFolder() + "/away"));
    }
    EXPECT_EQ(QDir(real).entryList(QDir::Files).size(), 2) << "no second user file beside the renamed one";
    RemoveRegValue(HKeyCurrentUser(), AppRegistryKey(), DatabaseDirectoryValue());
    CreateRegistryKey(HKeyLocalMachine(), AppRegistryKey());
    SetValueEx({HKeyLocalMachine(), AppRegistryKey()}, DatabaseDirectoryValue(), RegistryType::Text, real);
    InstallForUser(shippedFolder(), home.dataFolder() + "/default");
    EXPECT_EQ(storedFolder(), QString()) << "the machine's folder serves";
}

TEST(Install, SaysWhatItCannotCopy) {
    const TemporaryHome home;
    EXPECT_THROW(InstallForUser(home.dataFolder() + "/none", home.dataFolder()), Fault);
    EXPECT_TRUE(QDir(home.dataFolder()).entryList(QDir::Files).isEmpty()) << "nothing is left half done";
}

TEST(Install, KeepsTheOldCatalogueWhenTheDiskIsFull) {
    const TemporaryHome home;
    const QString folder = home.dataFolder();
    InstallForUser(shippedFolder(), folder);
    write(folder + u'/' + catalogueFile, "an older catalogue");
    {
        const FullDisk full(100000);
        EXPECT_THROW(InstallForUser(shippedFolder(), folder), Fault);
    }
    EXPECT_EQ(contents(folder + u'/' + catalogueFile), "an older catalogue");
    EXPECT_EQ(QDir(folder).entryList(QDir::Files).size(), 2) << "no part is left";
}

TEST(Install, CommandTellsOrRefusesWithoutDoingAnything) {
    struct Case {
        QStringList arguments;
        int result;
        const char* output;
    };
    const TemporaryHome home;
    for (const Case& run : {Case{{"--help"}, 0, "Usage: brennoval-install"},
                            Case{{"--version"}, 0, "brennoval-install 1."}, Case{{"--help", "more"}, 2, ""},
                            Case{{"-platform", "xcb"}, 2, ""}, Case{{"something"}, 2, ""}, Case{{}, 0, ""}}) {
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
        EXPECT_EQ(QDir(home.path()).isEmpty(), !run.arguments.isEmpty()) << "done without arguments only";
    }
}
