// The four submittals in full: everything on the page, line by line.

#include "documents/submittals/Submittals.h"
#include "core/base/Program.h"
#include "core/base/Text.h"
#include "core/store/Gateway.h"
#include "core/store/SessionStore.h"
#include "documents/Documents.h"
#include "documents/report/Reports.h"
#include "tests/support/TemporaryHome.h"

#include <QDate>
#include <QSvgRenderer>

#include <gtest/gtest.h>

using namespace Gateway;
using namespace Program;
using namespace Submittals;

namespace {

/// A catalogue in which each model has a distinct value in every column, and every specification mentions
/// them all.
class SubmittalsTest : public testing::Test {
  protected:
    SubmittalsTest() {
        registerDocuments();
        home.installData();
        execute("Sys",
                "UPDATE tblModelMaster SET TankVolume = 1500, AcceptanceVolume = 1234.5, TankOD = 48.5, "
                "OAL = 96.25, SysConnStd = '2-1/2 in', TankSysConn = 2.5, TankWkPressure = 150, "
                "MinSysPressure = 12, Precharge = 37, ShipWeight = 1875, MakeUpCapacity = 5.5, "
                "PumpHp = .75, MaxTemp = 240, Bladder = 'Bladder of Butyl Bladder', Shell = 'Steel', "
                "Finish = 'Red', SysConnType = 'Flanged', Clearance = '36 in'");
        execute("Sys",
                "UPDATE tblSpecMaster SET Spec1 = '@TankGal@ @tankgal@,', Spec2 = ' @Qty@,', Spec3 = "
                "' @TankOD@,', Spec4 = ' @TankOAL@,', Spec5 = ' @SysConn@,', Spec6 = ' @ModelNo@,', "
                "Spec7 = ' @WkPressure@,', Spec8 = ' @Precharge@,', Spec9 = ' @Rep@,', Spec10 = "
                "' @MakeUpCapacity@, @Hp@', LastLine = '@Qty@ of @Qty@ @ModelNo@', Description1 = 'One', "
                "Description2 = ' Two', Description3 = ' Three @Qty@'");
        execute("User",
                "INSERT INTO tblRepMaster (CompanyName, PhoneNo) VALUES ('Pump && Tank', '555-0100')");
        execute("User", "INSERT INTO tblJobHeader (JobID, Engineer, Contractor) VALUES ('J', 'Ohm', 'Watt')");
    }

    /// The submittal of a tank line with a model.
    static Document documentOf(const QString& model) {
        execute("User", "DELETE FROM tblJobData");
        execute(
            "User",
            "INSERT INTO tblJobData (TankID, JobID, ModelNo, Qty, TotSysVolume, SysFluidType, SOTMin, "
            "SOTMax, SOPMin, SOPMax, FlowRate, FlowPressure, StaticPressure, ShockPressure, WaterVelocity, "
            "LeakLoad, PumpRunTime, TagID01, TagID02, TagID03, TagID10) VALUES ('J.1', 'J', '" +
                model +
                "', 4, 2345.6, 'Brine', 41, 199, 13, 28, 1260, 45, 65, 155, 8.44, .136, 5.62, 'N-1', '-', "
                "'S-3', 'W-9')");
        Session::TankID.write("J.1");
        return Report(*findReport(SetReport(model))).Run();
    }
    static Pages pagesOf(const QString& model) { return documentOf(model).pages; }

    /// The texts of a model's submittal, one per line: the parts of a boxed field together, numbers after an
    /// equals sign, pictures last.
    static std::string submittal(const QString& model) {
        QStringList lines;
        int field = -1;
        for (const Page& page : pagesOf(model)) {
            for (const PageText& text : page.texts) {
                const QString shown = (text.isNumber() ? "=" : "") + text.plain();
                if (text.field >= 0 && text.field == field)
                    lines.last() += " | " + shown;
                else
                    lines.append(shown);
                field = text.field;
            }
            for (const PagePicture& picture : page.pictures)
                lines.append('[' + picture.description + ']');
        }
        return lines.join('\n').toStdString();
    }

    /// The position at which a text begins on a page.
    static QPointF placeOf(const Pages& pages, const QString& plain) {
        for (const PageText& text : pages.at(0).texts)
            if (text.plain() == plain)
                return text.place.topLeft();
        ADD_FAILURE() << plain.toStdString();
        return {};
    }

    /// A page, preceded by what all submittals have in common.
    static std::string page(const char* text) {
        return R"(Ordwick Company  ·  1200 Foundry Road, Lowell, MA 01851  ·  Tel. (978) 555-0142  ·  Fax (978) 555-0143
)" + shownDate(QDate::currentDate()).toStdString() +
               R"(  ·  Dimensions in inches
www.ordwick.example
Page 1 of 1
Brennoval Submittal
)" + ("Version " + fullProgramVersion().toStdString()) +
               "\n" BRENNOVAL_RELEASE_DATE R"(
JOB | J
Engineer | Ohm
Contractor | Watt
Unit Tag No. | N-1, S-3, W-9
Ordwick Representative | Pump & Tank | 555-0100
Order No.
Date
Submitted By
Date
Approved By
Date
)" + text;
    }

    TemporaryHome home;
};

} // namespace

TEST_F(SubmittalsTest, OfABladderTank) {
    EXPECT_EQ(submittal("RCB 5000"), page(R"(DESCRIPTION
One Two Three @Qty@
CONSTRUCTION
Shell:
Steel
Bladder:
 of Butyl 
Finish:
Red
System Connection:
Flanged
PERFORMANCE LIMITATIONS
Maximum Design Temperature:
=240°F
Maximum Design Pressure:
=150 psi
Factory PreCharge:
=37 psi
Typical Specifications
1,500 @tankgal@, 4, 48.5, 96.25, 2.5, RCB 5000, 150, 37, Pump & Tank, 5.5, 0.75
4 of 4 RCB 5000
Model Selected | RCB 5000
Quantity | =4
Tank Volume | =1,500 gal
Acceptance Volume | =1,235 gal
Diameter | =48.5
Height | =96.25
NPT | 2-1/2 in
Approx. Weight | =1875 lbs
System Conditions
System Fluid Content | =2,346 gal
Fluid | Brine
Temperatures | =Min 41°F | =Max 199°F
Pressures | =Min 13 psi | =Max 28 psi
[Ordwick Company]
[Drawing of RCB 5000])"));
    execute("Sys", "UPDATE tblModelMaster SET MaxTemp = NULL");
    EXPECT_NE(submittal("RCB 5000").find("Temperature:\n°F\n"), std::string::npos) << "only its unit";
}

TEST_F(SubmittalsTest, OfAHydropneumaticTank) {
    EXPECT_EQ(submittal("JWB 10000"), page(R"(DESCRIPTION
One Two Three @Qty@
CONSTRUCTION
Shell:
Steel
Bladder:
 of Butyl 
Finish:
Red
System Connection:
Flanged
PERFORMANCE LIMITATIONS
Maximum Design Temperature:
=240°F
Maximum Design Pressure:
=150 psi
Factory PreCharge:
=37 psi
Typical Specifications
1,500 @tankgal@, 4, 48.5, 96.25, 2.5, JWB 10000, 150, 37, Pump & Tank, 5.5, 0.75
4 of 4 JWB 10000
Model Selected | JWB 10000
Quantity | =4
Tank Volume | =1,500 gal
Acceptance Volume | =1,235 gal
Diameter | =48.5
Height | =96.25
NPT | 2-1/2 in
Approx. Weight | =1875 lbs
System Conditions
Drawdown | =2,346 gal
Pressures | =Min 13 psi | =Max 28 psi
[Ordwick Company]
[NSF mark]
[IAPMO mark]
[Drawing of JWB 10000])"));
}

TEST_F(SubmittalsTest, OfASteelTank) {
    EXPECT_EQ(submittal("42RB96"), page(R"(DESCRIPTION
One Two Three @Qty@
CONSTRUCTION
Shell:
Steel
Finish:
Red
PERFORMANCE LIMITATIONS
Maximum Design Temperature:
=240°F
Maximum Design Pressure:
=150 psi
Typical Specifications
1,500 @tankgal@, 4, 48.5, 96.25, 2-1/2 in, 42RB96, 150, 37, Pump & Tank, 5.5, 0.75
4 of 4 42RB96
Model Selected | 42RB96
Quantity | =4
Tank Volume | =1500 gal
Acceptance Volume | =1234.5 gal
Diameter | =48.5
Height/Length | =96.25
NPT | 2-1/2 in
Approx. Weight | =1875 lbs
System Conditions
System Fluid Content | =2,346 gal
Fluid | Brine
Temperatures | =Min 41°F | =Max 199°F
Pressures | =Min 13 psi | =Max 28 psi
[Ordwick Company]
[Drawing of 42RB96])"));
}

TEST_F(SubmittalsTest, OfAPackage) {
    EXPECT_EQ(submittal("PKG 100-5"), page(R"( Three @Qty@
One Two
Typical Specifications
1,500 @tankgal@, 4, 48.5, 96.25, 2-1/2 in, PKG 100-5, 150, 37, Pump & Tank, 5.5, 0.75
4 of 4 PKG 100-5
Model Selected | PKG 100-5
Quantity | =4
Solution Container | =1,500 gal
Height | =96.25
Approx. Weight | =1875 lbs
Make-up Capacity | 5.5 gpm @ 150 psi
Pressure Range | 12 psi - 150 psi
Width | =48.5
Horsepower: | =0.75 hp
[Ordwick Company]
[Drawing of PKG 100-5])"));
}

TEST_F(SubmittalsTest, OfAShockTank) {
    EXPECT_EQ(submittal("SHK 300"), page(R"(DESCRIPTION
One Two Three @Qty@
CONSTRUCTION
Shell:
Steel
Bladder:
Bladder of Butyl Bladder
Finish:
Red
System Connection:
Flanged
PERFORMANCE LIMITATIONS
Maximum Design Temperature:
=240°F
Maximum Design Pressure:
=150 psi
Factory PreCharge:
=37 psi
Typical Specifications
1,500 @tankgal@, 4, 48.5, 96.25, 2.5, SHK 300, 150, 37, Pump & Tank, 5.5, 0.75
4 of 4 SHK 300
Model Selected | SHK 300
Quantity | =4
Tank Volume | =1,500 gal
Diameter | =48.5
Height | =96.25
NPT | 2-1/2 in
Approx. Weight | =1875 lbs
System Conditions
Clearance
36 in
Flow | =1,260 gpm
Flow Pressure | =45 psi
Static Pressure | =65 psi
Velocity | =8.4 fps
Shock Pressure | =155 psi
LeakLoad | =13.6%
Pump Startup Delay | =5.6 sec
[Ordwick Company]
[Drawing of SHK 300])"));
}

TEST_F(SubmittalsTest, PutThePressuresOfAHydropneumaticTankWhereTheFluidWas) {
    const Pages bladder = pagesOf("RCB 5000");
    const Pages hydropneumatic = pagesOf("JWB 10000");
    EXPECT_EQ(placeOf(hydropneumatic, "Pressures"), placeOf(bladder, "Fluid"));
    for (const char* value : {"Min 13 psi", "Max 28 psi"})
        EXPECT_EQ(placeOf(hydropneumatic, value) - placeOf(hydropneumatic, "Pressures"),
                  placeOf(bladder, value) - placeOf(bladder, "Pressures"));
}

TEST_F(SubmittalsTest, DescribeThemselvesInFiles) {
    const Document document = documentOf("RCB 5000");
    EXPECT_EQ(document.title, "Brennoval Submittal, J, RCB 5000");
    EXPECT_EQ(document.author, "Pump & Tank");
    EXPECT_EQ(document.fileName, "J.1 RCB 5000");
    execute("User", "DELETE FROM tblRepMaster");
    EXPECT_EQ(documentOf("SHK 300").author, "Ordwick Company");
}

TEST_F(SubmittalsTest, ShowAMarkForNothingButACapitalY) {
    for (const char* mark : {"'y'", "'N'", "''", "NULL"}) {
        execute("Sys", QString("UPDATE tblModelMaster SET NSF = %1, IAPMO = %1").arg(mark));
        EXPECT_EQ(submittal("JWB 10000").find("mark"), std::string::npos) << mark;
    }
    execute("Sys", "UPDATE tblModelMaster SET NSF = 'Y'");
    EXPECT_TRUE(submittal("JWB 10000").ends_with("[NSF mark]\n[Drawing of JWB 10000]"));
    EXPECT_EQ(submittal("SHK 300").find("mark"), std::string::npos);
}

// What an approver reads on paper: drawings as large as their frames, and no small letters
// in long texts.
TEST_F(SubmittalsTest, DrawingsFillTheirFramesAndLongTextsStayReadable) {
    const QString longest = QString("Westminster Harbour Redevelopment ").repeated(3).trimmed().left(50);
    execute("User", QString("UPDATE tblJobHeader SET Engineer = '%1', Contractor = '%1'").arg(longest));
    execute("User", QString("UPDATE tblRepMaster SET CompanyName = '%1, %1'").arg(longest));
    for (const char* model : {"RCB 5000", "12RB33", "PKG 17-1.8", "SHK 300"}) {
        const Pages pages = pagesOf(model);
        ASSERT_EQ(pages.size(), 1) << model;
        const PagePicture& drawing = pages[0].pictures.last();
        QSizeF whole = QSvgRenderer(drawing.svg).defaultSize();
        whole.scale(drawing.place.size(), Qt::KeepAspectRatio);
        EXPECT_NEAR(whole.width(), drawing.place.width(), .01) << model;
        EXPECT_NEAR(whole.height(), drawing.place.height(), .01) << model;
        EXPECT_GT(whole.height(), 170) << model;
        for (const PageText& text : pages[0].texts) {
            EXPECT_GE(text.style->size, 6) << model << ": " << text.text.toStdString();
            EXPECT_TRUE(text.plain() != longest || (text.breaks() && text.style->size > 7.5)) << model;
        }
        EXPECT_LT(placeOf(pages, "Typical Specifications").y(), placeOf(pages, "Model Selected").y())
            << model;
    }
}
