// The documents of a job as one.

#include "calculation/CalculationSheet.h"
#include "core/store/Gateway.h"
#include "core/store/SessionStore.h"
#include "documents/Documents.h"
#include "documents/report/PictureLabels.h"
#include "extras/package/JobPackage.h"
#include "tests/support/TemporaryHome.h"

#include <gtest/gtest.h>

#include <QSvgRenderer>

#include <algorithm>

TEST(JobPackage, ContentsAndScheduleLeadToTheTanks) {
    TemporaryHome home;
    registerDocuments();
    home.installData();
    const auto sql = [](const QString& statement) {
        Connection user = Gateway::openDatabase("User");
        Recordset().Open(statement, user);
    };
    sql("INSERT INTO tblJobHeader (JobID) VALUES ('J')");
    sql("INSERT INTO tblJobData (TankID, TankNo, JobID, ModelNo, Qty) VALUES ('J.1', 1, 'J', 'RCB 300', 2), "
        "('J.2', 2, 'J', 'RCB 500', 1)");
    Session::JobID.write("J");
    const auto package = JobPackage::make("J", {}, [](int, int) { return true; });
    ASSERT_TRUE(package);
    EXPECT_EQ(package->pageLabels.join('|').toStdString(), "Cover|1 of 3|2 of 3|3 of 3");
    QStringList links; // "page text > page"
    for (const PageLink& link : package->links)
        for (const PageText& text : package->pages[link.page].texts)
            if (QRectF(text.place) == link.place)
                links.append(QString("%1 %2 > %3").arg(link.page).arg(text.text.trimmed()).arg(link.target));
    EXPECT_EQ(links.join('|').toStdString(),
              "0 Tank schedule > 1|0 Tank J.1, 2 × RCB 300 > 2|0 Submittal > 2|0 Tank J.2, 1 × RCB 500 > 3|"
              "0 Submittal > 3|1 J.1.1 > 2|1 J.1.2 > 2|1 J.2.1 > 3");
}

// The longest texts of the widest letters, with a tank of every specification.
TEST(JobPackage, KeepsEveryLetterLegible) {
    constexpr double smallest = 6; // points
    const QString name(50, u'W');
    const QString hundred(100, u'W');
    TemporaryHome home;
    registerDocuments();
    registerCalculation();
    home.installData();
    const auto sql = [](const QString& statement) {
        Connection user = Gateway::openDatabase("User");
        Recordset().Open(statement, user);
    };
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
    Session::JobID.write(name);
    const auto package = JobPackage::make(name,
                                          {.calculations = true,
                                           .specifications = true,
                                           .drawings = true,
                                           .revision = name.left(40),
                                           .note = hundred + hundred},
                                          [](int, int) { return true; });
    ASSERT_TRUE(package);
    EXPECT_GT(package->pages.size(), 100);
    for (qsizetype page = 0; page < package->pages.size(); ++page) {
        for (const PageText& text : package->pages[page].texts)
            EXPECT_GE(text.style->size, smallest) << page << ": " << text.text.toStdString();
        for (const PagePicture& picture : package->pages[page].pictures) {
            const QSizeF drawn = QSvgRenderer(picture.svg).defaultSize();
            const double scale =
                std::min(picture.place.width() / drawn.width(), picture.place.height() / drawn.height());
            for (const auto& label : labelledPicture(picture.svg).labels)
                EXPECT_GE(label.style.size * scale, smallest - .01)
                    << page << ": " << label.text.toStdString();
        }
    }
}
