// Checks the catalogue's figures against the physics behind them.

#include "core/base/Applications.h"
#include "core/store/Database.h"
#include "tests/support/TemporaryHome.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
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

/// The program's formula for the factor above 200 psig.
double highPressureFactor(double staticPressure, double shockPressure) {
    const double rise = shockPressure - staticPressure;
    return (37.95 - rise * .0241) * rise - staticPressure * 7.24 - 234.1;
}

/// What the check says of a catalogue that it must reject.
QByteArray checked(const QString& catalogue, const QString& drawings) {
    QProcess check;
    check.start(QCoreApplication::applicationDirPath() + QLatin1String("/brennoval-check-data"),
                {catalogue, drawings});
    EXPECT_TRUE(check.waitForFinished());
    EXPECT_EQ(check.exitCode(), 1);
    return check.readAllStandardError();
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

TEST_F(CatalogueTest, PressureFactorsLeadIntoTheHighPressureFormula) {
    const int rows = forEach(QStringLiteral("SELECT * FROM tblPressureFactor"), [](Recordset& row) {
        const double shock = row[QStringLiteral("SOPMax")].number();
        for (int at = 20; at <= 110; at += 10) {
            // At or above the shock step: half a step of rise, halved again for each step of static pressure.
            const double upTo = at < shock ? shock : at + 5 * std::exp2((shock - at) / 10);
            // Above 150 psig drawn to the formula, which the row of 200 psig equals.
            const double share = std::max(0., (shock - 150) / 50);
            const double atSeam = highPressureFactor(at, 200) / gasEnergy(at, 200);
            EXPECT_NEAR(row[QString::number(at)].number(), gasEnergy(at, upTo) * std::pow(atSeam, share),
                        .006)
                << at << ' ' << shock;
        }
    });
    EXPECT_EQ(rows, 10);
}

TEST_F(CatalogueTest, TheManualPrintsThePressureFactors) {
    QFile file(QStringLiteral(SOURCE_FOLDER "/assets/Help/pressure-factors.html"));
    ASSERT_TRUE(file.open(QFile::ReadOnly));
    QString page = QString::fromUtf8(file.readAll());
    page.remove(QLatin1Char('\n'));
    forEach(QStringLiteral("SELECT * FROM tblPressureFactor"), [&](Recordset& row) {
        QString cells = "<tr><td>" + row["SOPMax"].text() + "</td>";
        for (int at = 20; at <= 110; at += 10)
            cells += "<td>" + QString::number(row[QString::number(at)].number(), 'f', 2) + "</td>";
        EXPECT_TRUE(page.contains(cells)) << cells.toStdString();
    });
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
        EXPECT_LE(sizes, 24) << series;
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
        {"tblPressureFactor SET [90] = 250 WHERE SOPMax = 100",
         "static 90: the factors do not rise at a shock pressure of 101"},
        {"tblPressureFactor SET [70] = 3959.47 WHERE SOPMax = 200",
         "static 70: the factors do not rise at a shock pressure of 201"},
        {"tblPressureFactor SET [20] = 5671.2 WHERE SOPMax = 200", "does not lead into the formula, 5671.26"},
        {"tblModelMaster SET TankVolume = 13.2 WHERE ModelDscrptn = 'RC 65'",
         "RC 85: more than 1.6 times the next smaller"},
        {"tblModelMaster SET TankVolume = .4 WHERE ModelDscrptn = 'SHK 35-2'", "printed as 0 gal"},
        {"tblModelMaster SET TankSysConn = .75 WHERE ModelDscrptn LIKE 'SHK 35-_'",
         "2 in Sch 80: gets a SHK 35-11 of"},
        {"tblModelMaster SET TankDraw = 'BOTTOM' WHERE ModelDscrptn = 'SHK 35'", "no 12-inch line"},
        {"tblModelMaster SET TankDraw = 'PKG1' WHERE ModelDscrptn = 'PKG 17-1T'",
         "does not show: each with its own pressure switch and gauge"},
        {"tblModelMaster SET SysConnType = 'Flanged, Class 150' WHERE ModelDscrptn = 'RCB 2000'",
         "is not of NPT"},
        {"tblModelMaster SET SysConnType = 'NPT' WHERE ModelDscrptn = 'RCB 2000'", "differ on the flange"},
        {"tblModelMaster SET TankDraw = 'TOP' WHERE ModelDscrptn = 'RCB 2000'",
         "its drawing does not show the flange"},
        {"tblRepMaster SET CompanyName = 'Pump && Tank' WHERE RepID = '3'", "a doubled ampersand"},
        {"tblSpecMaster SET Spec6 = 'The charge shall be set 2 psi below. ' || Spec6 WHERE Submittal = 'JW1'",
         "sets the charge 2 times"},
        {"tblSpecMaster SET LastLine = LastLine || '.' WHERE Submittal = 'RB1'", "without a representative"},
        {"tblSpecMaster SET LastLine = 'The basis of design is Brennoval. @Rep@' WHERE Submittal = 'RB1'",
         "without a representative"},
        {"tblSpecMaster SET Description1 = replace(Description1, 'gallons', 'litres') WHERE Submittal = 'G2'",
         "counts in litres"},
        {"tblSpecMaster SET Description1 = replace(Description1, '264', '265') WHERE Submittal = 'RCB3'",
         "RCB 1000: its description names sizes of 265 gallons and above"},
        {"tblTankDrawMaster SET Ext = 'png' WHERE TankDraw = 'PKG2'", "cannot be read"},
        {"tblTankDrawMaster SET X = 300 WHERE TankDraw = 'SHOCK'", "the proportions of its row"}};
    const QTemporaryDir folder;
    const QString program = QCoreApplication::applicationDirPath();
    for (const auto& one : cases) {
        const QString copy = folder.filePath(QLatin1String("copy.mdb"));
        QFile::remove(copy);
        ASSERT_TRUE(QFile::copy(program + QLatin1String("/Data/BrennovalSysData.mdb"), copy));
        change(copy, QLatin1String("UPDATE ") + QLatin1String(one.change));
        const QByteArray said = checked(copy, program + QLatin1String("/Drawings"));
        EXPECT_TRUE(said.contains(one.fault)) << one.change << ": " << said.toStdString();
    }
}

TEST_F(CatalogueTest, StopsTheBuildAtAFaultyDrawing) {
    const struct {
        const char* drawing;
        const char* element;
        const char* instead;
        const char* fault;
    } cases[] = {{"SHOCK", "id=\"main\" cx=\"44\"", "id=\"main\" cx=\"80\"",
                  "SHK 35-2: the main of its drawing is no"},
                 {"SHOCK", "r=\"28.7\"", "r=\"28\"", "SHK 2500: the main of its drawing is no 12-inch line"},
                 {"SHOCK", "id=\"companion-flange\"", "", "SHK 50: its drawing does not show the flange"},
                 {"PKG1", "volume-marks", "marks", "does not show: volume marks"},
                 {"PKG1", "lid", "cover", "does not show: a lid"},
                 {"PKG2", "float-switch", "float", "does not show: a float switch"},
                 {"PKG2", "strainer", "sieve", "does not show: a strainer"},
                 {"PKG2", "controls", "box", "does not show: raise an alarm"},
                 {"PKG3", "pressure-switch-2", "switch", "PKG 200-5T: its text demands"},
                 {"PKG3", "pressure-gauge-1", "gauge", "PKG 17-1T: its text demands"},
                 {"PKG4", "check-valve", "valve", "does not show: check valve"},
                 {"PKG4", "isolating-valve", "valve", "does not show: isolating valve"},
                 {"PKG4", "pressure-gauge", "gauge", "does not show: pressure gauge"},
                 {"PKG4", "pressure-switch", "switch", "does not show: an adjustable pressure switch"}};
    const QString program = QCoreApplication::applicationDirPath();
    for (const auto& one : cases) {
        const QTemporaryDir folder;
        const QDir drawings(program + QLatin1String("/Drawings"));
        for (const QString& name : drawings.entryList(QDir::Files))
            ASSERT_TRUE(QFile::copy(drawings.filePath(name), folder.filePath(name)));
        QFile file(folder.filePath(QLatin1String(one.drawing) + QLatin1String(".svg")));
        ASSERT_TRUE(file.open(QFile::ReadWrite));
        const QByteArray whole = file.readAll();
        ASSERT_TRUE(whole.contains(one.element)) << one.element;
        file.resize(0);
        file.seek(0);
        file.write(QByteArray(whole).replace(one.element, one.instead));
        file.close();
        const QByteArray said = checked(program + QLatin1String("/Data/BrennovalSysData.mdb"), folder.path());
        EXPECT_TRUE(said.contains(one.fault)) << one.element << ": " << said.toStdString();
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
