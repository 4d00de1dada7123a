#include "core/shell/FieldChecks.h"
#include "core/base/ApplicationNames.h"
#include "core/shell/BrennovalMain.h"
#include "core/shell/Commands.h"
#include "core/shell/Dialogs.h"
#include "core/shell/Fields.h"
#include "core/store/Catalogue.h"
#include "core/store/Deletion.h"
#include "core/store/Gateway.h"
#include "core/store/SessionStore.h"
#include "core/store/TankLine.h"
#include "tests/support/ScriptedDialogs.h"
#include "tests/support/TemporaryHome.h"

#include <QComboBox>
#include <QLineEdit>

#include <gtest/gtest.h>

using namespace ApplicationNames;
using namespace Catalogue;
using namespace Deletion;
using namespace Fields;
using namespace Gateway;
using namespace Records;

namespace {

class FieldChecks : public testing::Test {
  protected:
    FieldChecks() { dialogs.rule = ScriptedDialogs::decline; }
    ~FieldChecks() override { Dialogs::install(std::make_unique<Dialogs>()); }

    QString shown() const {
        return dialogs.last.text.isEmpty() ? QString() : dialogs.last.title + ": " + dialogs.last.text;
    }

    ScriptedDialogs& dialogs = ScriptedDialogs::install();
    QLineEdit field;
    QLineEdit other;
};

} // namespace

TEST_F(FieldChecks, Numeric) {
    const struct {
        const char* text;
        bool passes;
        const char* message;
    } cases[] = {{"12", true, ""},
                 {"0", true, ""},
                 {"1,234.5", true, ""},
                 {"abc", false, "Error: Please enter a valid numeric value!"},
                 {"1,5", false, "Error: Please enter a valid numeric value!"},
                 {"-.5", false, "Error: Please enter a positive number!"}};
    for (const auto& c : cases) {
        dialogs.last = {};
        field.setText(c.text);
        EXPECT_EQ(ValidateNumeric(&field, true), c.passes) << c.text;
        EXPECT_EQ(isMarked(&field), !c.passes) << c.text;
        EXPECT_EQ(shown().toStdString(), c.message);
        EXPECT_EQ(field.text(), c.text);
    }
    EXPECT_EQ(field.palette().color(QPalette::Base), QColor(255, 255, 128));
    EXPECT_EQ(field.palette().color(QPalette::Text), QColor(255, 0, 0));
}

TEST_F(FieldChecks, NumericEmptyAndSilent) {
    field.clear();
    EXPECT_TRUE(ValidateNumeric(&field, true));
    EXPECT_EQ(field.text(), "0");
    field.setText("abc");
    EXPECT_FALSE(ValidateNumeric(&field, false));
    EXPECT_EQ(field.text(), "0");
    EXPECT_TRUE(isMarked(&field));
    EXPECT_EQ(shown(), "");
}

TEST_F(FieldChecks, MinMaxAndRange) {
    const std::pair<const char*, bool> cases[] = {
        {"0", true}, {"5", true}, {"10", true}, {"10.01", false}, {"4.99", false}};
    for (const auto& [text, passes] : cases) {
        field.setText(text);
        EXPECT_EQ(ValidateMinMax(&field, 5, 10), passes) << text;
    }
    EXPECT_EQ(shown(), "Error: Please enter a value between 5 and 10.");
    EXPECT_EQ(dialogs.last.fields, QList<const QWidget*>{&field});
    field.setText("5");
    other.setText("5");
    EXPECT_FALSE(ValidateValueRange(&field, &other));
    EXPECT_TRUE(isMarked(&field) && isMarked(&other));
    EXPECT_EQ(shown(), "Error: The maximum value must be greater than the minimum value!");
    EXPECT_EQ(dialogs.last.fields, (QList<const QWidget*>{&field, &other})) << "to be clear of both";
    other.setText("5.1");
    EXPECT_TRUE(ValidateValueRange(&field, &other));
    EXPECT_FALSE(isMarked(&field) || isMarked(&other));
}

TEST_F(FieldChecks, APairInOrderAgainLosesBothMarks) {
    const auto refuse = [this] {
        field.setText("30");
        other.setText("30");
        ValidateValueRange(&field, &other);
        shown();
    };
    struct Case {
        QLineEdit* changed;
        const char* text;
        bool unmarks; // the half that was not touched
    };
    for (const Case& c : {Case{&other, "60", true}, Case{&field, "12", true}, Case{&other, "29", false},
                          Case{&field, "31", false}, Case{&field, "thirty", false}}) {
        refuse();
        c.changed->setText(c.text);
        ValidateNumeric(c.changed, true);
        EXPECT_EQ(isMarked(c.changed == &field ? &other : &field), !c.unmarks) << c.text;
    }
    // A half that is refused for itself meanwhile keeps that mark.
    refuse();
    other.setText("60");
    ValidateMinMax(&other, 90, 100);
    field.setText("12");
    EXPECT_TRUE(ValidateNumeric(&field, true));
    EXPECT_TRUE(isMarked(&other));
    refuse();
    other.clear();
    EXPECT_TRUE(ValidateNumeric(&field, true)) << "an emptied half is not compared";
    EXPECT_TRUE(isMarked(&other));
}

TEST_F(FieldChecks, EnteredAndSelected) {
    EXPECT_FALSE(ValidateValueEntered(&field, false));
    EXPECT_FALSE(isMarked(&field));
    EXPECT_FALSE(ValidateValueEntered(&field, true));
    EXPECT_TRUE(isMarked(&field));
    QComboBox box;
    EXPECT_FALSE(ValidateItemSelected(&box, false));
    EXPECT_TRUE(isMarked(&box));
    box.addItem("Water");
    EXPECT_TRUE(ValidateItemSelected(&box, true));
    EXPECT_FALSE(isMarked(&box));
}

TEST(SharedServices, FractionsOfInches) {
    const TemporaryHome home;
    home.installData();
    const std::pair<double, const char*> cases[] = {
        {24, "24\""}, {1.25, "1-1/4\""}, {.5, ".5\""}, {12.37, "12-\""}, {2.0625, "2-1/16\""}};
    for (const auto& [value, text] : cases)
        EXPECT_EQ(FractionConversion(value).toStdString(), text);
}

TEST(SharedServices, BoresOfPipes) {
    const TemporaryHome home;
    home.installData();
    EXPECT_EQ(pipeBore("2 in Sch 40"), 2.067);
    EXPECT_EQ(pipeBore("2' in Sch 40"), 0);
}

TEST(SharedServices, NextNumberAndCancelledJobs) {
    const TemporaryHome home;
    home.installData();
    EXPECT_EQ(GetNextNumber(), 1);
    Session::JobID.write("O'Brien");
    EXPECT_EQ(GetNextNumber(), 1);
    Connection user = openDatabase("User");
    for (const char* sql : {"INSERT INTO tblJobHeader (JobID) VALUES ('O''Brien')",
                            "INSERT INTO tblJobHeader (JobID) VALUES ('Empty')",
                            "INSERT INTO tblJobData (TankID, TankNo, JobID) VALUES ('a', 1, 'O''Brien')",
                            "INSERT INTO tblJobData (TankID, TankNo, JobID) VALUES ('b', 3, 'O''Brien')"})
        Recordset().Open(sql, user);
    EXPECT_EQ(GetNextNumber(), 4);
    const auto headers = [&user] {
        Recordset rows;
        rows.Open("SELECT COUNT(*) AS N FROM tblJobHeader", user);
        return rows["N"].number();
    };
    CancelJobInput("Empty"); // without a mode, nothing happens
    EXPECT_EQ(headers(), 2);
    Session::Mode.write("New");
    CancelJobInput("Empty");
    CancelJobInput("O'Brien");
    CancelJobInput("");
    EXPECT_EQ(headers(), 1);
}

TEST(SharedServices, HelpContextOfTheApplication) {
    const TemporaryHome home;
    home.installData();
    EXPECT_EQ(SetHelpContext(), 0);
    Session::TankClass.write(AppNameHydro());
    EXPECT_EQ(SetHelpContext(), 103);
    Session::TankClass.write("hydro");
    EXPECT_EQ(SetHelpContext(), 0);
}

TEST(MainWindow, HasAllCommandsAndDisablesWhatIsNotThere) {
    const BrennovalMain window;
    EXPECT_EQ(window.windowTitle(), "Ordwick Company Brennoval Version 1.0");
    EXPECT_EQ(Commands::action("mnuClose")->shortcut(), QKeySequence("Ctrl+M"));
    EXPECT_EQ(Commands::action("mnuConvert")->property("helpContext"), 303);
    EXPECT_FALSE(Commands::action("mnuPrint")->isEnabled());
    EXPECT_FALSE(Commands::action("mnuSchedule")->isVisible());
    EXPECT_TRUE(window.toolCommand("Exit")->isEnabled());
    EXPECT_EQ(window.toolCommand("Close")->toolTip(), "Close");
}
