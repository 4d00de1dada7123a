// The pages that go with a tank, as the shipped layouts and catalogue make them.

#include "documents/report/Layout.h"

#include <gtest/gtest.h>

TEST(Submittals, ExtendTheFirstByAddingChangingAndDropping) {
    Layout first = Layout::load("rptSubmittal1");
    Layout second = Layout::load("rptSubmittal2");
    Layout third = Layout::load("rptSubmittal3");
    Layout fourth = Layout::load("rptSubmittal4");
    EXPECT_TRUE(first.control("txtBladder") && first.control("imgNSF") && first.control("txtAccVol"));
    for (const char* gone : {"lblBladder", "txtBladder", "lblSysConnType", "txtSysConnType", "lblPreCharge",
                             "txtPrecharge", "imgNSF", "imgIAPMO"})
        EXPECT_FALSE(second.control(gone)) << gone;
    EXPECT_EQ(second.control("lblHeight")->text, "Height/Length");
    for (const char* gone :
         {"lblConstruction", "txtShell", "txtFinish", "txtMaxTemp", "txtMaxPressure", "txtAccVol", "txtDia",
          "txtSysConnSize", "txtTSFC", "txtSOPMin", "lblSysConditions"})
        EXPECT_FALSE(third.control(gone)) << gone;
    for (const char* there : {"txtMakeUpCap", "txtPressureRange", "txtWidth", "txtHorsePower"})
        EXPECT_TRUE(third.control(there)) << there;
    EXPECT_EQ(third.control("lblTankVol")->text, "Solution Container");
    EXPECT_EQ(fourth.control("lblLeakLoad")->text, "LeakLoad");
    EXPECT_EQ(fourth.control("lblFluid")->text, "Static Pressure");
    EXPECT_EQ(fourth.control("txtSOTMax")->column, "WaterVelocity");
    EXPECT_FALSE(fourth.control("txtAccVol"));
    EXPECT_EQ(first.control("txtSOTMin")->style.pattern, "\"Min\" #,##0°F");
}
