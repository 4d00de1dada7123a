// Thousands of random texts in every box of the sizing screens, through the handlers a user reaches: no
// crash, no hang, and no row that no save has written.

#include "core/base/Numbers.h"
#include "core/base/Text.h"
#include "core/shell/Screens.h"
#include "core/store/Database.h"
#include "core/store/Gateway.h"
#include "core/store/SessionStore.h"
#include "tests/support/Driver.h"
#include "tests/support/Rounds.h"

#include <gtest/gtest.h>

#include <QLineEdit>

#include <random>

using namespace Gateway;

namespace {

class Texts {
  public:
    explicit Texts(unsigned seed) : random(seed) {}

    int below(int limit) { return std::uniform_int_distribution(0, limit - 1)(random); }

    QString any() {
        static const QStringList known = {"",
                                          " ",
                                          "0",
                                          "-0",
                                          "1e3",
                                          "1E-400",
                                          "1e999",
                                          "-5",
                                          "+12",
                                          "1,234.5",
                                          "1,23",
                                          "1.2.3",
                                          "0x10",
                                          "NaN",
                                          "inf",
                                          ".",
                                          "-",
                                          "½",
                                          "１２",
                                          "٣",
                                          "12 psi",
                                          "1'2",
                                          "'",
                                          "''",
                                          "\"",
                                          "';--",
                                          "'; DROP TABLE tblJobData;--",
                                          "' OR '1'='1",
                                          "[x]",
                                          "#1/1/2026#",
                                          "%",
                                          "_",
                                          "&",
                                          "^",
                                          "*",
                                          "?",
                                          "\\",
                                          "/",
                                          "CONVERT",
                                          "convert",
                                          "New",
                                          "NULL",
                                          "Ł",
                                          "水道",
                                          "Привет",
                                          "שלום",
                                          "مرحبا",
                                          "é",
                                          "👍",
                                          "\u200b",
                                          "\u202e",
                                          "a\tb",
                                          "100",
                                          "250",
                                          "40",
                                          "12.5",
                                          "180",
                                          "30",
                                          "14.7"};
        switch (below(4)) {
        case 0:
            return noise(below(40));
        case 1:
            return QString::number(std::uniform_real_distribution(-50.0, 400.0)(random), 'g', 1 + below(9));
        case 2:
            return below(40) == 0 ? noise(5000)
                                  : known[below(int(known.size()))] + known[below(int(known.size()))];
        default:
            return known[below(int(known.size()))];
        }
    }

  private:
    QString noise(int length) {
        static constexpr std::pair<int, int> ranges[] = {{1, 31},        {32, 126},        {160, 591},
                                                         {0x400, 0x4ff}, {0x4e00, 0x4eff}, {0x5d0, 0x5ea}};
        QString text;
        for (int i = 0; i < length; ++i) {
            const auto& [first, last] = ranges[below(std::size(ranges))];
            text += QChar(first + below(last - first + 1));
        }
        return text;
    }

    std::mt19937 random;
};

class BadInput : public testing::Test {
  protected:
    BadInput() {
        home.installData();
        dialogs = &Driver::start();
    }
    ~BadInput() override { Driver::stop(); }

    static int count(const QString& sql) {
        Connection user = openDatabase("User");
        Recordset rows;
        rows.Open("SELECT COUNT(*) AS V FROM " + sql, user);
        return int(rows["V"].number());
    }

    static void closeErrors() {
        Screens::unload("frmError");
        Driver::settle();
    }

    static void expectSound() {
        Connection user = openDatabase("User");
        Recordset rows;
        rows.Open("SELECT integrity_check AS V FROM pragma_integrity_check", user);
        EXPECT_EQ(rows["V"].text(), "ok");
    }

    TemporaryHome home;
    ScriptedDialogs* dialogs = nullptr;
};

} // namespace

TEST_F(BadInput, JobHeaderStoresWhatWasTypedOrNothing) {
    Texts texts(101);
    int stored = 0;
    const int rounds = roundCount(120, 600);
    for (int i = 0; i < rounds; ++i) {
        dialogs->rule = [&](const Message& m) {
            return m.buttons & QMessageBox::Yes                             ? QMessageBox::No
                   : texts.below(2) == 0 && m.buttons & QMessageBox::Cancel ? QMessageBox::Cancel
                                                                            : QMessageBox::Ok;
        };
        Driver::command("mnuNewJob");
        for (const char* box : {"txtJobID", "txtJobDscrptn", "txtEng", "txtCont", "txtJobInfo"}) {
            Driver::enter("frmJobHeader", box, texts.any());
            ASSERT_TRUE(QApplication::focusWidget());
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
        const QString id = Driver::control<QLineEdit>("frmJobHeader", "txtJobID")->text();
        const QString engineer = Driver::control<QLineEdit>("frmJobHeader", "txtEng")->text();
        const int before = count("tblJobHeader");
        Driver::press("frmJobHeader", "cmdNext");
        if (Driver::isOpen("frmClassSelect")) {
            ASSERT_EQ(count("tblJobHeader"), before + 1) << id.toStdString();
            {
                Connection user = openDatabase("User");
                Recordset job;
                job.Open("SELECT * FROM tblJobHeader ORDER BY rowid DESC", user);
                EXPECT_EQ(job["JobID"].text(), withoutTrailingBlanks(id));
                EXPECT_EQ(job["Engineer"].text(), withoutTrailingBlanks(engineer));
            }
            ++stored;
            if (i % 2 == 0)
                Driver::press("frmClassSelect", "cmdCancel"); // deletes the header again
            else
                Screens::unload("frmClassSelect");
            ASSERT_EQ(count("tblJobHeader"), before)
                << "a job without a tank leaves no header: " << id.toUtf8().toPercentEncoding().toStdString();
        } else {
            EXPECT_EQ(count("tblJobHeader"), before);
        }
        closeErrors();
        Screens::unload("frmJobHeader");
    }
    EXPECT_GT(stored, rounds / 6);
    EXPECT_EQ(count("tblJobData"), 0);
    expectSound();
}

TEST_F(BadInput, ConditionsStoreNumbersOrNothing) {
    Texts texts(102);
    Driver::command("mnuNewJob");
    Driver::enter("frmJobHeader", "txtJobID", "B'ad");
    Driver::press("frmJobHeader", "cmdNext");
    int stored = 0;
    const char* const applications[] = {"cmdEXP", "cmdTHM", "cmdHYD"};
    const char* const boxes[] = {"txtTotSysFluid", "txtSOTMin", "txtSOTMax",
                                 "txtSOPMin",      "txtSOPMax", "txtAtmPressure"};
    const int rounds = roundCount(150, 600);
    for (int i = 0; i < rounds; ++i) {
        if (!Driver::isOpen("frmJobConditions")) {
            if (!Driver::isOpen("frmClassSelect"))
                Screens::open("frmClassSelect");
            Session::TankID.write("");
            Driver::press("frmClassSelect", applications[texts.below(3)]);
        }
        ASSERT_TRUE(Driver::isOpen("frmJobConditions"));
        for (const char* box : boxes)
            if (texts.below(3) != 0)
                Driver::enter("frmJobConditions", box, texts.any());
        if (texts.below(3) == 0) // a valid set now and then
            Driver::enterConditions();
        const int before = count("tblJobData");
        const QString volume = Driver::control<QLineEdit>("frmJobConditions", "txtTotSysFluid")->text();
        Driver::press("frmJobConditions", "cmdNext");
        if (Driver::isOpen("frmTankSeries")) {
            ASSERT_EQ(count("tblJobData"), before + 1);
            Connection user = openDatabase("User");
            Recordset tank;
            tank.Open("SELECT * FROM tblJobData ORDER BY rowid DESC", user);
            EXPECT_EQ(tank["TotSysVolume"].number(), parseNumber(volume.toStdString()).value_or(-1));
            EXPECT_LT(tank["SOPMin"].number(), tank["SOPMax"].number());
            EXPECT_LT(tank["SOTMin"].number(), tank["SOTMax"].number());
            EXPECT_GE(tank["SOTMin"].number(), 0);
            ++stored;
            Screens::unload("frmTankSeries");
        } else {
            ASSERT_EQ(count("tblJobData"), before);
        }
        closeErrors();
    }
    EXPECT_GT(stored, rounds / 12);
    EXPECT_EQ(count("tblJobHeader"), 1);
    expectSound();
}

TEST_F(BadInput, ShockAndPackagesStoreNumbersOrNothing) {
    Texts texts(103);
    Driver::command("mnuNewJob");
    Driver::enter("frmJobHeader", "txtJobID", "S");
    Driver::press("frmJobHeader", "cmdNext");
    Driver::press("frmClassSelect", "cmdSHK");
    const std::pair<const char*, const char*> sound[] = {
        {"PipeIndex", "2 in Sch 40"}, {"PipeLength", "200"},    {"FlowRate", "100"},
        {"FlowPressure", "40"},       {"StaticPressure", "60"}, {"ShockPressure", "150"}};
    int stored = 0;
    const int rounds = roundCount(120, 500);
    for (int i = 0; i < rounds; ++i) {
        if (!Driver::isOpen("frmJobConditionsSHK"))
            Screens::open("frmJobConditionsSHK");
        for (const auto& [box, good] : sound)
            Driver::enter("frmJobConditionsSHK", box, texts.below(4) == 0 ? texts.any() : QString(good));
        const int before = count("tblJobData");
        Driver::press("frmJobConditionsSHK", "cmdNext");
        // A line may be stored even though the search cannot compute with it.
        const bool saved =
            Driver::isOpen("frmtankselection") || Driver::report().contains("frmtankselection.FindSHKTanks");
        ASSERT_EQ(count("tblJobData"), before + (saved ? 1 : 0));
        stored += saved ? 1 : 0;
        Screens::unload("frmtankselection");
        closeErrors();
    }
    EXPECT_GT(stored, rounds / 10);
    Screens::unload("frmJobConditionsSHK");
    Screens::open("frmPKGSelect");
    for (int i = 0; i < rounds; ++i) {
        for (const char* box : {"txtModelNo", "txtQty", "txtSysPressure"})
            Driver::enter("frmPKGSelect", box, texts.any());
        const int before = count("tblJobData");
        Driver::press("frmPKGSelect", "bttnSave");
        ASSERT_LE(count("tblJobData"), before + 1);
        closeErrors();
    }
    expectSound();
}
