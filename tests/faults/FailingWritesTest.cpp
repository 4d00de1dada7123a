// Makes each write of the sizing screens fail once: no row and no session value changes, the screen keeps
// what was typed, and the same button stores it once the cause is gone.

#include "core/store/SessionStore.h"
#include "tests/support/Driver.h"

#include <gtest/gtest.h>

using namespace Gateway;

namespace {

struct Step {
    const char* screen;
    const char* button;
    const char* table;     // written by the step
    const char* operation; // INSERT or UPDATE
    const char* next;      // the screen that opens when the write succeeds
    void (*fill)();
};

void enterShockConditions() {
    const std::pair<const char*, const char*> values[] = {
        {"PipeIndex", "4 in Sch 40"}, {"PipeLength", "300"},    {"FlowRate", "200"},
        {"FlowPressure", "50"},       {"StaticPressure", "70"}, {"ShockPressure", "150"}};
    for (const auto& [box, text] : values)
        Driver::enter("frmJobConditionsSHK", box, text);
}

const Step steps[] = {
    {"frmJobHeader", "cmdNext", "tblJobHeader", "INSERT", "frmClassSelect",
     [] {
         Driver::command("mnuNewJob");
         Driver::enter("frmJobHeader", "txtJobID", "J");
     }},
    {"frmJobConditions", "cmdNext", "tblJobData", "INSERT", "frmTankSeries",
     [] {
         Driver::press("frmClassSelect", "cmdEXP");
         Driver::enterConditions();
     }},
    {"frmTankSeries", "cmdNext", "tblJobData", "UPDATE", "frmtankselection",
     [] { Driver::press("frmTankSeries", "OptRCB"); }},
    {"frmtankselection", "cmdNext", "tblJobData", "UPDATE", "frmResults", [] {}},
    {"frmJobConditions", "cmdNext", "tblJobData", "UPDATE", "frmTankSeries",
     [] {
         Session::Mode.write(Session::Modes::Edit);
         Driver::press("frmResults", "bttnRecalc");
         Driver::enterConditions("600");
     }},
    {"frmJobConditionsSHK", "cmdNext", "tblJobData", "INSERT", "frmtankselection",
     [] {
         Screens::unload("frmTankSeries");
         Session::Mode.write(Session::Modes::New);
         Session::TankID.write("");
         Screens::open("frmClassSelect");
         Driver::press("frmClassSelect", "cmdSHK");
         enterShockConditions();
     }},
    {"frmtankselection", "cmdNext", "tblJobData", "UPDATE", "frmResultSHK", [] {}},
    {"frmPKGSelect", "bttnSave", "tblJobData", "INSERT", "frmPKGSelect",
     [] {
         Driver::press("frmResultSHK", "bttnAddMore");
         Driver::press("frmClassSelect", "cmdPKG");
         Driver::enter("frmPKGSelect", "txtModelNo", "PKG 30-1");
     }},
};

/// Everything the sizing screens write, as one text.
QString stored() {
    QString all;
    for (const char* sql :
         {"SELECT group_concat(quote(JobID)) AS V FROM tblJobHeader",
          "SELECT group_concat(TankID || ' ' || ifnull(TankClass, '') || ' ' || ifnull(TotSysVolume, "
          "'') || ' ' || ifnull(ModelNo, '')) AS V FROM tblJobData"})
        all += Rows("User", sql)["V"].text() + u'\n';
    for (const auto& value : {Session::Mode, Session::JobID, Session::TankID, Session::TankClass})
        all += value.text() + u'\n';
    return all;
}

void setTrigger(const Step& step) {
    execute("User",
            QString("CREATE TRIGGER refuses BEFORE %1 ON %2 BEGIN SELECT RAISE(ABORT, 'refused'); END")
                .arg(step.operation, step.table));
}

} // namespace

TEST(FailingWrites, LeaveNoRowAndNoSessionValue) {
    const TemporaryHome home;
    home.installData();
    Driver::start();
    int number = 0;
    for (const Step& step : steps) {
        const testing::Message where = testing::Message() << "step " << ++number << ", " << step.screen;
        step.fill();
        ASSERT_TRUE(Driver::isOpen(step.screen)) << where;
        const QString before = stored();
        setTrigger(step);
        Driver::press(step.screen, step.button);
        EXPECT_TRUE(Driver::report().contains("refused")) << where << Driver::report().toStdString();
        EXPECT_EQ(stored(), before) << where;
        ASSERT_TRUE(Driver::isOpen(step.screen)) << where;
        Screens::unload("frmError");
        execute("User", "DROP TRIGGER refuses");
        Driver::press(step.screen, step.button);
        EXPECT_NE(stored(), before) << where;
        ASSERT_TRUE(Driver::isOpen(step.next)) << where;
    }
    EXPECT_EQ(Session::TankID.text(), "J.3");
    Driver::stop();
}
