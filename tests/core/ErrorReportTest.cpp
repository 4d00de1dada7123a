#include "core/shell/ErrorReport.h"
#include "core/base/Fault.h"
#include "core/shell/Screens.h"
#include "core/shell/Shell.h"
#include "core/shell/Trap.h"

#include <gtest/gtest.h>

#include <QPlainTextEdit>

using namespace Faults;

namespace {

/// The lines of the report shown by frmError.
QStringList shownReport() {
    return Screens::find("frmError")->control<QPlainTextEdit>("lblTechSupport")->toPlainText().split(u'\n');
}

class ErrorReport : public testing::Test {
  protected:
    ErrorReport() { registerShell(); }
    ~ErrorReport() override { Screens::unload("frmError"); }
};

} // namespace

TEST_F(ErrorReport, HasThirteenLinesInTheirOrder) {
    ReportError(11, "Division by zero", "5", "Brennoval", "frmTankSeries.cmdNext");
    const QStringList lines = shownReport();
    ASSERT_EQ(lines.size(), 14); // the final line end adds an empty one
    const char* starts[] = {"ERROR MESSAGE",
                            "Version: 1.0.0",
                            "Date: ",
                            "Error No. 11",
                            "Desc: Division by zero",
                            "DLL: 5",
                            "System Source: Brennoval",
                            "Code Source: frmTankSeries.cmdNext",
                            "Path: ",
                            "File Description:",
                            "Instance:",
                            "PrevInstance:",
                            "Other: "};
    for (int i = 0; i < 13; ++i)
        EXPECT_TRUE(lines[i].startsWith(QLatin1String(starts[i]))) << lines[i].toStdString();
    EXPECT_TRUE(lines[13].isEmpty());
}

TEST_F(ErrorReport, MasksThePasswordInTheSourceOnly) {
    ReportError(1, "has tinsplum inside", "0", "a=tinsplum;b=tinsplum;c=TINSPLUM", "x");
    EXPECT_EQ(shownReport()[6], QStringLiteral("System Source: a=********;b=********;c=TINSPLUM"));
    EXPECT_EQ(shownReport()[4], QStringLiteral("Desc: has tinsplum inside"));
    ReportError(2, "d", "0", "", "tinsplum.Load");
    EXPECT_EQ(shownReport()[6], QStringLiteral("System Source: tinsplum.Load"));
    EXPECT_EQ(shownReport()[3], QStringLiteral("Error No. 2")) << "the later report shows";
}

TEST_F(ErrorReport, ShowsEveryKindOfFailure) {
    bool ended = false;
    runTrapped("outer", [&] {
        underName("inner", [] { throw Fault(Fault::Overflow, "Overflow"); });
        ended = true;
    });
    EXPECT_FALSE(ended) << "a failed procedure ends its handler";
    EXPECT_EQ(shownReport()[7], QStringLiteral("Code Source: inner"));
    runTrapped("bad", [] { throw std::out_of_range("place"); });
    EXPECT_EQ(shownReport()[4], QStringLiteral("Desc: place"));
    runTrapped(
        "splash", [] { throw Fault(1, "x"); }, "Splash");
    EXPECT_EQ(Screens::find("frmError")->Tag, QStringLiteral("Splash"));
}
