// The documents of a job as one.

#include "core/store/Gateway.h"
#include "core/store/SessionStore.h"
#include "documents/Documents.h"
#include "extras/package/JobPackage.h"
#include "tests/support/TemporaryHome.h"

#include <gtest/gtest.h>

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
