// Import of the conditions of many systems: reading, sizing, storing.

#include "core/base/DelimitedText.h"
#include "core/base/Fault.h"
#include "core/store/Gateway.h"
#include "core/store/JobHeader.h"
#include "core/store/NewTankLines.h"
#include "extras/import/ImportSizing.h"
#include "extras/import/ImportText.h"
#include "shock/ShockSizing.h"
#include "sizing/ModelPool.h"
#include "sizing/TankSizing.h"
#include "tests/support/TemporaryHome.h"

#include <gtest/gtest.h>

using namespace ImportText;

namespace {

using Rows = std::vector<std::vector<std::string>>;

Rows rowsOf(std::string_view text) {
    Rows rows;
    for (const DelimitedRecord& record : readDelimited(text, separatorOf(text)))
        rows.push_back(record.fields);
    return rows;
}

/// What a text comes to, in one line: the problems of the table, or box=text of one box in each line with the
/// line's problems.
std::string outcome(const char* text, const char* box) {
    const Table table = read(QString::fromUtf8(text));
    if (!table.problems.isEmpty())
        return table.problems.join(' ').toStdString();
    QStringList all;
    for (const Line& line : table.lines)
        all.append((QStringList(line.boxes.value(box, "-")) + line.problems + line.notes).join(' '));
    return all.join(" | ").toStdString();
}

} // namespace

TEST(DelimitedText, ReadsFieldsAsSpreadsheetsWriteThem) {
    const std::pair<const char*, Rows> cases[] = {
        {"", {}},
        {"a", {{"a"}}},
        {"a,b\r\n\r\nc,\n", {{"a", "b"}, {"c", ""}}},
        {"a;b,c", {{"a", "b,c"}}},
        {"a\tb;c\rd\te", {{"a", "b;c"}, {"d", "e"}}},
        {"\"a;b\",c", {{"a;b", "c"}}},
        {"\"a\"\"b\nc\",d\ne,f", {{"a\"b\nc", "d"}, {"e", "f"}}},
        {"2\" pipe,\"\"", {{"2\" pipe", ""}}},
        {"\"a\"b,c", {{"ab", "c"}}},
    };
    for (const auto& [text, rows] : cases)
        EXPECT_EQ(rowsOf(text), rows) << text;
    EXPECT_EQ(readDelimited("\"a\nb\"\nc", ',').back().line, 3);
    EXPECT_THROW(readDelimited("a\n\"b", ','), std::runtime_error);
    const std::vector<std::string> fields = {"a,b", "\"", "c\nd", "e"};
    EXPECT_EQ(readDelimited(delimited(fields, ','), ',').front().fields, fields);
}

TEST(ImportText, ReadsValuesInTheUnitsOfTheirHeadings) {
    struct Case {
        const char* text;
        const char* box;
        const char* outcome;
    };
    const char* const others = ";Pipe length;Flow rate;Flow pressure;Static pressure;Shock pressure\n";
    const std::string shock = std::string("Application;Pipe") + others;
    const Case cases[] = {
        {"Drawdown [gal],APPLICATION,Min. Pressure,max_pressure\n500,hyd,1,2", "txtTotSysFluid", "500"},
        {"Volume (m³),Application,Minimum pressure,Maximum pressure\n2,Hydro-pneumatic Tank,1,2",
         "txtTotSysFluid", "528.4"},
        {"Volume, L\tApplication\tMinimum pressure\tMaximum pressure\n2000\tHydropneumatic\t1\t2",
         "txtTotSysFluid", "528.4"},
        {"Application;Volume;Minimum pressure [bar(g)];Maximum pressure\nHYD;9;2,5;9", "txtSOPMin", "36.3"},
        {"Application,Volume,Minimum pressure [kPa],Maximum pressure\nHYD,9,250,9", "txtSOPMin", "36.3"},
        {"Application,Volume,Minimum pressure [MPa],Maximum pressure\nHYD,9,.25,9", "txtSOPMin", "36.3"},
        {"Application,Volume,Minimum pressure,Maximum pressure,Atmospheric pressure [mbar]\nHYD,9,1,9,1013",
         "txtAtmPressure", "14.7"},
        // decimal commas and points
        {"Application;Volume;Minimum pressure;Maximum pressure\nHYD;1.234,5;1;2\nHYD;1.234;1;2",
         "txtTotSysFluid", "1,234.5 | 1,234"},
        {"Application,Volume,Minimum pressure,Maximum pressure\nHYD,\"1,234\",1.5,2", "txtTotSysFluid",
         "1,234"},
        {"Application;Volume;Minimum pressure;Maximum pressure\nHYD;1.234;1;2", "txtTotSysFluid",
         "1.234 Volume: \"1.234\" can be read as two numbers. Please write it without thousands separators."},
        {"Application\tVolume\tMinimum pressure\tMaximum pressure\nHYD\t1.234\t1\t2", "txtTotSysFluid",
         "1.234"},
        {"Application\tVolume\tMinimum pressure\tMaximum pressure\nHYD\t1,234\t1\t2", "txtTotSysFluid",
         "1,234 Volume: \"1,234\" can be read as two numbers. Please write it without thousands separators."},
        {"Application,Volume,Minimum pressure,Maximum pressure\nHYD,much,1,2", "txtTotSysFluid", "much"},
        // what is wrong with lines
        {"Application,Volume,Minimum pressure,Maximum pressure\nBoiler,1,1,2", "txtTotSysFluid",
         "1 There is no application \"Boiler\" (Expansion, Thermal Expansion, Hydropneumatic, Shock "
         "Arrestor)."},
        {"Application,Volume,Minimum pressure,Maximum pressure\n,1,1,2\n,,,\nHYD,2,1,2,7", "txtTotSysFluid",
         "1 Application: Please enter a valid value! | 2 \"7\" is below no heading."},
        {"Application,Volume,Minimum pressure,Maximum pressure,Fluid\nHYD,1,1,2,Water", "cmboFluidType",
         "- Fluid is not used."},
        // what is wrong with a text
        {"", "", "There is no text to import."},
        {"Application\n", "", "There is no line below the headings."},
        {"Volume\n1", "", "The column \"Application\" is missing."},
        {"Application,Volume,Minimum pressure\nHYD,1,1", "", "The column \"Maximum pressure\" is missing."},
        {"Application,Volume,Drawdown\nHYD,1,1", "", "The column \"Volume\" is there twice."},
        {"Application,Colour\nHYD,1", "", "There is no column \"Colour\"."},
        {"Application,Minimum pressure [psia]\nHYD,1", "",
         "\"Minimum pressure [psia]\": the unit \"psia\" is unknown here (units: psig, kPa, bar or MPa, "
         "above "
         "the atmosphere)."},
        {"Application,\"Volume\nHYD,1", "", "Line 1: a quoted field does not end."},
    };
    for (const Case& each : cases)
        EXPECT_EQ(outcome(each.text, each.box), each.outcome) << each.text;
    EXPECT_EQ(outcome((shock + "SHK;x;1;1;1;1;1").c_str(), "PipeIndex"), "x");
    EXPECT_EQ(outcome("Application,Pipe,Pipe length [m],Flow rate [L/s],Flow pressure,Static pressure,Shock "
                      "pressure\nSHK,x,10,2,1,2,3",
                      "FlowRate"),
              "31.7");
}

TEST(ImportText, ReadsFilesOfAllEncodingsOfSpreadsheets) {
    const QByteArray files[] = {"Temp [\xC2\xB0"
                                "C]",
                                "\xEF\xBB\xBFTemp [\xC2\xB0"
                                "C]",
                                "Temp [\xB0"
                                "C]",
                                QByteArray("\xFF\xFE"
                                           "T\0e\0m\0p\0 \0[\0\xB0\0C\0]\0",
                                           20)};
    for (const QByteArray& file : files)
        EXPECT_EQ(decoded(file), "Temp [°C]") << file.toHex().toStdString();
}

TEST(ImportText, ReadsItsOwnSample) {
    const Table table = read(decoded(sample()));
    EXPECT_EQ(table.problems.join(' ').toStdString(), "");
    ASSERT_EQ(table.lines.size(), 4U);
    for (const Line& line : table.lines)
        EXPECT_EQ((line.problems + line.notes).join(' ').toStdString(), "");
}

namespace {

class ImportedLines : public testing::Test {
  protected:
    void SetUp() override { home.installData(); }

    /// The lines of a text, sized with the first series of each application.
    static std::vector<ImportedLine> sized(const QString& text) {
        ImportSizing sizing;
        std::vector<ImportedLine> all;
        for (const ImportText::Line& line : read(text).lines)
            all.push_back(sizing.sized(line, {{Application::Expansion, "RCB"},
                                              {Application::Thermal, "GWB"},
                                              {Application::Hydropneumatic, "JW"}}));
        return all;
    }

    TemporaryHome home;
};

} // namespace

TEST_F(ImportedLines, SayWhatTheBoxesWouldSay) {
    const std::string headings =
        "Application,Series,Fluid,Tag,Volume,Minimum temperature,Maximum temperature,Minimum "
        "pressure,Maximum "
        "pressure,Pipe,Pipe length,Flow rate,Flow pressure,Static pressure,Shock pressure\n";
    const std::pair<const char*, const char*> cases[] = {
        {"EXP,,,,500,40,180,12,30", ""},
        {"EXP,rhb,30% ethylene glycol,,500,40,180,12,30", ""},
        {"EXP,GWB,,,500,40,180,12,30", "There is no series \"GWB\" of Expansion Tanks."},
        {"EXP,,Beer,,500,40,180,12,30", "There is no fluid \"Beer\"."},
        {"EXP,,,,,40,180,12,30", "Volume: Please enter a valid value!"},
        {"EXP,,,,x,40,180,12,30", "Volume: Please enter a valid numeric value!"},
        {"EXP,,,,500,40,180,-1,30", "Minimum pressure: Please enter a positive number!"},
        {"EXP,,,,500,40,260,12,30", "Maximum temperature: Please enter a value between 90 and 240."},
        {"THM,,30% Ethylene Glycol,,500,40,140,12,30", "Fluid: only Water."},
        {"THM,,Water,,500,40,140,55,120", ""},
        {"HYD,,,,50,,,60,40", "Maximum pressure: The maximum value must be greater than the minimum value!"},
        {"SHK,,,,,,,,,O'Hare,100,50,40,60,150", "Pipe: Not a valid Pipe Index"},
        {"SHK,RCB,,,,,,,,2 in Sch 40,100,50,40,60,150",
         "There is no series \"RCB\" of Shock Arrestor Tanks."},
    };
    for (const auto& [line, problems] : cases) {
        const auto all = sized(QString::fromStdString(headings + line));
        ASSERT_EQ(all.size(), 1U) << line;
        EXPECT_EQ(all.front().read.problems.join(' ').toStdString(), problems) << line;
        EXPECT_EQ(all.front().model.isEmpty(), *problems != 0) << line;
    }
    const auto tagged =
        sized(QString::fromStdString(headings + "EXP,,,") + QString(300, 'T') + ",500,40,180,12,30");
    EXPECT_TRUE(tagged.front().read.problems.join(' ').startsWith("Tag: no more than "));
    // Applications by the names that users give them; tags as their screen stores them.
    const auto named = sized(QString::fromStdString(headings) +
                             "hydro Tank,,,ET1,50,,,40,60\nTHERM.,,,PUMP-ROOM1,500,40,140,55,120\n"
                             "Water-hammer arrester,,,CHWP01,,,,,,2 in Sch 40,100,50,40,60,150");
    for (const auto& [at, tag] : {std::pair(0U, "ET1-"), {1U, "PUMP-ROOM1"}, {2U, "CHWP01"}}) {
        EXPECT_EQ(named.at(at).read.problems.join(' ').toStdString(), "");
        EXPECT_EQ(named.at(at).line.tags[0], tag);
    }
}

TEST_F(ImportedLines, GetTheFirstModelOfTheSearch) {
    for (const ImportedLine& line : sized(decoded(sample()))) {
        const Application application = *line.read.application;
        Requirement requirement{line.line.requiredVolume.value_or(0),
                                line.line.requiredAcceptance.value_or(0)};
        if (application == Application::Shock)
            requirement.bore = ShockSizing::conditionsOf(line.line).bore;
        else
            EXPECT_EQ(TankSizing::sizesOf(line.line, application, line.read.series).volume,
                      requirement.volume);
        const auto options = ModelPool(line.read.series).find(requirement);
        ASSERT_FALSE(options.empty());
        EXPECT_EQ(line.line.modelNo, QString::fromStdString(options.front().model));
        EXPECT_EQ(line.line.qty, options.front().quantity);
    }
}

TEST_F(ImportedLines, AreStoredTogetherOrNotAtAll) {
    JobHeader header;
    header.jobID = "J";
    ASSERT_TRUE(Records::addJobHeader(header));
    std::vector<TankLine> lines(2);
    lines[0].tags[0] = "A";
    EXPECT_EQ(Records::addTankLines("J", lines), (QStringList{"J.1", "J.2"}));
    EXPECT_EQ(Records::addTankLines("J", lines), (QStringList{"J.3", "J.4"}));
    lines[1].tags[0] = QString(300, 'T');
    EXPECT_THROW(Records::addTankLines("J", lines), DatabaseFault);
    EXPECT_THROW(Records::addTankLines("K", lines), RecordGone);
    const Connection other = Gateway::openDatabase("User");
    lines[1].tags[0].reset();
    {
        const Transaction saving(other); // another copy of the program
        EXPECT_THROW(Records::addTankLines("J", lines), DatabaseFault);
    }
    EXPECT_EQ(Records::tankLinesOf("J").size(), 4U);
    EXPECT_EQ(Records::tankLinesOf("J").front().tags[0], "A");
}
