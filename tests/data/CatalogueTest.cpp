// The catalogue's figures against the physics that they come from.

#include "core/store/Database.h"
#include "tests/support/TemporaryHome.h"

#include <gtest/gtest.h>

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
        for (rows.Open(sql, catalogue); !rows.AtEnd(); rows.MoveNext(), ++count)
            body(rows);
        return count;
    }

    double number(const QString& sql) {
        Recordset rows;
        rows.Open(sql, catalogue);
        return rows.AtEnd() ? -1 : rows[QStringLiteral("V")].number();
    }

    Connection catalogue;
};

/// Density of water at one atmosphere in kg/m3 by Kell (1975), J. Chem. Eng. Data 20, 97; 0 to 150 °C.
double waterDensity(double fahrenheit) {
    const double t = (fahrenheit - 32) / 1.8;
    return (999.83952 + 16.945176 * t - 7.9870401e-3 * t * t - 46.170461e-6 * std::pow(t, 3) +
            105.56302e-9 * std::pow(t, 4) - 280.54253e-12 * std::pow(t, 5)) /
           (1 + 16.879850e-3 * t);
}

/// Net energy in foot pounds that a cubic foot of gas takes up from the static to the shock pressure (psig).
double gasEnergy(double staticPressure, double shockPressure) {
    const double absolute = staticPressure + standardAtmosphere;
    const double r = (shockPressure + standardAtmosphere) / absolute;
    return 144 * absolute * (std::log(r) + 1 / r - 1);
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
        for (int at = 20; at <= 110; at += 10)
            EXPECT_NEAR(row[QString::number(at)].number(), at < shock ? gasEnergy(at, shock) : 0, .006);
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

TEST_F(CatalogueTest, ShellsHoldTheirVolume) {
    forEach(QStringLiteral("SELECT * FROM tblModelMaster WHERE App <> 'PKG'"), [](Recordset& row) {
        const double diameter = row[QStringLiteral("TankOD")].number();
        const double length = row[QStringLiteral("OAL")].number();
        const double volume = row[QStringLiteral("TankVolume")].number() * gallonInCubicInches;
        const double cylinder = std::numbers::pi / 4 * diameter * diameter * length;
        // Heads, wall, base and nozzles take a share of the cylinder around the tank, never more than half.
        EXPECT_LT(volume, cylinder) << row[QStringLiteral("ModelDscrptn")].text().toStdString();
        EXPECT_GT(volume, cylinder * .5) << row[QStringLiteral("ModelDscrptn")].text().toStdString();
    });
}

TEST_F(CatalogueTest, NamesTellNominalLitres) {
    forEach(QStringLiteral("SELECT * FROM tblModelMaster WHERE App <> 'PKG' AND Class <> 'RB'"),
            [](Recordset& row) {
                const QString name = row[QStringLiteral("ModelDscrptn")].text();
                QString litres = name.section(u' ', 1);
                litres.remove(u'L').remove(u'V');
                EXPECT_NEAR(row[QStringLiteral("TankVolume")].number() * 3.785411784, litres.toDouble(), .2)
                    << name.toStdString();
            });
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
    for (const char* key : {"RCB1", "RCB3", "RCBD1", "RHB1", "RGB1", "RB1", "GGB1", "GWB1", "JW1", "JWG1",
                            "JWB1", "JWB3", "JWB4", "SHK1", "PKG1", "PKG2", "PKG3", "PKG4"})
        EXPECT_EQ(number(QStringLiteral("SELECT COUNT(*) AS V FROM tblSpecMaster WHERE Submittal = '%1'")
                             .arg(QLatin1String(key))),
                  1)
            << key;
}

TEST_F(CatalogueTest, PumpsDoTheirWorkAtASaneEfficiency) {
    forEach(QStringLiteral("SELECT * FROM tblModelMaster WHERE App = 'PKG'"), [](Recordset& row) {
        const int pumps = row[QStringLiteral("Class")].text() == u"PKGD" ? 2 : 1;
        const double hydraulic = row[QStringLiteral("MakeUpCapacity")].number() *
                                 row[QStringLiteral("TankWkPressure")].number() / 1714;
        const double efficiency = hydraulic / row[QStringLiteral("PumpHp")].number();
        EXPECT_GT(efficiency, .1) << row[QStringLiteral("ModelDscrptn")].text().toStdString() << pumps;
        EXPECT_LT(efficiency, .5) << row[QStringLiteral("ModelDscrptn")].text().toStdString();
    });
}

TEST_F(CatalogueTest, ShipsEveryDrawing) {
    const int drawings = forEach(QStringLiteral("SELECT * FROM tblTankDrawMaster"), [](Recordset& row) {
        EXPECT_TRUE(QFile::exists(QCoreApplication::applicationDirPath() + QStringLiteral("/Drawings/") +
                                  row[QStringLiteral("TankDraw")].text() + u'.' +
                                  row[QStringLiteral("Ext")].text()));
    });
    EXPECT_EQ(drawings, 12);
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
