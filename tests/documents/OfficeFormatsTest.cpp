#include "documents/export/CompoundFile.h"
#include "documents/export/Workbook.h"
#include "tests/documents/Exports.h"

TEST_F(Exports, WorkbookOfAListIsOneTableWithFilters) {
    const QString file =
        write("mnuExportExcel", report("rptExpTankList", "Thermal Expansion Tank"), "list.xls");
    const QStringList lines = csvOf(file).split('\n');
    ASSERT_GT(lines.size(), 30);
    EXPECT_EQ(lines[2] + lines[3], "\"Model Number\",\"DimensionsDiameter Height\",\"Tank Volume\",\"Accept. "
                                   "Volume\",\"System Cnnctn\",\"Working Pressure\",\"Approx. "
                                   "Weight\",Series,\"Bladder Type:\",ASME?");
    int rows = 0;
    for (const QString& line : lines)
        rows += line.contains("Butyl") ? 1 : 0; // each row repeats the bladder and series of its group
    Gateway::Rows count("Sys", "SELECT COUNT(*) AS V FROM tblModelMaster WHERE App = 'THM'");
    EXPECT_EQ(rows, int(count["V"].number()));
    const QByteArray sheet = run("ssconvert", {"-T", "Gnumeric_XmlIO:sax:0", file, "fd://1"});
    EXPECT_TRUE(sheet.contains("<gnm:Filter Area=\"A3:J" + QByteArray::number(rows + 3) + "\"/>"));
}

// A sentence above a table is as wide as it needs, not wrapped into the first column.
TEST_F(Exports, WorkbookOfAListShowsItsTitlesWhole) {
    Document document = report("rptSchedule");
    for (PageText& text : document.pages[0].texts)
        if (text.text == "Brennoval")
            text.text = "Conditions: a sentence" + QString(PageText::BlankBreak) + "of two lines";
    const QString sheet = run(
        "ssconvert", {"-T", "Gnumeric_XmlIO:sax:0", write("mnuExportExcel", document, "a.xls"), "fd://1"});
    const QRegularExpression first(
        R"(<gnm:StyleRegion startCol="0" startRow="0" [^>]*>\s*<gnm:Style [^>]*WrapText="(\d)\")");
    EXPECT_TRUE(sheet.contains("sentence of two lines"));
    EXPECT_EQ(first.match(sheet).captured(1), "0");
}

TEST_F(Exports, WorkbookOfASubmittalHasLogoDrawingAndBoxes) {
    const Document document{"Submittal", "Author", "a",
                            submittal("T1", "RCB 500") + submittal("T4", "SHK 300")};
    const QByteArray sheet = run(
        "ssconvert", {"-T", "Gnumeric_XmlIO:sax:0", write("mnuExportExcel", document, "a.xls"), "fd://1"});
    EXPECT_EQ(sheet.count("<gnm:SheetObjectImage "), 4) << "a logo and a drawing for each";
    EXPECT_GT(sheet.count("<gnm:Left Style=\"1\""), 10);
    EXPECT_GT(sheet.count("<gnm:Bottom Style=\"1\""), 10);
    EXPECT_TRUE(sheet.contains("Shade=\"1\"")) << "bars behind headings";
    EXPECT_EQ(sheet.count("<gnm:break "), 1) << "each submittal begins a page";
}

// Each page of a package is a section as it lies, with its boxes behind the texts.
TEST_F(Exports, RtfPagesLieAsTheyAreAndHaveTheirBoxesBehind) {
    const Document document{"Package", "Author", "a",
                            submittal("T1", "RCB 500") + report("rptSchedule").pages +
                                submittal("T4", "SHK 300")};
    QFile file(write("mnuExportRTF", document, "a.rtf"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QList<QByteArray> sections = file.readAll().replace("\n", "").replace("\\sectd", "\n").split('\n');
    ASSERT_EQ(sections.size(), 4);
    for (int i = 1; i < 4; ++i) {
        EXPECT_EQ(sections[i].contains("\\lndscpsxn"), i == 2) << i;
        EXPECT_GT(sections[i].indexOf("\\shp{"), sections[i].indexOf("{\\header")) << i;
        EXPECT_LT(sections[i].lastIndexOf("\\shp{"), sections[i].indexOf("\\par}\\pard")) << i;
    }
}

// A boxed field has a frame with its label and value, so that fields side by side do not move each other's
// lines; and no text is larger than on the page, where it fits.
TEST_F(Exports, RtfFieldsHaveFramesOfTheirOwn) {
    Page page = submittal("T1", "RCB 500").first();
    const auto engineer = std::find_if(page.texts.begin(), page.texts.end(),
                                       [](const PageText& text) { return text.text == "Engineer"; });
    ASSERT_NE(engineer, page.texts.end());
    TextStyle style = engineer->style;
    style.size = 7.75;
    engineer->style = style;
    QFile file(write("mnuExportRTF", {page}, "a.rtf"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QString rtf = QString::fromLatin1(file.readAll());
    const QString frame = R"(\\pvpg\\phpg\\posx800\\posy2220\\absw3040)";
    const QRegularExpression field(frame + R"([^\n]*\{\\fs15 Engineer\}\\par\n\\pard)" + frame +
                                   R"([^\n]*Ohm\}\\par)");
    EXPECT_TRUE(rtf.contains(field)) << rtf.mid(rtf.indexOf("Engineer") - 200, 500).toStdString();
}

TEST_F(Exports, WorkbookHoldsNumbersAndLongLists) {
    const Pages pages =
        list("SELECT * FROM tblPostalCodes WHERE PostalCode < '02000' ORDER BY RepID, PostalCode");
    const QString csv = csvOf(write("mnuExportExcel", pages, "list.xls"));
    int rows = 0;
    for (const QString& line : csv.split('\n'))
        rows += line.contains("assigned") ? 1 : 0;
    int expected = 0;
    for (const QString& text : textsOf(pages))
        expected += text == "assigned" ? 1 : 0;
    EXPECT_EQ(rows, expected);
    EXPECT_GT(rows, 500);
    EXPECT_TRUE(csv.contains("00501")) << "a code keeps its zeros as a text";
    EXPECT_TRUE(csv.contains("2 rep"));
}

TEST_F(Exports, CompoundFileIsSoundAtEverySize) {
    // Covers one table sector, several, and the list that only a large file needs.
    for (const int megabytes : {0, 1, 9}) {
        Workbook book;
        book.addSheet("Large", {100, 100}, {612, 792});
        const int rows = megabytes * 2500 + 3;
        for (int i = 0; i < rows; ++i)
            book.text(i, 0, QString("%1 %2").arg(i).arg(QString(400, i % 2 ? QChar('x') : QChar(0x6C34))),
                      {});
        QFile file(home.dataFolder() + "/large.xls");
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(book.file());
        file.close();
        const QString csv = csvOf(file.fileName());
        EXPECT_TRUE(csv.contains(QString("%1 ").arg(rows - 1))) << megabytes;
        EXPECT_EQ(csv.count('\n'), rows) << megabytes;
    }
}
