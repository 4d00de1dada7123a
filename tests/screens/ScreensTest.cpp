// Every screen as met by a user without a mouse, without sight or with large fonts.

#include "core/shell/BrennovalMain.h"
#include "core/shell/Translations.h"
#include "core/store/SessionStore.h"
#include "tests/support/Driver.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QPushButton>
#include <QScrollBar>
#include <QToolButton>

#include <set>

namespace {

/// The program with a job that has one tank of each kind, so that every screen has something to show.
class EveryScreen : public testing::Test {
  protected:
    EveryScreen() {
        home.installData();
        Driver::start();
        for (const char* sql :
             {"INSERT INTO tblJobHeader (JobID) VALUES ('J')", "INSERT INTO tblEngineer VALUES ('Ada Ohm')",
              "INSERT INTO tblJobData (TankID, TankNo, JobID, TankClass, ModelNo, Qty, AtmPressure, SOPMin, "
              "SOPMax, SOTMin, "
              "SOTMax, SysFluidType, TotSysVolume, RequiredVolume, RequiredAcceptance, PipeIndex, "
              "PipeLength, FlowRate, "
              "FlowPressure, StaticPressure, ShockPressure) VALUES ('J.1', 1, 'J', 'RCB', 'RCB 500', 2, "
              "14.7, 12, 30, 40, 180, "
              "'Water', 500, 100, 40, '4 in Sch 40', 300, 200, 50, 70, 150)"})
            Gateway::Execute("User", sql);
        Session::Mode.write(Session::Modes::Edit);
        Session::JobID.write("J");
        Session::TankID.write("J.1");
    }
    ~EveryScreen() override { Driver::stop(); }

    /// Opens each screen of the main window by itself, in each application it adapts to.
    template<typename Look>
    void forEach(Look look) {
        for (const QString& name : Screens::names()) {
            if (name == "frmSplash" || name == "frmError" || name == "frmDatabasePath")
                continue;
            for (const ApplicationInfo& info : allApplications) {
                const QString application = QString::fromUtf8(info.name.data(), qsizetype(info.name.size()));
                Session::TankClass.write(application);
                const std::string where = (name + ", " + application).toStdString();
                const bool open = Screens::open(name);
                EXPECT_TRUE(open) << where << " does not open";
                if (!open)
                    continue;
                Driver::settle();
                look(*Screens::find(name), where);
                Screens::unload(name);
                Driver::settle();
                for (const QString& other : Screens::loaded()) // closing may have opened it
                    Screens::unload(other);
            }
        }
        EXPECT_GT(Screens::names().size(), 12);
    }

    TemporaryHome home;
};

QChar mnemonicOf(const QString& text) {
    const QString single = QString(text).remove("&&");
    const auto at = single.indexOf('&');
    return at >= 0 && at + 1 < single.size() ? single[at + 1].toUpper() : QChar();
}

/// The text that holds a widget's mnemonic.
QString captionOf(const QWidget* widget) {
    if (const auto* button = dynamic_cast<const QAbstractButton*>(widget))
        return button->text();
    const auto* label = dynamic_cast<const QLabel*>(widget);
    return label && label->buddy() ? label->text() : QString();
}

bool isReachable(const QWidget* widget) {
    return widget->isVisible() && widget->isEnabled() && (widget->focusPolicy() & Qt::TabFocus);
}

} // namespace

TEST_F(EveryScreen, HasMnemonicsOfItsOwn) {
    std::set<QChar> menuBar;
    for (const QAction* action : BrennovalMain::instance()->menuBar()->actions())
        menuBar.insert(mnemonicOf(action->text()));
    ASSERT_EQ(menuBar.size(), 8U);
    forEach([&](const Screen& screen, const std::string& where) {
        std::set<QChar> given;
        for (const QWidget* widget : screen.findChildren<QWidget*>()) {
            const QChar letter = widget->isVisible() ? mnemonicOf(captionOf(widget)) : QChar();
            if (letter.isNull())
                continue;
            EXPECT_FALSE(menuBar.contains(letter)) << where << ": " << captionOf(widget).toStdString();
            EXPECT_TRUE(given.insert(letter).second) << where << ": " << captionOf(widget).toStdString();
        }
    });
}

TEST_F(EveryScreen, NamesEachControlThatTheKeyboardReaches) {
    forEach([](const Screen& screen, const std::string& where) {
        std::set<QString> given;
        for (QWidget* widget : screen.findChildren<QWidget*>()) {
            const bool inner = !widget || dynamic_cast<const QScrollBar*>(widget) ||
                               widget->objectName().startsWith("qt_") || widget->focusProxy();
            if (inner || !isReachable(widget))
                continue;
            const QAccessibleInterface* face = QAccessible::queryAccessibleInterface(widget);
            const QString name = face ? face->text(QAccessible::Name).trimmed() : QString();
            const auto* group = dynamic_cast<const QGroupBox*>(widget->parentWidget());
            EXPECT_FALSE(name.isEmpty() || (group && name == group->title()))
                << where << ": " << widget->objectName().toStdString() << " has no name for a screen reader";
            const QString kind = dynamic_cast<QToolButton*>(widget) ? " (tool)" : ""; // repeats a button
            EXPECT_TRUE(given.insert(name + kind).second)
                << where << ": two are called " << name.toStdString();
        }
    });
}

TEST_F(EveryScreen, FitsAnOrdinaryDisplayWithFontsOfEveryOrdinarySize) {
    BrennovalMain::instance()->resize(1366, 740); // 768 less the desktop's panel
    Driver::settle();
    const QFont before = QApplication::font();
    for (const int points : {8, 10, 12, 13}) { // 13, because some systems have taller letters
        QFont font = before;
        font.setPointSize(points);
        QApplication::setFont(font);
        Driver::settle();
        forEach([points](const Screen& screen, const std::string& where) {
            const bool inside = !screen.isTopLevel(); // otherwise on the display itself
            const QSize space =
                inside ? BrennovalMain::instance()->area()->size() : BrennovalMain::instance()->size();
            const QSize frame = inside ? screen.parentWidget()->size() : screen.size();
            EXPECT_LE(frame.width(), space.width()) << where << " with " << points << " points";
            EXPECT_LE(frame.height(), space.height()) << where << " with " << points << " points";
        });
    }
    QApplication::setFont(before);
}

// Another language changes the program's own texts; the maker's stay English.
TEST_F(EveryScreen, AnotherLanguageChangesOnlyOwnTexts) {
    EXPECT_FALSE(LoadTranslations(TRANSLATIONS_FOLDER, QLocale("fr_FR"))) << "there is no such file";
    ASSERT_TRUE(LoadTranslations(TRANSLATIONS_FOLDER, QLocale("de_AT")));
    Session::TankClass.write("Expansion Tank");
    ASSERT_TRUE(Screens::open("frmJobConditions"));
    const Screen& screen = *Screens::find("frmJobConditions");
    EXPECT_EQ(screen.findChild<QLineEdit*>("txtSOPMin")->accessibleName(), "Kleinster Druck");
    EXPECT_EQ(screen.findChild<QPushButton*>("cmdNext")->text(), "&Next")
        << "though the file has a word for it";
}
