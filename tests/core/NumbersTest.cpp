#include "core/base/Numbers.h"
#include "core/base/Fault.h"
#include "core/base/Format.h"
#include "core/base/Letters.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

TEST(ParseNumber, ReadsWhatUsersType) {
    const std::pair<const char*, double> cases[] = {
        {"12", 12},          {" 12 ", 12},           {"+5", 5},     {"-5", -5},       {".5", .5},  {"5.", 5},
        {"1,234.5", 1234.5}, {"1,234,567", 1234567}, {"1e3", 1000}, {"1.5E-2", .015}, {"- 5", -5}, {"0", 0},
        {"\t7\n", 7},        {"1e-400", 0},          {"007", 7},
    };
    for (const auto& [text, value] : cases)
        EXPECT_EQ(parseNumber(text), value) << text;
}

TEST(ParseNumber, RefusesAllElse) {
    for (const char* text : {"",    " ",   "abc",   "1,5", "1,23,456", ",123",  "1234,567", "1,234,",
                             ".",   "-",   "e5",    "1e",  "1e+",      "1.2.3", "12 gal",   "0x10",
                             "inf", "nan", "1e400", "--1", "1 2",      "٣",     "1,2345"})
        EXPECT_FALSE(parseNumber(text)) << text;
}

TEST(NumberText, IsShortestAndHasNoZeroBeforeThePoint) {
    const std::pair<double, const char*> cases[] = {
        {0, "0"},
        {.5, ".5"},
        {-.5, "-.5"},
        {12, "12"},
        {120.3626, "120.3626"},
        {.1 + .2, ".30000000000000004"},
        {1e15, "1E+15"},
        {1.5e-7, "1.5E-07"},
        {100000, "100000"},
        {123456789012345, "123456789012345"},
        {.00012, ".00012"},
        {-1e300, "-1E+300"},
    };
    for (const auto& [value, text] : cases)
        EXPECT_EQ(NumberText(value), text);
}

TEST(NumberText, IsShownWithAZeroBeforeThePoint) {
    const std::pair<double, const char*> cases[] = {{.5, "0.5"}, {-.5, "-0.5"},  {.00012, "0.00012"},
                                                    {0, "0"},    {-1.5, "-1.5"}, {1e15, "1E+15"}};
    for (const auto& [value, text] : cases)
        EXPECT_EQ(shownNumberText(value), text);
}

TEST(NumberText, ReadsBackToTheSameDouble) {
    std::mt19937_64 random(7);
    std::uniform_real_distribution<double> exponent(-300, 300);
    for (int i = 0; i < 5000; ++i) {
        const double value = std::pow(10.0, exponent(random)) * (i % 2 ? -1 : 1);
        ASSERT_EQ(parseNumber(NumberText(value)), value) << NumberText(value);
    }
}

TEST(Round, TakesHalvesToTheEvenDigit) {
    const struct {
        double value;
        int digits;
        double rounded;
    } cases[] = {{2.5, 0, 2},
                 {3.5, 0, 4},
                 {-2.5, 0, -2},
                 {.125, 2, .12},
                 {.375, 2, .38},
                 {211.8, 0, 212},
                 {.0484746, 5, .04847},
                 {120.36255, 4, 120.3626},
                 {1e300, 4, 1e300},
                 {0, 3, 0},
                 {656292417082035741., 2, 656292417082035741.}};
    for (const auto& c : cases)
        EXPECT_EQ(Round(c.value, c.digits), c.rounded) << c.value;
}

TEST(Faults, ReportWhatArithmeticCannotDo) {
    const auto numberOf = [](const auto& body) {
        try {
            body();
        } catch (const Fault& fault) {
            return fault.number();
        }
        return 0;
    };
    EXPECT_EQ(numberOf([] { Divide(1, 0); }), 11);
    EXPECT_EQ(numberOf([] { Divide(1e300, 1e-300); }), 6);
    EXPECT_EQ(numberOf([] { ToInt16(32768); }), 6);
    EXPECT_EQ(numberOf([] { ToInt16(std::nan("")); }), 6);
    EXPECT_EQ(numberOf([] { toDouble("x"); }), 13);
    EXPECT_EQ(ToInt16(32767.4), 32767);
    EXPECT_EQ(ToInt16(-2.5), -2);
    EXPECT_EQ(Divide(1, 4), .25);
}

TEST(Format, FollowsThePattern) {
    const struct {
        double value;
        const char* pattern;
        const char* text;
    } cases[] = {
        {120.3626, "#,##0 gal", "120 gal"},
        {48.47, "#,##0 gal", "48 gal"},
        {1234567.5, "#,##0 gal", "1,234,568 gal"},
        {.5, "#,##0", "1"},
        {2.5, "#,##0", "3"},
        {-2.5, "#,##0", "-3"},
        {-.4, "#,##0", "0"},
        {0, "#,##0 gal", "0 gal"},
        {0, "#,## gal", " gal"},
        {999.5, "#,## gal", "1,000 gal"},
        {14.7, "#,##0.0 psi", "14.7 psi"},
        {14.75, "#,##0.0 psi", "14.8 psi"},
        {1.005, "0.00", "1.01"},
        {.123, "#,##0.0%", "12.3%"},
        {9.99, "0.0%", "999.0%"},
        {40, "\"Min\" #,##0°F", "Min 40°F"},
        {1000, "#,##0°F", "1,000°F"},
        {3, "#,##0.##", "3"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(formatted(c.value, c.pattern), c.text) << c.value << " in " << c.pattern;
}

TEST(Letters, CompareWithoutCaseAndInTheOrderOfTheirCodes) {
    const struct {
        const char* one;
        const char* other;
        int order;
    } pairs[] = {{"", "", 0},       {"", "a", -1},   {"abc", "ABC", 0}, {"abc", "ABD", -1},
                 {"a_", "aA", -1},  {"Öl", "öL", 0}, {"Öl", "Ol", 1},   {"Жук", "жУК", 0},
                 {"ΣΑΣ", "σας", 0}, {"z", "ä", -1},  {"a", "ab", -1},   {"\xC3", "\xC3", 0},
                 {"\xFFz", "z", 1}, {"𐐀", "𐐨", 0}};
    for (const auto& pair : pairs) {
        const auto sign = [](int value) { return value < 0 ? -1 : value > 0 ? 1 : 0; };
        EXPECT_EQ(sign(compareLetters(pair.one, pair.other)), pair.order) << pair.one << " " << pair.other;
        EXPECT_EQ(sign(compareLetters(pair.other, pair.one)), -pair.order) << pair.one << " " << pair.other;
    }
}

TEST(Letters, MatchAPattern) {
    const struct {
        const char* text;
        const char* pattern;
        bool fits;
    } cases[] = {{"", "", true},
                 {"", "%", true},
                 {"", "_", false},
                 {"a", "", false},
                 {"MÜLLER", "%üll%", true},
                 {"Müller", "müll", false},
                 {"Ö", "_", true},
                 {"Öl", "_", false},
                 {"abcabd", "%ab_", true},
                 {"abcabd", "%abc", false},
                 {"aab", "a%b%", true},
                 {"aXbXc", "a%c%b", false},
                 {"50%", "50#%", true},
                 {"50x", "50#%", false},
                 {"a_b", "a#_B", true},
                 {"axb", "a#_b", false}};
    for (const auto& row : cases)
        EXPECT_EQ(hasForm(row.text, row.pattern, U'#'), row.fits) << row.text << " LIKE " << row.pattern;
    EXPECT_TRUE(hasForm("a#b", "a#b")) << "without an escape";
}
