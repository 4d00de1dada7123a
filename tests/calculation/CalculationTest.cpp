// The calculation sheet, worked through from its text export.

#include "calculation/CalculationSheet.h"
#include "calculation/Formulas.h"
#include "calculation/PressureCurve.h"
#include "core/base/Numbers.h"
#include "core/store/Catalogue.h"
#include "core/store/Gateway.h"
#include "core/store/JobHeader.h"
#include "core/store/SessionStore.h"
#include "core/store/TankLine.h"
#include "documents/Documents.h"
#include "documents/export/Export.h"
#include "documents/report/Formula.h"
#include "documents/report/Reports.h"
#include "shock/ShockSizing.h"
#include "sizing/CatalogueSearch.h"
#include "sizing/TankSizing.h"
#include "tests/calculation/SheetReader.h"
#include "tests/support/Properties.h"
#include "tests/support/Rounds.h"
#include "tests/support/TemporaryHome.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QDir>
#include <QFont>
#include <QFontMetricsF>
#include <QRegularExpression>
#include <QSvgRenderer>

#include <random>

using namespace Gateway;

namespace {

class CalculationSheet : public testing::Test {
  protected:
    CalculationSheet() {
        registerDocuments();
        registerCalculation();
        home.installData();
        execute("User", "INSERT INTO tblJobHeader (JobID) VALUES ('J')");
        Session::TankID.write("J.1");
    }

    static void store(TankLine line) {
        line.tankID = "J.1";
        line.tankNo = 1;
        if (!line.jobID)
            line.jobID = "J";
        execute("User", "DELETE FROM tblJobData");
        const Connection user = openDatabase("User");
        Recordset rows;
        rows.Open("tblJobData", user, CursorType::Keyset, CommandType::Table);
        rows.AddNew();
        Record::write(rows, line, TankLine::all());
        rows.Update();
    }

    static Document document() { return Report(*findReport("rptCalculation")).Run(); }

    static QString exported() {
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        Export::text(document(), buffer);
        return QString::fromUtf8(buffer.data());
    }

    TemporaryHome home;
};

/// Sizes a line as the screens do, and takes the first option.
TankLine sized(TankLine line, Application application, const QString& series) {
    line.tankClass = series;
    const bool conversion = line.jobID == Records::reservedJob();
    const RequiredSizes sizes = conversion ? convertedTankSizes(TankSizing::conditionsOf(line))
                                           : TankSizing::sizesOf(line, application, series);
    line.requiredVolume = sizes.volume;
    line.requiredAcceptance = sizes.acceptance;
    const auto options = conversion ? findConvertedModels(series, sizes.volume)
                                    : findModels(series, sizes.volume, sizes.acceptance);
    if (!options.empty()) {
        line.qty = options.front().quantity;
        line.modelNo = QString::fromStdString(options.front().model);
    }
    return line;
}

TankLine sizedShock(TankLine line) {
    constexpr int decimals = 8;
    const ShockConditions conditions = ShockSizing::conditionsOf(line);
    const ShockSizes sizes = computeShockSizes(
        conditions, ShockSizing::pressureFactor(shockPressureBand(conditions.shockPressure),
                                                staticPressureBand(conditions.staticPressure)));
    line.tankClass = "SHK";
    line.waterVelocity = Round(sizes.waterVelocity, decimals);
    line.kineticEnergy = Round(sizes.kineticEnergy, decimals);
    line.totalKineticEnergy = Round(sizes.totalKineticEnergy, decimals);
    line.requiredVolume = Round(sizes.requiredVolume, decimals);
    line.requiredAcceptance = Round(sizes.requiredAcceptance, decimals);
    const auto options = findShockModels("SHK", *line.requiredVolume, conditions.bore);
    if (options.empty())
        return line;
    const TankOption& option = options.front();
    line.qty = option.quantity;
    line.modelNo = QString::fromStdString(option.model);
    const double acceptance = shockAcceptanceFactor(conditions.flowPressure, conditions.staticPressure,
                                                    conditions.atmosphericPressure);
    line.leakLoad = Round(LeakLoad(acceptance, option.tankVolume, option.quantity, conditions.length,
                                   pipeArea(conditions.bore)) *
                              100,
                          1) /
                    100;
    line.pumpRunTime =
        Round(pumpStartupDelay(acceptance, option.tankVolume, option.quantity, conditions.flowRate), 1);
    return line;
}

/// The conditions of a line; temperatures and fluid only where there are any.
TankLine conditionsOf(double volume, double minimum, double maximum, const char* fluid = nullptr,
                      double cold = 0, double hot = 0) {
    TankLine line;
    line.atmPressure = 14.7;
    line.totSysVolume = volume;
    line.sopMin = minimum;
    line.sopMax = maximum;
    if (!fluid)
        return line;
    line.sysFluidType = fluid;
    line.sotMin = cold;
    line.sotMax = hot;
    return line;
}

/// Conditions of a shock arrestor on a pipe of 4 inches.
TankLine shockConditions() {
    TankLine line;
    line.atmPressure = 14.7;
    line.pipeIndex = "4 in Sch 40";
    line.pipeLength = 350;
    line.flowRate = 260;
    line.flowPressure = 45;
    line.staticPressure = 65;
    line.shockPressure = 150;
    return line;
}

/// Random lines of every kind.
class Lines {
  public:
    static TankLine next() {
        switch (below(5)) {
        case 0:
            return sized(conditions(fluid()), Application::Expansion,
                         oneOf({"RCB", "R", "RC", "RB", "RCBD"}));
        case 1:
            return sized(conditions("Water"), Application::Thermal, oneOf({"GWB", "GGB", "GW", "G"}));
        case 2: {
            TankLine line = conditions({});
            line.sotMin = line.sotMax = std::nullopt;
            line.sysFluidType = std::nullopt;
            return sized(line, Application::Hydropneumatic, oneOf({"JW", "JWB", "JWG"}));
        }
        case 3: {
            TankLine line;
            line.jobID = Records::reservedJob();
            line.atmPressure = decimal(11, 15);
            line.sopMin = decimal(5, 60);
            line.totSysVolume = decimal(20, 900);
            return sized(line, Application::Expansion, oneOf({"RCBD", "RCB"}));
        }
        default:
            return shock();
        }
    }

  private:
    static int below(int limit) { return drawBelow(0, limit); }
    static QString oneOf(const QStringList& all) { return all[below(int(all.size()))]; }
    /// With up to two decimals.
    static double decimal(int low, int high) { return (low * 100 + below((high - low) * 100)) / 100.0; }
    static QString fluid() {
        return oneOf({"Water", "10% Ethylene Glycol", "20% Ethylene Glycol", "30% Ethylene Glycol",
                      "40% Ethylene Glycol", "50% Ethylene Glycol", "10% Propylene Glycol",
                      "20% Propylene Glycol", "30% Propylene Glycol", "40% Propylene Glycol",
                      "50% Propylene Glycol"});
    }

    static TankLine conditions(const QString& fluidName) {
        TankLine line;
        line.sysFluidType = fluidName;
        line.sotMin = 40 + below(50);
        line.sotMax = 100 + below(140);
        line.sopMin = decimal(5, 60);
        line.sopMax = Round(*line.sopMin + decimal(4, 60), 2);
        line.atmPressure = decimal(10, 15);
        line.totSysVolume = decimal(1, 3000);
        return line;
    }

    static TankLine shock() {
        TankLine line;
        line.atmPressure = decimal(12, 15);
        static const std::vector<Catalogue::PipeSize> pipes = Catalogue::pipesOf("40");
        line.pipeIndex = pipes[std::size_t(below(int(pipes.size())))].pipeIndex;
        line.pipeLength = decimal(20, 500);
        line.flowRate = decimal(5, 200);
        line.flowPressure = decimal(20, 50);
        line.staticPressure = Round(*line.flowPressure + decimal(5, 50), 2);
        line.shockPressure = below(2) == 0 ? decimal(115, 180) : decimal(191, 250);
        return sizedShock(line);
    }
};

bool near(double one, double other, double relative) {
    return std::abs(one - other) <= relative * std::max(std::abs(one), std::abs(other));
}

} // namespace

TEST_F(CalculationSheet, CanBeWorkedThroughByHand) {
    const int rounds = roundCount(250, 1000);
    int worked = 0;
    expectForAll(rounds, [&worked] {
        const TankLine line = Lines::next();
        store(line);
        const QString text = exported();
        const SheetReader sheet(text);
        RC_LOG() << text.toStdString() << '\n';
        RC_ASSERT_FALSE(text.contains("Check first"));
        for (const QString& caption : sheet.captions())
            for (const double part : sheet.parts(caption)) {
                RC_LOG() << caption.toStdString() << ' ' << part << '\n';
                RC_ASSERT(near(part, sheet.result(caption), 2e-11));
                ++worked;
            }
        const bool shock = line.tankClass == "SHK";
        const struct {
            const char* caption;
            std::optional<double> stored;
        } stored[] = {
            {"System volume", shock || !line.sotMin ? std::nullopt : line.totSysVolume},
            {"Minimum temperature", line.sotMin},
            {"Maximum temperature", line.sotMax},
            {"Minimum operating pressure", line.sopMin},
            {"Maximum operating pressure", line.sopMax},
            {"Atmospheric pressure", line.atmPressure},
            {"Length of the pipe", line.pipeLength},
            {"Flow rate", line.flowRate},
            {"Flow pressure", line.flowPressure},
            {"Static pressure", line.staticPressure},
            {"Shock pressure", line.shockPressure},
            {"Water velocity", line.waterVelocity},
            {"Kinetic energy", line.kineticEnergy},
            {"Total kinetic energy", line.totalKineticEnergy},
            {"Required volume", line.requiredVolume},
            {"Required acceptance", line.sopMin && !line.sopMax ? std::nullopt : line.requiredAcceptance},
            {"Leak load", line.leakLoad ? std::optional(Round(*line.leakLoad * 100, 6)) : std::nullopt},
            {"Pump startup delay", line.pumpRunTime},
        };
        const double share = shock ? 1e-11 : 0; // shock figures are stored with eight decimals
        for (const auto& figure : stored) {
            if (!figure.stored)
                continue;
            RC_LOG() << figure.caption << '\n';
            RC_ASSERT(std::abs(sheet.result(figure.caption) - *figure.stored) <=
                      (shock ? .51e-8 : 0) + share * *figure.stored);
        }
    });
    EXPECT_GT(worked, rounds * 5);
}

TEST_F(CalculationSheet, ShowsTheExamplesOfTheManual) {
    const TankLine glycol = conditionsOf(1000, 12, 30, "30% Propylene Glycol", 50, 200);
    const TankLine water = conditionsOf(1000, 12, 30, "Water", 45, 178);
    const TankLine thermal = conditionsOf(200, 55, 100, "Water", 50, 140);
    TankLine steel = conditionsOf(500, 20, 0);
    steel.jobID = Records::reservedJob();
    steel.sopMax = std::nullopt;
    const TankLine byTable = shockConditions();
    const struct {
        TankLine line;
        QStringList texts;
    } examples[] = {
        {sized(glycol, Application::Expansion, "RCB"),
         {"v_min = A × T_min^2 + B × T_min + C", "= 1.0070725", "= 1.05589", "= 0.04847", "= 26.7 psia",
          "= 44.7 psia", "= 0.4027", "= 48.47 gal", "= 120.3626 gal", "1 × RCB 500",
          "= round((1 × 132.1 / 120.3626 − 1) × 100, 1)", "12 psig (82.737 kPa), measured at the tank",
          "1 × acceptance ≥ 48.47 gal, 1 × volume"}},
        {sized(glycol, Application::Expansion, "RB"),
         {"= 0.2217", "= 218.6288 gal", "1 × 30RB90", "None: the tank is plain steel"}},
        {sized(water, Application::Expansion, "RCB"),
         {"E = 0.030389", "column 45 °F, row 180 °F", "= 30.389 gal", "= 75.4631 gal", "1 × RCB 300"}},
        {sized(thermal, Application::Thermal, "GGB"),
         {"E = 0.016783", "= 3.3566 gal", "= 8.5562 gal", "1 × GGB 35"}},
        {sized(conditionsOf(50, 40, 60), Application::Hydropneumatic, "JWB"),
         {"= 0.2677", "= 50 gal", "= 186.7762 gal", "1 × JWB 800, 2 × JWB 400", "start the pump at 40 psig"}},
        {sized(steel, Application::Expansion, "RCBD"),
         {"max(round(211.81556196, 0), 0.1)", "= 212 gal", "1 × RCBD 1100, 2 × RCBD 450", "20 psig"}},
        {sized(steel, Application::Expansion, "RB"),
         {"holds for a tank that is charged to the minimum pressure, which a plain steel tank is not",
          "The size above is for one that is charged to 20 psig"}},
        {sized(conditionsOf(52, 12, 12.01, "Water", 45, 178), Application::Expansion, "RCB"),
         {"= 0.0004", "1 × RCB 15000", "= 0.3 %", "= −6.1 %",
          "Between the pressures the chosen tanks take 1.4836 gal, but 1.5802 gal are required."}},
        {sizedShock(byTable),
         {"6.56068392", "row 150 psig, column 70 psig", "F = 2186.66", "0.3074027", "4.5576010", "14.826155",
          "connection ≥ 1.8922", "1 × SHK 65", "= 2.3 %", "= 1.2 s", "40.5 psig"}},
    };
    for (const auto& example : examples) {
        store(example.line);
        const SheetReader sheet(exported());
        for (const QString& text : example.texts)
            EXPECT_TRUE(sheet.whole.contains(text)) << text.toStdString() << " in\n"
                                                    << sheet.whole.toStdString();
        EXPECT_FALSE(sheet.whole.contains("Check first")) << sheet.whole.toStdString();
    }
}

TEST_F(CalculationSheet, SaysFirstWhatDoesNotAgree) {
    const TankLine good = sized(conditionsOf(1000, 12, 30, "Water", 45, 178), Application::Expansion, "RCB");
    const struct {
        const char* what;
        void (*spoil)(TankLine&);
        const char* warning; // in the colour of errors; a note otherwise
        const char* note;
    } cases[] = {
        {"stored volume", [](TankLine& line) { line.requiredVolume = 70; },
         "The stored required volume is 70 gal, but the stored conditions and this catalogue give 75.4631 "
         "gal.",
         ""},
        {"no acceptance", [](TankLine& line) { line.requiredAcceptance = std::nullopt; },
         "The line has no required acceptance; its conditions give 30.389 gal.", ""},
        {"model gone", [](TankLine& line) { line.modelNo = "RCB 7"; },
         "The model RCB 7 is not in the catalogue.", ""},
        {"not offered", [](TankLine& line) { line.qty = 5; }, "5 × RCB 300, is none of those", ""},
        {"no span", [](TankLine& line) { line.sopMax = 12; },
         "The stored conditions cannot be computed: Division by zero.",
         "As stored with the line, because they could not be computed."},
        {"upside down", [](TankLine& line) { line.sopMin = 31; }, "The stored required volume",
         "The minimum pressure of 31 psig is not below the maximum of 30 psig."},
        {"below the atmosphere", [](TankLine& line) { line.sopMin = -2; }, "The stored required volume",
         "None: -2 psig"},
        {"little span", [](TankLine& line) { line.sopMax = 12.2; }, "The stored required volume",
         "accepts less than a twentieth"},
        {"too small", [](TankLine& line) { line.modelNo = "RCB 35"; }, "is none of those",
         "have 9.2 gal of volume, but 75.4631 gal are required."},
        {"by both sizes", [](TankLine& line) { line.modelNo = "RCB 35"; }, "is none of those",
         "have 9.2 gal of acceptance, but 30.389 gal are required."},
        {"no quantity", [](TankLine& line) { line.qty = std::nullopt; }, "",
         "There is no number of tanks with the model RCB 300."},
        {"pressure", [](TankLine& line) { line.sopMax = 160; }, "The stored required volume",
         "above the model's working pressure of 125 psig"},
        {"temperature", [](TankLine& line) { line.sotMax = 245; }, "The stored required",
         "above the model's rating of 240 °F"},
        {"atmosphere", [](TankLine& line) { line.atmPressure = 147; }, "The stored required",
         "between 8 and 15.5 psia"},
        {"not stored", [](TankLine& line) { line.sopMin = std::nullopt; }, "The stored required",
         "Not stored; it counts as 0."},
        {"volume", [](TankLine& line) { line.totSysVolume = 0; }, "The stored required",
         "The volume is 0 gal"},
        {"series", [](TankLine& line) { line.tankClass = "RC"; }, "is none of those",
         "is not of the series RC"},
    };
    for (const auto& one : cases) {
        TankLine line = good;
        one.spoil(line);
        store(line);
        bool red = false;
        const Document sheet = document();
        for (const PageText& text : sheet.pages.first().texts)
            red = red || (text.style->color == QColor(0xb3261e) && text.plain().contains(one.warning));
        EXPECT_TRUE(red || QLatin1String(one.warning).isEmpty()) << one.what;
        const QString whole = SheetReader(exported()).whole;
        EXPECT_TRUE(whole.contains(one.note)) << one.what << '\n' << whole.toStdString();
        EXPECT_LT(whole.indexOf("Check first"), whole.indexOf("Conditions")) << one.what;
    }
}

TEST_F(CalculationSheet, OfAShockLineWithoutFlowSaysSo) {
    TankLine line = sizedShock(shockConditions());
    line.flowRate = 0;
    line.staticPressure = 44;
    store(line);
    const QString whole = SheetReader(exported()).whole;
    for (const char* text :
         {"Leak load and pump startup delay cannot be computed: Division by zero.", "1 × SHK 65",
          "The flow pressure of 45 psig is not below the static pressure of 44 psig."})
        EXPECT_TRUE(whole.contains(text)) << text << '\n' << whole.toStdString();
}

TEST(PressureCurve, FollowsBoyle) {
    const PressureCurve curve{.tankVolume = 100,
                              .atmosphericPressure = 15,
                              .emptyPressure = 15,
                              .minimumPressure = 15,
                              .maximumPressure = 45,
                              .workingPressure = 125,
                              .requiredAcceptance = 40};
    EXPECT_DOUBLE_EQ(pressureOverWater(curve, 0), 15);
    EXPECT_DOUBLE_EQ(pressureOverWater(curve, 50), 45);
    EXPECT_DOUBLE_EQ(waterAtPressure(curve, 45), 50);
    EXPECT_TRUE(QSvgRenderer(curvePicture(curve)).isValid());
    EXPECT_EQ(
        curveInWords(curve).toStdString(),
        "Pressure over water in the tanks: 15 psig without water, 15 psig at the minimum and 45 psig at the "
        "maximum. Between the two the tanks take 50 gal; required are 40 gal. The working pressure of the "
        "model is 125 psig.");
    PressureCurve upsideDown = curve;
    upsideDown.maximumPressure = 15;
    EXPECT_FALSE(canBeDrawn(upsideDown));
}

TEST(PressureCurve, KeepsItsNamesApart) {
    static const QRegularExpression written(
        R"re(<text [^>]*text-anchor="start" x="([0-9.]+)" y="([0-9.]+)">([^<]*)</text>)re");
    QFont font("Liberation Sans");
    font.setPixelSize(80);
    const QFontMetricsF metrics(font); // of ten times the size, which leaves no rounding
    std::mt19937 random(7);
    const auto between = [&](int low, int high) {
        return double(std::uniform_int_distribution(low, high)(random));
    };
    for (int round = 0; round < 2000; ++round) {
        PressureCurve curve;
        curve.tankVolume = between(2, 4000);
        curve.atmosphericPressure = 14.7;
        curve.emptyPressure = curve.minimumPressure = between(4, 280);
        curve.maximumPressure = curve.minimumPressure + between(1, 60);
        curve.workingPressure = between(75, 300);
        curve.requiredAcceptance = curve.tankVolume * between(1, 60) / 100;
        if (round % 3 == 0)
            curve.marks = {{between(1, 280), "flow pressure"}, {between(115, 300), "shock pressure"}};
        curve.tankAcceptance = between(0, 1) * curve.tankVolume * between(20, 100) / 100;
        QList<QRectF> names;
        const QString svg = QString::fromUtf8(curvePicture(curve));
        for (auto matches = written.globalMatch(svg); matches.hasNext();) {
            const auto match = matches.next();
            const double width = metrics.horizontalAdvance(match.captured(3)) / 10;
            const QRectF name(match.captured(1).toDouble(), match.captured(2).toDouble() - 5.6, width, 7);
            for (const QRectF& other : names)
                ASSERT_FALSE(name.intersects(other)) << svg.toStdString();
            ASSERT_LT(name.right(), 536) << svg.toStdString();
            names.append(name);
        }
        ASSERT_GE(names.size(), 5) << svg.toStdString(); // the axis, three levels, the required water
    }
}

TEST(Formula, IsSetAsAPictureAndInWords) {
    for (const Formulas::Row& row : Formulas::all()) {
        const Formula::Picture picture = Formula::picture(QString::fromUtf8(row.text), 9, 300);
        EXPECT_TRUE(QSvgRenderer(picture.svg).isValid()) << row.name;
        EXPECT_LE(picture.size.width(), 300) << row.name;
    }
    const auto height = [](const char* text) { return Formula::picture(text, 10, 300).size.height(); };
    EXPECT_GT(height("a / b"), height("a * b") * 1.5) << "a fraction bar";
    EXPECT_GT(height("a^b^c"), height("a^b")) << "a power of a power";
    EXPECT_EQ(Formula::picture("(a + b) / c", 10, 300).svg.count("path"), 1) << "brackets over a bar go";
    EXPECT_EQ(Formula::inWords("V_req = V * E - 2 \"gal\"").toStdString(), "V_req = V × E − 2 gal");
    const QString chain = "V_req = 1 + 2 + 3 + 4 = 5 + 5 + 5 + 5 = 20 \"gal\"";
    EXPECT_GT(Formula::picture(chain, 10, 120).size.height(),
              2 * Formula::picture(chain, 10, 400).size.height());
    EXPECT_EQ(Formula::linesInWords(chain, 10, 100).size(), 3);
    for (const char* bad : {"a = ", "a = (b", "a = b)", "a = \"gal", "a ! b", "a = b + * c"})
        EXPECT_THROW((void)Formula::picture(bad, 9, 300), std::runtime_error) << bad;
}

TEST(Formula, IsTheSameInTheManual) {
    static const QRegularExpression picture(R"re(src="pictures/formula-([a-z-]+)\.png" alt="([^"]*)")re");
    QMap<QString, QString> shown;
    const QDir pages(SOURCE_FOLDER "/assets/Help");
    for (const QString& page : pages.entryList({"*.html"})) {
        QFile file(pages.filePath(page));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        for (auto matches = picture.globalMatch(QString::fromUtf8(file.readAll())); matches.hasNext();) {
            const auto match = matches.next();
            shown[match.captured(1)] = match.captured(2);
        }
    }
    for (const Formulas::Row& row : Formulas::all()) {
        EXPECT_EQ(shown.take(row.name).toStdString(),
                  Formula::inWords(QString::fromUtf8(row.text)).toStdString());
        EXPECT_TRUE(pages.exists(QString("pictures/formula-%1.png").arg(row.name))) << row.name;
    }
    EXPECT_TRUE(shown.isEmpty()) << shown.firstKey().toStdString();
}
