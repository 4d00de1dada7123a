// Plays scenarios on the real screens with mouse and key events, without a display.
// Usage: brennoval-scenario [--shots DIR] [--keep DIR] [--points N] [--size WxH] [--dark] [--office] FILE...
// With --office the user's data are in an office's database on a server of the tests, empty and the
// scenario's own. Each file runs in its own process, with its own data folder and session store.

#include "app/Install.h"
#include "app/Register.h"
#include "core/base/Fault.h"
#include "core/look/Appearance.h"
#include "core/look/Fonts.h"
#include "core/shell/DesktopApplication.h"
#include "core/shell/Screen.h"
#include "setup/InstallerFiles.h"
#include "tests/runner/Player.h"
#include "tests/support/OfficeDatabase.h"
#include "tests/support/TemporaryHome.h"

#include <QCommandLineParser>
#include <QProcess>

#include <iostream>
#include <optional>

namespace {

bool playLines(Player& player, const QString& path, const QStringList& lines) {
    int number = 0;
    const auto say = [&](const std::string& what) {
        std::cerr << path.toStdString() << ':' << number << ": " << what << '\n';
        return false;
    };
    try {
        // A scenario starts after the getting-started screen, unless it is about that screen.
        if (!lines.contains("firstrun"))
            player.play("sql User \"UPDATE tblFirstTime SET FirstTime = 1\"");
        for (const QString& line : lines) {
            ++number;
            if (line.trimmed() != "firstrun" && !line.startsWith("office-password "))
                player.play(line);
        }
        return true;
    } catch (const Failure& failure) {
        return say(failure.what.toStdString());
    } catch (const std::runtime_error& error) {
        return say(error.what());
    }
}

/// A size such as "911x485"; an empty one for other text.
QSize sizeOf(const QString& text) {
    const QStringList sides = text.split('x');
    return sides.size() == 2 ? QSize(sides[0].toInt(), sides[1].toInt()) : QSize();
}

/// The password of a line such as "office-password tide"; empty if the scenario has none.
QString officePassword(const QStringList& lines) {
    const QString word = "office-password ";
    for (const QString& line : lines)
        if (line.startsWith(word))
            return line.mid(word.size()).trimmed();
    return {};
}

/// Makes an office the program's, whose user must give a password if there is one.
void useOffice(OfficeDatabase& office, const QString& password) {
    if (password.isEmpty())
        return office.use();
    const QString user = "prompted"; // the server wants a password from this one
    office.addUser(user);
    office.connection("postgres").run("ALTER ROLE prompted PASSWORD " + Postgres::quotedText(password));
    office.use(user);
}

bool playFile(const QString& path, const QString& shots, const QString& keep, const QSize& window,
              bool onOffice) {
    const TemporaryHome home;
    installForUser(QCoreApplication::applicationDirPath() + "/Data", home.dataFolder());
    InstallerFiles::setInstallerFolder(QDir(home.path()).filePath("installer"));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        std::cerr << path.toStdString() << ": cannot be read\n";
        return false;
    }
    const QStringList lines = QString::fromUtf8(file.readAll()).split('\n');
    std::optional<OfficeDatabase> office;
    if (onOffice)
        useOffice(office.emplace(), officePassword(lines));
    if (!shots.isEmpty())
        QDir().mkpath(shots);
    Stage stage{ScriptedDialogs::install(), shots, home.dataFolder(), QFileInfo(path).path()};
    if (!window.isEmpty())
        stage.window = window;
    Player player(stage);
    const bool passed = playLines(player, path, lines);
    player.finish();
    if (!keep.isEmpty()) {
        QDir().mkpath(keep);
        const QDir data(home.dataFolder());
        for (const QString& name : data.entryList(QDir::Files)) {
            QFile::remove(QDir(keep).filePath(name));
            QFile::copy(data.filePath(name), QDir(keep).filePath(name));
        }
    }
    return passed;
}

/// Plays each file in its own process and returns the number that passed.
int playEach(const QStringList& files, const QStringList& options) {
    int passed = 0;
    for (const QString& file : files) {
        QProcess child;
        child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        child.start(QCoreApplication::applicationFilePath(), options + QStringList{file});
        child.waitForFinished(-1);
        const bool good = child.exitStatus() == QProcess::NormalExit && child.exitCode() == 0;
        if (child.exitStatus() != QProcess::NormalExit)
            std::cerr << file.toStdString() << ": the program crashed\n";
        passed += good ? 1 : 0;
    }
    return passed;
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    DesktopApplication application(argc, argv);
    DesktopApplication::setQuitOnLastWindowClosed(false);
    QCommandLineParser parser;
    parser.addOptions({{"shots", "Folder for the pictures.", "DIR"},
                       {"keep", "Folder that gets the data files as the scenario left them.", "DIR"},
                       {"points", "Size of the letters.", "N"},
                       {"size", "Size of the main window, such as 911x485.", "WIDTHxHEIGHT"},
                       {"dark", "The dark look."},
                       {"office", "The user's data are in an office's database."}});
    parser.addPositionalArgument("FILE", "The scenarios.", "FILE...");
    parser.addHelpOption();
    parser.process(application);
    const QStringList files = parser.positionalArguments();
    if (files.isEmpty())
        parser.showHelp(2);
    int passed = 0;
    if (!Fonts::provide()) {
        std::cerr << "There is no font.\n";
        return 1;
    }
    if (files.size() == 1) {
        Appearance::apply(parser.isSet("dark") ? Appearance::Scheme::Dark : Appearance::Scheme::Light);
        if (const int points = parser.value("points").toInt(); points > 0) {
            QFont font = DesktopApplication::font();
            font.setPointSize(points);
            DesktopApplication::setFont(font);
        }
        registerAll();
        passed = playFile(files[0], parser.value("shots"), parser.value("keep"), sizeOf(parser.value("size")),
                          parser.isSet("office"))
                     ? 1
                     : 0;
    } else {
        QStringList options;
        for (const char* option : {"shots", "keep", "points", "size"})
            if (parser.isSet(option))
                options << QString("--%1=%2").arg(option, parser.value(option));
        for (const char* option : {"dark", "office"})
            if (parser.isSet(option))
                options << QString("--%1").arg(option);
        passed = playEach(files, options);
    }
    std::cout << passed << " passed, " << files.size() - passed << " failed" << std::endl;
    return passed == files.size() ? 0 : 1;
}
