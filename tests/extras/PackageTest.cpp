// The documents of a job as one.

#include "calculation/CalculationSheet.h"
#include "core/base/Fault.h"
#include "core/store/Gateway.h"
#include "core/store/SessionStore.h"
#include "documents/Documents.h"
#include "documents/report/PictureLabels.h"
#include "extras/package/JobPackage.h"
#include "tests/support/PageTexts.h"
#include "tests/support/TemporaryHome.h"

#include <gtest/gtest.h>

#include <QSvgRenderer>

#include <algorithm>

#include <sqlite3.h>

namespace {

class Package : public testing::Test {
  protected:
    Package() {
        registerDocuments();
        home.installData();
        sql("INSERT INTO tblJobHeader (JobID) VALUES ('J')");
        sql("INSERT INTO tblJobData (TankID, TankNo, JobID, ModelNo, Qty) VALUES ('J.1', 1, 'J', 'RCB 300', "
            "2), ('J.2', 2, 'J', 'RCB 500', 1)");
        Session::JobID.write("J");
        Session::TankID.write("J.7");
    }

    static void sql(const QString& statement) {
        Connection user = Gateway::openDatabase("User");
        Recordset().Open(statement, user);
    }

    static const Document& whole(DocumentMaker& maker) {
        while (!maker.isDone())
            maker.makeNext();
        return maker.document();
    }

    TemporaryHome home;
};

TEST_F(Package, ContentsAndScheduleLeadToTheTanks) {
    const auto maker = JobPackage::begin("J", {});
    const Document& package = whole(*maker);
    EXPECT_EQ(package.pageLabels.join('|').toStdString(), "Cover|1 of 3|2 of 3|3 of 3");
    QStringList links; // "page text > page"
    for (const PageLink& link : package.links)
        for (const PageText& text : package.pages[link.page].texts)
            if (QRectF(text.place) == link.place)
                links.append(QString("%1 %2 > %3").arg(link.page).arg(text.text.trimmed()).arg(link.target));
    EXPECT_EQ(links.join('|').toStdString(),
              "0 Tank schedule > 1|0 Tank J.1, 2 × RCB 300 > 2|0 Submittal > 2|0 Tank J.2, 1 × RCB 500 > 3|"
              "0 Submittal > 3|1 J.1.1 > 2|1 J.1.2 > 2|1 J.2.1 > 3");
    EXPECT_EQ(Session::TankID.text(), "J.7");
}

// The longest texts of the widest letters, with a tank of every specification.
TEST_F(Package, KeepsEveryLetterLegible) {
    constexpr double smallest = 6; // points
    const QString name(50, u'W');
    const QString hundred(100, u'W');
    registerCalculation();
    sql(QString("INSERT INTO tblJobHeader (JobID, JobDscrptn, Engineer, Contractor) VALUES ('%1', '%2', "
                "'%1', '%1')")
            .arg(name, hundred));
    sql(QString("INSERT INTO tblRepMaster (CompanyName, PhoneNo) VALUES ('%1', '%2')")
            .arg(hundred, QString(30, u'9')));
    sql(QString("INSERT INTO tblOwn (OwnName, Address1, Address2, PhoneNo) VALUES ('%1', '%1', '%1', '%2')")
            .arg(hundred, name));
    Gateway::Rows models("Sys", "SELECT MIN(ModelDscrptn) AS Name FROM tblModelMaster GROUP BY Submittal");
    for (int tank = 1; !models.atEnd(); models->moveNext(), ++tank)
        sql(QString("INSERT INTO tblJobData (TankID, TankNo, JobID, ModelNo, Qty, SysFluidType, TagID01, "
                    "TagID02) "
                    "VALUES ('%1.%2', %2, '%1', '%3', 2, '%1', 'WWWWW-WWWWW', 'WWWWW-WWWWW')")
                .arg(name)
                .arg(tank)
                .arg(models["Name"].text()));
    const auto maker = JobPackage::begin(name, {.calculations = true,
                                                .specifications = true,
                                                .drawings = true,
                                                .revision = name.left(40),
                                                .note = hundred + hundred});
    const Document& package = whole(*maker);
    EXPECT_GT(package.pages.size(), 100);
    for (qsizetype page = 0; page < package.pages.size(); ++page) {
        for (const PageText& text : package.pages[page].texts)
            EXPECT_GE(text.style->size, smallest) << page << ": " << text.text.toStdString();
        for (const PagePicture& picture : package.pages[page].pictures) {
            const QSizeF drawn = QSvgRenderer(picture.svg).defaultSize();
            const double scale =
                std::min(picture.place.width() / drawn.width(), picture.place.height() / drawn.height());
            for (const auto& label : labelledPicture(picture.svg).labels)
                EXPECT_GE(label.style.size * scale, smallest - .01)
                    << page << ": " << label.text.toStdString();
        }
    }
}

TEST_F(Package, NeverShowsAWrongNumber) {
    sql("UPDATE tblJobData SET ModelNo = NULL WHERE TankNo = 1"); // the schedule stops; a page says why
    const auto maker = JobPackage::begin("J", {.specifications = true, .drawings = true});
    std::vector<Document> stages = {maker->document()};
    while (!maker->isDone()) {
        maker->makeNext();
        stages.push_back(maker->document());
    }
    ASSERT_EQ(stages.size(), 5); // no model; submittal, specification, drawing
    EXPECT_TRUE(textsOf(stages[0].pages[0]).contains("Tank J.2, 1 × RCB 500"));
    EXPECT_TRUE(textsOf(stages[0].pages[1]).contains("Page 1 of …"));
    const Document& last = stages.back();
    for (const Document& stage : stages) {
        for (qsizetype page = 0; page < stage.pages.size(); ++page) {
            const QStringList now = textsOf(stage.pages[page]);
            const QStringList then = textsOf(last.pages[page]);
            ASSERT_EQ(now.size(), then.size());
            for (qsizetype i = 0; i < now.size(); ++i)
                EXPECT_TRUE(now[i] == then[i] || now[i].contains(DocumentMaker::Unknown))
                    << now[i].toStdString() << " instead of " << then[i].toStdString();
        }
        for (qsizetype i = 0; i < stage.bookmarks.size(); ++i)
            EXPECT_EQ(stage.bookmarks[i].page, last.bookmarks[i].page);
    }
    for (const Page& page : last.pages)
        EXPECT_FALSE(textsOf(page).join(' ').contains(DocumentMaker::Unknown));
}

// A file missing from the installation, and a name that leads out of its folder.
TEST_F(Package, GoesOnWithoutADrawing) {
    Connection catalogue = Gateway::openDatabase("Sys");
    for (const char* statement :
         {"UPDATE tblTankDrawMaster SET Ext = 'gone' WHERE TankDraw = (SELECT TankDraw FROM tblModelMaster "
          "WHERE ModelDscrptn = 'RCB 300')",
          "UPDATE tblModelMaster SET TankDraw = '../x' WHERE ModelDscrptn = 'RCB 500'",
          "INSERT INTO tblTankDrawMaster (TankDraw, Ext, X, Y) VALUES ('../x', 'svg', 1, 1)"})
        Recordset().Open(statement, catalogue);
    const auto maker = JobPackage::begin("J", {.submittals = false, .drawings = true});
    const Document& package = whole(*maker);
    ASSERT_EQ(package.pages.size(), 4);
    EXPECT_TRUE(textsOf(package.pages[2]).contains("The drawing of RCB 300 cannot be read."));
    EXPECT_TRUE(textsOf(package.pages[3]).contains("The drawing of RCB 500 cannot be read."));
}

TEST_F(Package, BeginsAnewWhenItsJobHasChanged) {
    const auto maker = JobPackage::begin("J", {});
    maker->makeNext();
    sql("UPDATE tblJobData SET Qty = 5 WHERE TankNo = 1");
    EXPECT_TRUE(textsOf(whole(*maker).pages[0]).contains("Tank J.1, 5 × RCB 300"));
    EXPECT_EQ(maker->document().pages[1].texts.count(), // the schedule has all the units
              whole(*JobPackage::begin("J", {})).pages[1].texts.count());
}

TEST_F(Package, GoesOnWhenAnotherJobHasChanged) {
    const auto maker = JobPackage::begin("J", {});
    maker->makeNext();
    sql("INSERT INTO tblJobData (TankID, TankNo, JobID, ModelNo, Qty) VALUES ('K.1', 1, 'K', 'RCB 300', 2)");
    maker->makeNext();
    EXPECT_TRUE(maker->isDone());
}

TEST_F(Package, WaitsForAnotherProgram) {
    const auto maker = JobPackage::begin("J", {});
    sqlite3* other = nullptr;
    sqlite3_open(Gateway::dbConnection("User").dataSource().toUtf8().constData(), &other);
    sqlite3_exec(other, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr);
    maker->makeNext();
    EXPECT_EQ(maker->partsMade(), 0);
    sqlite3_close(other); // which ends it
    EXPECT_EQ(whole(*maker).pages.size(), 4);
}

TEST_F(Package, EndsWithItsJobOrItsData) {
    const auto orphan = JobPackage::begin("J", {});
    sql("DELETE FROM tblJobHeader");
    EXPECT_THROW(whole(*orphan), RecordGone);
    const auto maker = JobPackage::begin("J", {});
    QFile::remove(Gateway::dbConnection("User").dataSource());
    EXPECT_THROW(whole(*maker), Fault);
}

} // namespace
