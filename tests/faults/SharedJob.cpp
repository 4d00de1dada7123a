// A copy of the program that does various things to one job while another copy works on the same file. It
// takes one step for each line of input, and reports what it stored and deleted and what the user was told.
// Usage: brennoval-shared-job SESSION_FOLDER NAME SEED

#include "core/shell/DesktopApplication.h"
#include "core/shell/Fields.h"
#include "core/shell/Status.h"
#include "tests/runner/Player.h"
#include "tests/support/Driver.h"

#include <QLabel>
#include <QSettings>
#include <QTreeWidget>

#include <cstdio>
#include <iostream>
#include <random>

namespace {

const QString job = QStringLiteral("S");

void tell(const QStringList& words) {
    std::puts(words.join(' ').toUtf8().constData());
    std::fflush(stdout);
}

QString textOf(const QString& screen, const QString& box) {
    const auto* found = Driver::control(screen, box);
    return found ? Fields::fieldText(found) : QString();
}

/// The rows of a list; none if the list is not open.
QStringList rowsOf(const QString& screen) {
    QStringList rows;
    const auto* list = Driver::control<QTreeWidget>(screen, "lvOptions");
    for (int row = 0; list && row < list->topLevelItemCount(); ++row)
        rows.append(list->topLevelItem(row)->text(0));
    return rows;
}

/// A user who starts one thing after another and finishes each in the next step or a later one.
class User {
  public:
    User(const Stage& stage, QString ownName, unsigned seed)
        : dialogs(stage.dialogs), player(stage), name(std::move(ownName)), random(seed) {
        dialogs.rule = [this](const Message& message) { return answer(message); };
    }

    void step() {
        if (finish && below(3) == 0) // leave it open for a while
            return;
        try {
            if (finish)
                std::exchange(finish, {})();
            else
                begin();
        } catch (const Failure&) { // its record is gone, and the user has been told
            finish = {};
        }
        if (!finish)
            closeAll();
    }

  private:
    int below(int limit) { return std::uniform_int_distribution(0, limit - 1)(random); }

    QMessageBox::StandardButton answer(const Message& message) {
        if (closing)
            return ScriptedDialogs::decline(message);
        if (message.title == "Delete?")
            return QMessageBox::Yes;
        ++messages;
        if (message.buttons & QMessageBox::No) {
            overwrites = below(2) == 0;
            return overwrites ? QMessageBox::Yes : QMessageBox::No;
        }
        tell({"told", message.text.section('\n', 0, 0)});
        return QMessageBox::Ok;
    }

    /// Closes everything without saving.
    void closeAll() {
        closing = true;
        const QStringList open = Screens::loaded();
        for (auto screen = open.crbegin(); screen != open.crend(); ++screen) {
            if (*screen == "frmError")
                tell({"failed", Driver::report().section("Desc: ", 1).section('\n', 0, 0)});
            Screens::unload(*screen);
        }
        Driver::settle();
        closing = false;
    }

    void click(const QString& control) { player.play("click " + control); }
    void type(const QString& control, const QString& text) { player.play("type " + control + " " + text); }
    void row(const QString& screen, qsizetype index) {
        player.play(QString("row %1.lvOptions %2").arg(screen).arg(index + 1));
    }

    /// A number that no other save uses.
    QString token() { return QString("%1%2").arg(name == "A" ? 1 : 2).arg(++tokens, 4, 10, QChar('0')); }

    /// Goes to the job through the search; false if it is not there.
    bool search(const QString& menu) {
        player.play("menu " + menu);
        click("frmjobsearchdialog.bttnFind");
        if (rowsOf("frmjobsearchdialog").isEmpty())
            return false;
        row("frmjobsearchdialog", 0);
        click("frmjobsearchdialog.bttnOK");
        return true;
    }

    void begin() {
        const int choice = below(20);
        if (choice < 4)
            return beginDeletion(choice < 2);
        if (!search("mnuEditJob"))
            return beginJob();
        click("frmJobHeader.cmdNext");
        const QStringList tanks = rowsOf("frmTankIDSearch"); // the last row adds a tank
        if (tanks.isEmpty()) // the other copy has deleted the job since it was found
            return;
        const bool adds = tanks.size() < 2 || (tanks.size() < 6 && choice < 9);
        tank = adds ? tanks.last() : tanks[below(int(tanks.size()) - 1)];
        row("frmTankIDSearch", tanks.indexOf(tank));
        click("frmTankIDSearch.cmdNext");
        if (adds)
            click(below(2) == 0 ? "frmClassSelect.cmdEXP" : "frmClassSelect.cmdPKG");
        if (Driver::isOpen("frmJobConditions"))
            beginConditions(adds);
        else if (adds || below(2) == 0)
            beginPackage(adds);
        else
            beginTags();
    }

    void beginJob() {
        player.play("menu mnuNewJob");
        type("frmJobHeader.txtJobID", job);
        finish = [this] {
            click("frmJobHeader.cmdNext");
            if (!Driver::isOpen("frmClassSelect"))
                return;
            click("frmClassSelect.cmdEXP"); // a job left without a tank is deleted
            beginConditions(true);
        };
    }

    void beginDeletion(bool whole) {
        if (!search("mnuDeleteJob"))
            return;
        const QStringList tanks = rowsOf("frmDelete");
        if (tanks.isEmpty() && !whole)
            return;
        tank = whole ? job : tanks[below(int(tanks.size()))];
        click(whole ? "frmDelete.optJob" : "frmDelete.OptTanks");
        if (!whole)
            player.play(QString("check frmDelete.lvOptions %1").arg(tanks.indexOf(tank) + 1));
        finish = [this] {
            const int before = messages;
            click("frmDelete.bttnDelete");
            if (messages == before && !Driver::isOpen("frmError"))
                tell({"deleted", tank});
        };
    }

    void beginConditions(bool adds) {
        const QString old = adds ? QString() : textOf("frmJobConditions", "txtTotSysFluid");
        const QString mine = token();
        Driver::enterConditions(mine);
        finish = [this, old, mine] {
            overwrites = false;
            click("frmJobConditions.cmdNext");
            if (const auto* saved = Driver::control<QLabel>("frmTankSeries", "lblTankID"))
                tellSaved(saved->text(), "TotSysVolume", old, mine);
        };
    }

    void beginPackage(bool adds) {
        const QString old = adds ? QString() : textOf("frmPKGSelect", "txtSysPressure");
        const QString mine = token();
        if (adds)
            row("frmPKGSelect", 0);
        type("frmPKGSelect.txtSysPressure", mine);
        finish = [this, old, mine, adds] {
            overwrites = false;
            click("frmPKGSelect.bttnSave");
            if (StatusBar::statusText() == "Record Saved")
                tellSaved(adds ? Session::TankID.text() : tank, "SOPMax", old, mine);
        };
    }

    void beginTags() {
        click("frmPKGSelect.bttnUnitTagID");
        const QString old =
            textOf("frmUnitTagData", "txtPrefix1_0") + "-" + textOf("frmUnitTagData", "txtSuffix1_0");
        const QString mine = token();
        type("frmUnitTagData.txtPrefix1_0", mine);
        type("frmUnitTagData.txtSuffix1_0", name);
        finish = [this, old, mine] {
            overwrites = false;
            const int before = messages;
            click("frmUnitTagData.cmdOK");
            if (!Driver::isOpen("frmUnitTagData") && (messages == before || overwrites))
                tellSaved(tank, "TagID01", old == "-" ? QString() : old, mine + "-" + name);
        };
    }

    void tellSaved(const QString& line, const QString& column, const QString& old, const QString& mine) {
        tell(
            {"saved", line, column, old.isEmpty() ? "nothing" : old, mine, overwrites ? "asked" : "unasked"});
    }

    ScriptedDialogs& dialogs;
    Player player;
    QString name;
    std::mt19937 random;
    QString tank; // that the step is about
    std::function<void()> finish;
    int tokens = 0;
    int messages = 0;
    bool overwrites = false; // someone else's changes
    bool closing = false;
};

} // namespace

int main(int argc, char** argv) {
    if (argc != 4)
        return 2;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const DesktopApplication application(argc, argv);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, argv[1]);
    QSettings::setPath(QSettings::IniFormat, QSettings::SystemScope, argv[1] + QString("/machine"));
    ScriptedDialogs& dialogs = Driver::start();
    User user(
        Stage{.dialogs = dialogs, .shotFolder = {}, .homeFolder = {}, .scenarioFolder = {}, .started = true},
        argv[2], QString(argv[3]).toUInt());
    for (std::string line; std::getline(std::cin, line);) {
        user.step();
        tell({"ready"});
    }
    Driver::stop();
    return 0;
}
