#include "core/base/Text.h"
#include "core/store/Gateway.h"
#include "documents/report/PictureLabels.h"
#include "documents/report/Renderer.h"
#include "documents/report/TextFit.h"
#include "tests/documents/ListLayout.h"
#include "tests/support/PageTexts.h"
#include "tests/support/TemporaryHome.h"

#include <gtest/gtest.h>

#include <QDate>
#include <QFontMetricsF>

#include <stdexcept>

namespace {

class ReportEngine : public testing::Test {
  protected:
    ReportEngine() { home.installData(); }

    static Pages render(const Layout& layout, const QString& sql) {
        Connection catalogue = Gateway::openDatabase("Sys");
        Recordset rows;
        rows.Open(sql, catalogue);
        return renderPages(layout, rows);
    }

    TemporaryHome home;
};

const char* const codes =
    "SELECT * FROM tblPostalCodes WHERE PostalCode < '01900' ORDER BY RepID, PostalCode";

} // namespace

TEST_F(ReportEngine, SpansPagesWithHeadersAndGroups) {
    const Pages pages = render(listLayout(), codes);
    ASSERT_GT(pages.size(), 10);
    int details = 0;
    for (const Page& page : pages) {
        const QStringList texts = textsOf(page);
        EXPECT_EQ(texts.count("Code"), 1) << "a page header on each page";
        EXPECT_EQ(texts.count("Foot"), 1);
        EXPECT_EQ(texts.count("Postal codes by representative"), &page == &pages.first() ? 1 : 0);
        details += int(texts.count("assigned"));
        // The lowest text above the footer is a row, not the heading of a group without rows.
        double lowest = 0;
        QString last;
        for (const PageText& text : page.texts) {
            EXPECT_GE(text.place.top(), 36);
            EXPECT_LE(text.place.bottom(), 792 - 36 + .01);
            if (text.text != "Foot" && text.text != "End of the list" && text.place.top() > lowest) {
                lowest = text.place.top();
                last = text.text;
            }
        }
        EXPECT_NE(last, "Representative");
        EXPECT_TRUE(texts.contains("Representative")) << "a group goes on under its heading";
    }
    EXPECT_TRUE(textsOf(pages.last()).contains("End of the list"));
    Connection catalogue = Gateway::openDatabase("Sys");
    Recordset count;
    count.Open("SELECT COUNT(*) AS V FROM tblPostalCodes WHERE PostalCode < '01900'", catalogue);
    EXPECT_EQ(details, int(count["V"].number()));
}

TEST_F(ReportEngine, PlacesHeadersInTheirOrderAndNumbersPages) {
    Layout layout = Layout::parse("order", R"(paper legal landscape
section report-header 30
label lblTitle 0 0 300 20 text Title heading 1
section running-header 14
label lblRunning 0 0 300 12 text "Title of {date}"
section page-header 20
label lblColumn 0 0 60 12 text Column
section continuation 20
text txtWhose 0 0 100 12 column V
section detail 60
box boxText 0 0 300 12 fill dfe7ee
label lblText 0 0 300 12 text Heading
text txtLong 0 14 300 40 wrap shrink 8 flow lblText
field Name 320 0 80 24 "Name" txtName text ""
section page-footer 12
label lblPage 0 0 100 12 text "Page {page} of {pages}"
)");
    layout.control("txtLong")->text = QString("word ").repeated(2600);
    layout.control("txtName")->text = QString("W").repeated(200);
    const Pages pages = render(layout, "SELECT 'Whose' AS V");
    ASSERT_EQ(pages.size(), 3);
    EXPECT_EQ(pages[0].size, QSizeF(1008, 612));
    EXPECT_EQ(textsOf(pages[0]).mid(0, 3), QStringList({"Title", "Column", "Page 1 of 3"}));
    EXPECT_EQ(textsOf(pages[2]).mid(0, 5),
              QStringList({"Title of " + shownDate(QDate::currentDate()), "Column", "Page 3 of 3", "Whose",
                           "Heading (continued)"}));
    EXPECT_TRUE(pages[2].texts[0].repeated);
    EXPECT_EQ(pages[2].boxes.size(), 1) << "the bar behind the heading goes along";
    const PageText& name = pages[0].texts.last();
    EXPECT_EQ(name.plain().size(), 200) << "a word without end is broken, and not cut";
    EXPECT_GT(name.lines().size(), 2);
    EXPECT_LE(TextFit::lineHeight(name.style) * double(name.lines().size()), name.place.height() + .1);
    EXPECT_EQ(name.field, pages[0].texts[name.field < 0 ? 0 : pages[0].texts.size() - 2].field);
}

TEST_F(ReportEngine, MeasuresByLettersAsByShaping) {
    const TextStyle style{.size = 9.5, .bold = true};
    for (const char* text :
         {"AVATAR, To. 11 W, LT", "Replaceable Heavy Duty Butyl", "é°F ½ ·", "水 Łukasz", ""}) {
        const QFontMetricsF metrics(TextFit::font(style));
        const QString line = QString::fromUtf8(text);
        EXPECT_NEAR(TextFit::width(line, style), metrics.horizontalAdvance(line) / TextFit::fontScale, .05)
            << text;
    }
}

// Every line fits its place, the first of a paragraph too.
TEST_F(ReportEngine, WrapsEachLineToItsPlace) {
    const TextStyle style{.size = 8};
    for (const char* text :
         {"WWWWWWWWWWWWWWWWWWWW\nWWWWWWWWWWWWWWWWWWWW\nWWWWWWWWWWWWWWWWWWWW",
          "AVAVAVAVAVAVAVAVAVAVAVAVAVAVAVAVAVAVAVAVAVAVAVA\n\nTo To To To To To To To To"}) {
        PageText block;
        block.text = TextFit::wrapped(QString::fromUtf8(text), style, 76, 100).text;
        for (const QString& line : block.lines())
            EXPECT_LE(TextFit::width(line, style), 76.1) << line.toStdString();
    }
}

TEST_F(ReportEngine, AlignsAColumnAtItsMark) {
    const Layout layout = Layout::parse("mark", "section detail 12\n"
                                                "text txtValue 100 0 60 12 right align . 30 column V\n");
    for (const char* value : {"24", "77.25", "1,234.5"}) {
        const PageText text = render(layout, QString("SELECT '%1' AS V").arg(value))[0].texts[0];
        const double behind = TextFit::width(QStringView(text.text).mid(text.markAt()), text.style);
        EXPECT_NEAR(text.place.right() - behind, 36 + 130, .01) << value;
        EXPECT_GE(text.place.width(), TextFit::width(text.text, text.style)) << value;
    }
    // A text without room at the mark stays where it is.
    const PageText wide = render(layout, "SELECT '1234567.8' AS V")[0].texts[0];
    EXPECT_EQ(wide.place.right(), 36 + 160);
}

TEST_F(ReportEngine, FormatsColumnsAndKeepsTheirNumbers) {
    const Pages pages = render(listLayout(), "SELECT '00501' AS PostalCode, 1234 AS RepID");
    for (const PageText& text : pages[0].texts)
        if (text.text == "1,234 rep") {
            EXPECT_EQ(text.number, 1234);
            EXPECT_EQ(text.style->pattern, "#,##0 rep");
            return;
        }
    FAIL() << textsOf(pages[0]).join(" | ").toStdString();
}

TEST_F(ReportEngine, AnEmptyListHasItsHeaders) {
    const Pages pages = render(listLayout(), "SELECT * FROM tblPostalCodes WHERE RepID = 'none'");
    ASSERT_EQ(pages.size(), 1);
    EXPECT_TRUE(textsOf(pages[0]).contains("Code"));
    EXPECT_FALSE(textsOf(pages[0]).contains("assigned"));
}

TEST_F(ReportEngine, CutsNothing) {
    QString words;
    for (int i = 0; i < 2000; ++i)
        words += QString("word%1 ").arg(i);
    Layout layout = Layout::parse("long", "section detail 400\n"
                                          "text txtShort 0 0 300 20 wrap shrink 5\n"
                                          "label lblLong 0 30 300 10 text Long\n"
                                          "text txtLong 0 40 300 60 wrap shrink 6 flow lblLong\n"
                                          "text txtLine 0 120 60 12 size 10 shrink 6\n");
    layout.control("txtShort")->text = words.left(200);
    layout.control("txtLong")->text = words;
    layout.control("txtLine")->text = "RCB 15000 in one line";
    const Pages pages = render(layout, "SELECT 1 AS V");
    EXPECT_GE(pages.size(), 2) << "the rest flows to a page of its own";
    QString all;
    for (const Page& page : pages)
        for (const PageText& text : page.texts) {
            all += text.plain() + ' ';
            if (text.text.startsWith("RCB")) {
                EXPECT_LT(text.style->size, 10);
                EXPECT_LE(TextFit::width(text.text, text.style), 61);
            }
        }
    for (int i = 0; i < 2000; ++i)
        EXPECT_TRUE(all.contains(QString("word%1").arg(i))) << i;
}

TEST_F(ReportEngine, NamesTheLineOfABadLayout) {
    for (const char* bad :
         {"wat", "section detail", "label x 0 0 1", "section detail 9\nlabel x 0 0 1 1 shiny",
          "change nothing bold", "section detail 9\ntext a 0 0 1 1\ntext a 0 0 1 1",
          "section detail 9\nlabel a 0 0 1 1 text \"open"}) {
        try {
            Layout::parse("bad", bad);
            ADD_FAILURE() << bad;
        } catch (const std::runtime_error& error) {
            EXPECT_TRUE(std::string(error.what()).starts_with("bad.layout:")) << error.what();
        }
    }
}

TEST(PictureLabels, AreTakenOutOfAPictureUnlessTheyAreTurned) {
    const LabelledPicture picture = labelledPicture(
        "<svg xmlns='http://www.w3.org/2000/svg' font-size='8'><g text-anchor='end' fill='#123456'>"
        "<text x='3' y='4.5'>charging &amp; valve</text><path d='M0 0L1 1'/></g>"
        "<g transform='rotate(90)'><text x='1' y='1'>turned</text></g><text font-style='italic'>A</text>"
        "</svg>");
    ASSERT_EQ(picture.labels.size(), 2);
    EXPECT_EQ(picture.labels[0].text, "charging & valve");
    EXPECT_EQ(picture.labels[0].at, QPointF(3, 4.5));
    EXPECT_EQ(picture.labels[0].style,
              (TextStyle{.size = 8, .alignment = Qt::AlignRight, .color = QColor(0x123456)}));
    EXPECT_TRUE(picture.labels[1].style.italic);
    EXPECT_FALSE(picture.svg.contains("valve"));
    EXPECT_TRUE(picture.svg.contains("turned") && picture.svg.contains("path"));
    EXPECT_EQ(labelledPicture("<svg><text>cut short").svg, "<svg><text>cut short");
}
