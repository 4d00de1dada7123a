// Checks the catalogue's figures against the physics behind them.

#include "core/base/Applications.h"
#include "core/store/Database.h"
#include "tests/support/TemporaryHome.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <QProcess>
#include <QTemporaryDir>

#include <cmath>
#include <numbers>

namespace {

constexpr double standardAtmosphere = 14.696; // psia
constexpr double gallonInCubicInches = 231;

class CatalogueTest : public testing::Test {
  protected:
    CatalogueTest() {
        catalogue.setProperty(QStringLiteral("Data Source"),
                              QCoreApplication::applicationDirPath() +
                                  QStringLiteral("/Data/BrennovalSysData.mdb"));
        catalogue.Open();
    }

    template<typename Body>
    int forEach(const QString& sql, Body body) {
        Recordset rows;
        int count = 0;
        for (rows.Open(sql, catalogue); !rows.atEnd(); rows.moveNext(), ++count)
            body(rows);
        return count;
    }

    double number(const QString& sql) {
        Recordset rows;
        rows.Open(sql, catalogue);
        return rows.atEnd() ? -1 : rows[QStringLiteral("V")].number();
    }

    Connection catalogue;
};

/// The density of water at one atmosphere in kg/m3 by Kell (1975), J. Chem. Eng. Data 20, 97; 0 to 150 °C.
double waterDensity(double fahrenheit) {
    const double t = (fahrenheit - 32) / 1.8;
    return (999.83952 + 16.945176 * t - 7.9870401e-3 * t * t - 46.170461e-6 * std::pow(t, 3) +
            105.56302e-9 * std::pow(t, 4) - 280.54253e-12 * std::pow(t, 5)) /
           (1 + 16.879850e-3 * t);
}

/// The net energy in foot-pounds that a cubic foot of gas absorbs from the static to the shock pressure
/// (psig).
double gasEnergy(double staticPressure, double shockPressure) {
    const double absolute = staticPressure + standardAtmosphere;
    const double r = (shockPressure + standardAtmosphere) / absolute;
    return 144 * absolute * (std::log(r) + 1 / r - 1);
}

void change(const QString& file, const QString& sql) {
    sqlite3* handle = nullptr;
    ASSERT_EQ(sqlite3_open(file.toUtf8().constData(), &handle), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(handle, sql.toUtf8().constData(), nullptr, nullptr, nullptr), SQLITE_OK)
        << sql.toStdString();
    EXPECT_GE(sqlite3_changes(handle), 1) << sql.toStdString();
    sqlite3_close(handle);
}

} // namespace

TEST_F(CatalogueTest, ExpansionOfWaterFollowsItsDensity) {
    const int rows =
        forEach(QStringLiteral("SELECT * FROM tblExpFactor ORDER BY SOTMax"), [](Recordset& row) {
            const double hot = row[QStringLiteral("SOTMax")].number();
            for (int cold = 40; cold <= 100; cold += 5) {
                const double expected = hot > cold ? waterDensity(cold) / waterDensity(hot) - 1 : 0;
                EXPECT_NEAR(row[QString::number(cold)].number(), expected, 6e-7) << cold << " to " << hot;
            }
        });
    EXPECT_EQ(rows, 41);
}

TEST_F(CatalogueTest, PressureFactorsMeetTheHighPressureFormula) {
    const int rows = forEach(QStringLiteral("SELECT * FROM tblPressureFactor"), [](Recordset& row) {
        const double shock = row[QStringLiteral("SOPMax")].number();
        for (int at = 20; at <= 110; at += 10) {
            // At or above the shock step: half a step of rise, halved again for each step of static pressure.
            const double upTo = at < shock ? shock : at + 5 * std::exp2((shock - at) / 10);
            EXPECT_NEAR(row[QString::number(at)].number(), gasEnergy(at, upTo), .006) << at << ' ' << shock;
        }
    });
    EXPECT_EQ(rows, 10);
    for (const int at : {20, 60, 70, 80, 90, 100, 110}) {
        const double rise = 200 - at;
        const double formula = (37.95 - rise * .0241) * rise - at * 7.24 - 234.1;
        const double table =
            number(QStringLiteral("SELECT [%1] AS V FROM tblPressureFactor WHERE SOPMax = 200").arg(at));
        EXPECT_NEAR(formula / table, 1, at == 20 ? .20 : .06) << at;
    }
}

TEST_F(CatalogueTest, PipeFactorGivesGallons) {
    const int rows = forEach(QStringLiteral("SELECT * FROM tblPipeMaster"), [](Recordset& row) {
        const double bore = row[QStringLiteral("ID")].number();
        const double gallonsPerFoot = std::numbers::pi / 4 * bore * bore * 12 / gallonInCubicInches;
        EXPECT_NEAR(row[QStringLiteral("TransArea")].number() * .0043 / gallonsPerFoot, 1, 1e-3)
            << row[QStringLiteral("PipeIndex")].text().toStdString();
    });
    EXPECT_EQ(rows, 42);
}

TEST_F(CatalogueTest, NamesTheApplicationsAsTheProgramDoes) {
    std::size_t known = 0;
    const int listed = forEach("SELECT App, Description FROM tblAppMaster", [&](Recordset& row) {
        const auto application = applicationCoded(row["App"].text().toStdString());
        ASSERT_TRUE(application) << row["App"].text().toStdString();
        EXPECT_EQ(row["Description"].text().toStdString(), infoOf(*application).name);
        ++known;
    });
    EXPECT_EQ(known, allApplications.size()) << listed;
}

TEST_F(CatalogueTest, HasEverySeriesInItsRange) {
    const struct {
        const char* series;
        const char* first;
        const char* last;
    } ranges[] = {
        {"RCB", "RCB 35", "RCB 15000"}, {"RCB", "RCB 800L", "RCB 1000"}, {"RCBD", "RCBD 40", "RCBD 1100"},
        {"RHB", "RHB 85", "RHB 15000"}, {"RGB", "RGB 15", "RGB 280"},    {"RB", "12RB33", "42RB96"},
        {"GGB", "GGB 5", "GGB 210"},    {"GWB", "GWB 35", "GWB 2000"},   {"JW", "JW 8", "JW 2000V"},
        {"JWG", "JWG 400", "JWG 480"},  {"JWB", "JWB 35", "JWB 15000"},  {"JWB", "JWB 600", "JWB 800"},
        {"SHK", "SHK 35", "SHK 2500"}};
    for (const auto& range : ranges)
        for (const char* model : {range.first, range.last})
            EXPECT_EQ(
                number(
                    QStringLiteral(
                        "SELECT COUNT(*) AS V FROM tblModelMaster WHERE Class = '%1' AND ModelDscrptn = '%2'")
                        .arg(QLatin1String(range.series), QLatin1String(model))),
                1)
                << model;
    for (const char* series : {"R", "RCBD", "RC", "RB", "RGB", "RCB", "RHB", "GWB", "GGB", "GW", "G", "JW",
                               "JWB", "JWG", "SHK", "PKG", "PKGD", "PKGT", "FDM"}) {
        const double sizes =
            number(QStringLiteral("SELECT COUNT(*) AS V FROM tblModelMaster WHERE Class = '%1'")
                       .arg(QLatin1String(series)));
        EXPECT_GE(sizes, 8) << series;
        EXPECT_LE(sizes, 20) << series;
    }
    for (const char* key :
         {"R1",   "R2",   "RC1", "G1",   "G2",   "GW1",  "RCB1", "RCB3", "RCBD1", "RHB1", "RGB1", "RB1",
          "GGB1", "GWB1", "JW1", "JWG1", "JWB1", "JWB3", "JWB4", "SHK1", "PKG1",  "PKG2", "PKG3", "PKG4"})
        EXPECT_EQ(number(QStringLiteral("SELECT COUNT(*) AS V FROM tblSpecMaster WHERE Submittal = '%1'")
                             .arg(QLatin1String(key))),
                  1)
            << key;
}

TEST_F(CatalogueTest, StopsTheBuildAtAFault) {
    const struct {
        const char* change;
        const char* fault;
    } cases[] = {
        {"tblModelMaster SET OAL = OAL + 20 WHERE ModelDscrptn = 'SHK 2500'", "its shape is off by"},
        {"tblModelMaster SET ShipWeight = 600 WHERE ModelDscrptn = 'RCB 1000'", "its weight is off by"},
        {"tblModelMaster SET TankDraw = 'PLAIN' WHERE ModelDscrptn = 'RCB 800L'", "welded steel ring base"},
        {"tblModelMaster SET TankDraw = 'BOTTOM' WHERE ModelDscrptn = 'RCBD 85'", "at the bottom"},
        {"tblModelMaster SET ASME = 0 WHERE ModelDscrptn = 'GGB 50'",
         "GGB 50: its text says 1 times, not 0: code"},
        {"tblModelMaster SET TankDraw = 'DIAPHRAGM', Submittal = 'R1' WHERE ModelDscrptn = 'R 200'",
         "hangs from the piping with"},
        {"tblModelMaster SET SysConnStd = '1-1/2\"' WHERE ModelDscrptn = 'RHB 85'", "its connection is"},
        {"tblModelMaster SET TankVolume = 115 WHERE ModelDscrptn = 'JW 450'", "its volume in litres"},
        {"tblModelMaster SET TankVolume = 80 WHERE ModelDscrptn = 'JWG 440'",
         "does not rise with its number"},
        {"tblModelMaster SET PumpHp = 1.5 WHERE ModelDscrptn = 'PKG 100-5D'", "an efficiency of 13.6 %"},
        {"tblModelMaster SET TankWkPressure = 65 WHERE ModelDscrptn = 'PKG 17-1T'",
         "60 psi in another package"},
        {"tblModelMaster SET MakeUpCapacity = 2 WHERE ModelDscrptn = 'PKG 30-1D'", "the flow of one pump"},
        {"tblModelMaster SET TankOD = 50 WHERE ModelDscrptn = 'PKG 30-1'", "its drawing's proportion"},
        {"tblPressureFactor SET [110] = 0 WHERE SOPMax = 100", "pressure factors of a row"},
        {"tblPressureFactor SET [90] = 250 WHERE SOPMax = 100", "do not rise with the shock pressure"},
        {"tblSpecMaster SET Spec6 = 'The charge shall be set 2 psi below. ' || Spec6 WHERE Submittal = 'JW1'",
         "sets the charge 2 times"},
        {"tblSpecMaster SET LastLine = LastLine || '.' WHERE Submittal = 'RB1'", "without a representative"},
        {"tblTankDrawMaster SET Ext = 'png' WHERE TankDraw = 'PKG2'", "cannot be read"},
        {"tblTankDrawMaster SET X = 300 WHERE TankDraw = 'SHOCK'", "the proportions of its row"}};
    const QTemporaryDir folder;
    const QString program = QCoreApplication::applicationDirPath();
    for (const auto& one : cases) {
        const QString copy = folder.filePath(QLatin1String("copy.mdb"));
        QFile::remove(copy);
        ASSERT_TRUE(QFile::copy(program + QLatin1String("/Data/BrennovalSysData.mdb"), copy));
        change(copy, QLatin1String("UPDATE ") + QLatin1String(one.change));
        QProcess check;
        check.start(program + QLatin1String("/brennoval-check-data"),
                    {copy, program + QLatin1String("/Drawings")});
        ASSERT_TRUE(check.waitForFinished());
        EXPECT_EQ(check.exitCode(), 1) << one.change;
        const QByteArray said = check.readAllStandardError();
        EXPECT_TRUE(said.contains(one.fault)) << one.change << ": " << said.toStdString();
    }
}

TEST_F(CatalogueTest, KnowsAllPostalCodesOfItsPrefixes) {
    EXPECT_GT(number(QStringLiteral("SELECT COUNT(*) AS V FROM tblPostalCodes")), 90000);
    for (const char* code : {"00501", "10001", "43055", "99950", "CAN", "HOME"})
        EXPECT_EQ(number(QStringLiteral("SELECT COUNT(*) AS V FROM tblPostalCodes WHERE PostalCode = '%1'")
                             .arg(QLatin1String(code))),
                  1)
            << code;
    EXPECT_EQ(number(QStringLiteral("SELECT COUNT(*) AS V FROM tblPostalCodes WHERE PostalCode = '00000'")),
              0);
}
