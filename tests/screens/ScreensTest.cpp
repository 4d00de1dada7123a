// Every screen as met by a user without a mouse, without sight or with large fonts.

#include "core/shell/BrennovalMain.h"
#include "core/shell/Fields.h"
#include "core/shell/Translations.h"
#include "core/store/SessionStore.h"
#include "tests/support/Driver.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QClipboard>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QRegularExpression>
#include <QScrollArea>
#include <QScrollBar>
#include <QToolButton>
#include <QTreeWidget>

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
            Gateway::execute("User", sql);
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
            const QString name = Fields::nameOf(widget).trimmed();
            const auto* group = dynamic_cast<const QGroupBox*>(widget->parentWidget());
            EXPECT_FALSE(name.isEmpty() || (group && name == group->title()))
                << where << ": " << widget->objectName().toStdString() << " has no name for a screen reader";
            const QString kind = dynamic_cast<QToolButton*>(widget) ? " (tool)" : ""; // repeats a button
            EXPECT_TRUE(given.insert(name + kind).second)
                << where << ": two are called " << name.toStdString();
        }
    });
}

// A box is typed over as soon as the keyboard reaches it; a specification is copied at once.
TEST_F(EveryScreen, SelectsTheTextOfABoxThatTheKeyboardReaches) {
    int seen = 0;
    forEach([&](const Screen& screen, const std::string& where) {
        for (QWidget* box : screen.findChildren<QWidget*>()) {
            const auto* line = dynamic_cast<const QLineEdit*>(box);
            const auto* area = dynamic_cast<const QPlainTextEdit*>(box);
            if (!isReachable(box) || box->objectName().startsWith("qt_") ||
                (line   ? line->text()
                 : area ? area->toPlainText()
                        : QString())
                    .isEmpty())
                continue;
            box->setFocus(Qt::TabFocusReason);
            EXPECT_TRUE(line ? line->selectedText() == line->text() : area->textCursor().hasSelection())
                << where << ": " << box->objectName().toStdString();
            ++seen;
        }
    });
    EXPECT_GT(seen, 20);
}

// Numbers stand under each other by their last digits, and every pressure is in psi as the conditions have
// it.
TEST_F(EveryScreen, AlignsItsFiguresAndNamesUnitsAlike) {
    const QRegularExpression figure(
        R"(^-?[\d,.]+ ?(|%|"|gal|psi|°F|ft|gpm|lbs|sec|ft/sec|ft lbs|ft lbs/ft)$)");
    int seen = 0;
    forEach([&](const Screen& screen, const std::string& where) {
        for (const QLineEdit* box : screen.findChildren<QLineEdit*>())
            if (figure.match(box->text()).hasMatch() && !box->objectName().isEmpty() &&
                !box->objectName().startsWith("qt_")) { // the others are parts of lists and spin boxes
                EXPECT_TRUE(box->alignment() & Qt::AlignRight)
                    << where << ": " << box->objectName().toStdString();
                ++seen;
            }
        for (const QLabel* unit : screen.findChildren<QLabel*>(QRegularExpression("UM$")))
            EXPECT_FALSE(unit->text().startsWith("psi") && unit->text() != "psi")
                << where << ": " << unit->objectName().toStdString();
    });
    EXPECT_GT(seen, 100);
}

/// What is cut off or out of reach on a screen, even by scrolling; empty if everything can be seen.
QStringList unseen(const Screen& screen) {
    // The buttons of a whole screen stay in sight.
    static const std::set<QString> endsScreen = {"cmdPrevious", "cmdCancel",  "cmdNext",    "cmdOK",
                                                 "cmdSave",     "cmdCopy",    "cmdResults", "cmdDown",
                                                 "cmdClose",    "cmdContinue"};
    QStringList faults;
    for (const QHBoxLayout* row : screen.findChildren<QHBoxLayout*>())
        for (int i = 1, before = 0; i < row->count(); ++i)
            if (const QWidget* left = row->itemAt(before)->widget(), *right = row->itemAt(i)->widget();
                right && right->isVisible()) {
                if (left && left->isVisible() && left->geometry().right() >= right->x())
                    faults << left->objectName() + " reaches under " + right->objectName();
                before = i;
            }
    const auto* middle = screen.findChild<QScrollArea*>("middle");
    for (const QWidget* widget : screen.findChildren<QWidget*>()) {
        if (!widget->isVisible() || widget->objectName().startsWith("qt_") || widget->objectName().isEmpty())
            continue;
        const bool scrolls = middle && middle->isAncestorOf(widget);
        if (scrolls && endsScreen.contains(widget->objectName()))
            faults << widget->objectName() + " can be scrolled out of sight";
        const QWidget* field = scrolls ? middle->widget() : &screen;
        if (widget != field && widget != middle &&
            !field->rect().contains(QRect(widget->mapTo(field, QPoint()), widget->size())))
            faults << widget->objectName() + " lies beyond its frame";
        int needed = 0;
        if (const auto* label = dynamic_cast<const QLabel*>(widget)) {
            if (!label->wordWrap() && !label->text().isEmpty())
                needed = label->minimumSizeHint().width();
            else if (!label->text().isEmpty() && label->heightForWidth(label->width()) > label->height())
                faults << QString("%1 has %2 of %3 pixels of height")
                              .arg(widget->objectName())
                              .arg(widget->height())
                              .arg(label->heightForWidth(label->width()));
        } else if (const auto* button = dynamic_cast<const QAbstractButton*>(widget)) {
            needed = button->text().isEmpty() ? 0 : button->minimumSizeHint().width();
        } else if (const auto* box = dynamic_cast<const QLineEdit*>(widget)) {
            const int letters = box->fontMetrics().horizontalAdvance(box->text());
            needed = letters < 40 * box->fontMetrics().horizontalAdvance('x') ? letters + 6 : 0;
        } else if (const auto* list = dynamic_cast<const QTreeWidget*>(widget)) {
            const QHeaderView* heads = list->header();
            for (int column = 0; !heads->isHidden() && column < heads->count(); ++column)
                if (heads->sectionSize(column) < heads->sectionSizeHint(column))
                    faults << QString("%1 cuts the heading %2").arg(widget->objectName()).arg(column);
            const bool isRoom = // with larger letters it scrolls sideways
                BrennovalMain::instance()->width() > 65 * QApplication::font().pointSize();
            if (screen.name() == "frmJobOverview" && isRoom && heads->length() > list->viewport()->width())
                faults << "the state of a tank is cut";
        }
        if (needed > widget->width())
            faults << QString("%1 has %2 of %3 pixels")
                          .arg(widget->objectName())
                          .arg(widget->width())
                          .arg(needed);
    }
    return faults;
}

TEST_F(EveryScreen, IsSeenWholeWithEveryOrdinaryFontAndScale) {
    const struct {
        QSize window; // of the display at its scale, less the desktop's panel
        std::vector<int> points;
    } displays[] = {{{1366, 740}, {8, 10, 12, 13, 14}}, // 13, because some systems have taller letters
                    {{911, 485}, {9, 12, 14}},          // 1366 x 768 at 150 %
                    {{960, 512}, {9, 12, 14}},          // 1920 x 1080 at 200 %
                    {{683, 357}, {9, 12, 14}}};         // 1366 x 768 at 200 %
    const QFont before = QApplication::font();
    Gateway::execute("User",
                     "INSERT INTO tblJobData (TankID, TankNo, JobID, TankClass, ModelNo, Qty, TagID01) "
                     "VALUES ('J.2', 2, 'J', 'GWB', 'Gone', 1, 'AHU-1')");
    for (const auto& display : displays)
        for (const int points : display.points) {
            QFont font = before;
            font.setPointSize(points);
            QApplication::setFont(font);
            BrennovalMain::instance()->resize(display.window);
            Driver::settle();
            const std::string with = " with " + std::to_string(points) + " points in " +
                                     std::to_string(display.window.width()) + " x " +
                                     std::to_string(display.window.height());
            forEach([&](const Screen& screen, const std::string& where) {
                const bool inside = !screen.isTopLevel(); // otherwise on the display itself
                const QSize space =
                    inside ? BrennovalMain::instance()->area()->size() : BrennovalMain::instance()->size();
                const QSize frame = inside ? screen.parentWidget()->size()
                                           : screen.minimumSizeHint().expandedTo(screen.minimumSize());
                EXPECT_LE(frame.width(), space.width()) << where << with;
                EXPECT_LE(frame.height(), space.height()) << where << with;
                EXPECT_EQ(unseen(screen).join("; ").toStdString(), "") << where << with;
            });
        }
    QApplication::setFont(before);
}

// A message of two lines may be one more than a low window had room for when it opened.
TEST_F(EveryScreen, ShowsWholeWhatALowWindowIsToldLater) {
    QGuiApplication::clipboard()->setText(
        "Application\tVolume\tMin Temperature\tMax Temperature\tMin Pressure\tMax Pressure\n"
        "Expansion\t500\t40\t180\t30\t12\n");
    for (int height = 480; height > 300; height -= 15) {
        BrennovalMain::instance()->resize(700, height);
        Driver::settle();
        ASSERT_TRUE(Screens::open("frmImport"));
        Driver::press("frmImport", "cmdPaste");
        const Screen& screen = *Screens::find("frmImport");
        EXPECT_TRUE(screen.findChild<QLabel*>("lblState")->text().startsWith("1 of 1 lines cannot"));
        EXPECT_EQ(unseen(screen).join("; ").toStdString(), "") << height;
        Screens::unload("frmImport");
    }
    ASSERT_TRUE(Screens::open("frmValidateRep")); // an address is seen whole where there is room for it
    Driver::enter("frmValidateRep", "txtAddress1", "Suite 1200, 1201 Superior Avenue");
    EXPECT_EQ(unseen(*Screens::find("frmValidateRep")).join("; ").toStdString(), "");
}

TEST_F(EveryScreen, KeepsItsCursorAndGrowsAgainWhenTheWindowWasSmaller) {
    Session::TankClass.write("Expansion Tank");
    BrennovalMain::instance()->resize(1366, 740);
    ASSERT_TRUE(Screens::open("frmJobConditions"));
    const Screen& screen = *Screens::find("frmJobConditions");
    auto* box = screen.findChild<QLineEdit*>("txtSOPMin");
    box->setFocus();
    const QSize before = screen.parentWidget()->size();
    BrennovalMain::instance()->resize(700, 400);
    Driver::settle();
    EXPECT_LT(screen.parentWidget()->height(), before.height());
    EXPECT_EQ(screen.focusWidget(), box);
    BrennovalMain::instance()->resize(1366, 740);
    Driver::settle();
    EXPECT_EQ(screen.parentWidget()->size(), before);
}

// The mark of a refused box adds to its range, which may change meanwhile.
TEST_F(EveryScreen, ShowsTheTitlesOfAPackageWhole) {
    BrennovalMain::instance()->resize(1366, 768);
    const QFont before = QApplication::font();
    QFont large = before;
    large.setPointSize(12);
    QApplication::setFont(large);
    Driver::command("mnuPackage");
    Driver::press("frmPackage", "cmdOK");
    Driver::settle();
    auto* contents = Driver::control<QTreeWidget>("frmReportViewer", "lstContents");
    ASSERT_TRUE(contents);
    EXPECT_EQ(contents->topLevelItem(2)->text(0), "Tank J.1, 2 × RCB 500");
    EXPECT_EQ(contents->topLevelItem(3)->text(0).trimmed(), "Submittal");
    EXPECT_GE(contents->columnWidth(0), contents->sizeHintForIndex(contents->model()->index(2, 0)).width());
    EXPECT_TRUE(contents->topLevelItem(3)->text(0).startsWith(' ')) << "it is below its tank";
    QApplication::setFont(before);
}

TEST_F(EveryScreen, ExportsWhenQtHasLeftTheMenuOfFormats) {
    Driver::command("mnuRptEXP");
    Driver::press("frmReportViewer", "bttnExport");
    const QPointer<QWidget> menu = QApplication::activePopupWidget();
    ASSERT_TRUE(menu);
    const QString file = QDir(home.path()).filePath("tanks.rtf");
    static_cast<ScriptedDialogs&>(Dialogs::current()).files = {file};
    QTest::keyClick(menu, Qt::Key_R);
    EXPECT_FALSE(QFile::exists(file));
    Driver::settle();
    EXPECT_TRUE(QFile::exists(file));
    EXPECT_FALSE(menu);
    Driver::press("frmReportViewer", "bttnExport");
    QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_O);
    Driver::settle();
    EXPECT_EQ(static_cast<ScriptedDialogs&>(Dialogs::current()).opened, QStringList(file));
}

TEST_F(EveryScreen, DescribesARefusedBoxWithItsRange) {
    Session::TankClass.write("Expansion Tank");
    ASSERT_TRUE(Screens::open("frmJobConditions"));
    const Screen& screen = *Screens::find("frmJobConditions");
    auto* box = screen.findChild<QLineEdit*>("txtSOTMin");
    const auto described = [box] {
        return QAccessible::queryAccessibleInterface(box)->text(QAccessible::Description).toStdString();
    };
    Fields::markField(box);
    EXPECT_EQ(described(), "This value is not accepted. Range: 40°F - 100°F");
    screen.findChild<QComboBox*>("cmboFluidType")->setCurrentText("20% Ethylene Glycol");
    EXPECT_EQ(described(), "This value is not accepted. Range: 20°F - 100°F");
    Fields::unmarkField(box);
    EXPECT_EQ(described(), "Range: 20°F - 100°F");
}

// Another language changes the program's own texts; the maker's stay English.
TEST_F(EveryScreen, AnotherLanguageChangesOnlyOwnTexts) {
    EXPECT_FALSE(loadTranslations(TRANSLATIONS_FOLDER, QLocale("fr_FR"))) << "there is no such file";
    ASSERT_TRUE(loadTranslations(TRANSLATIONS_FOLDER, QLocale("de_AT")));
    Session::TankClass.write("Expansion Tank");
    ASSERT_TRUE(Screens::open("frmJobConditions"));
    const Screen& screen = *Screens::find("frmJobConditions");
    EXPECT_EQ(screen.findChild<QLineEdit*>("txtSOPMin")->accessibleName(), "Kleinster Druck");
    EXPECT_EQ(screen.findChild<QPushButton*>("cmdNext")->text(), "&Next")
        << "though the file has a word for it";
}
