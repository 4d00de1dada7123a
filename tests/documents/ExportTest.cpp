// Opens every export with an unrelated program.

#include "documents/export/Export.h"
#include "core/base/Fault.h"
#include "core/store/Gateway.h"
#include "core/store/SessionStore.h"
#include "documents/Documents.h"
#include "documents/export/CompoundFile.h"
#include "documents/export/Workbook.h"
#include "documents/report/Renderer.h"
#include "documents/report/Reports.h"
#include "documents/schedule/ScheduleTable.h"
#include "documents/submittals/Submittals.h"
#include "tests/documents/ListLayout.h"
#include "tests/faults/Limits.h"
#include "tests/support/TemporaryHome.h"

#include <gtest/gtest.h>

#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <numeric>
#include <sys/stat.h>

namespace {

/// Runs an external program in a folder of its own: some leave the pictures they extract in the current
/// folder.
QByteArray run(const QString& program, const QStringList& arguments) {
    const QTemporaryDir folder;
    QProcess process;
    process.setWorkingDirectory(folder.path());
    process.start(program, arguments);
    if (!process.waitForFinished(60000) || process.exitCode() != 0)
        ADD_FAILURE() << program.toStdString() << ": " << process.readAllStandardError().toStdString();
    return process.readAllStandardOutput();
}

/// A text without blanks and quotes, so that line ends and a converter's own quotes do not matter.
QString dense(QString text) {
    return text.remove(QRegularExpression("\\s|\u00a0|\""));
}

/// A workbook's cells as a spreadsheet program shows them.
QString csvOf(const QString& workbook) {
    return QString::fromUtf8(
        run("ssconvert", {"-O", "format=preserve", "-T", "Gnumeric_stf:stf_assistant", workbook, "fd://1"}));
}

/// The texts of a document as an RTF reader sees them.
QString textOfRtf(const QString& document) {
    QFile html(document + ".html");
    if (!html.open(QIODevice::WriteOnly))
        return {};
    html.write(run("unrtf", {"--html", document}));
    html.close();
    return QString::fromUtf8(
        run("xmllint", {"--html", "--nowarning", "--xpath", "string(/)", html.fileName()}));
}

class Exports : public testing::Test {
  protected:
    Exports() {
        registerDocuments();
        home.installData();
        sql("INSERT INTO tblJobHeader (JobID, Engineer, Contractor) VALUES ('O''Hara & 水 <7>', 'Łukasz "
            "\"Ł\" Ohm', "
            "'D & E')");
        sql("INSERT INTO tblRepMaster (CompanyName, PhoneNo) VALUES ('Pump && Tank', '(555) 555-0100')");
        addTank("T1", "RCB 500", "'North-1', '-', 'South-3', NULL");
        addTank("T2", "24RB60", "NULL, NULL, NULL, NULL");
        addTank("T3", "PKG 30-1.8", "NULL, NULL, NULL, NULL");
        addTank("T4", "SHK 300", "NULL, NULL, NULL, NULL");
        addTank("T5", "JWB 800", "NULL, NULL, NULL, NULL");
    }

    static void sql(const QString& statement) {
        Connection user = Gateway::openDatabase("User");
        Recordset().Open(statement, user);
    }

    static void addTank(const QString& id, const QString& model, const QString& tags) {
        sql("INSERT INTO tblJobData (TankID, JobID, ModelNo, Qty, TotSysVolume, SysFluidType, SOTMin, "
            "SOTMax, SOPMin, "
            "SOPMax, FlowRate, FlowPressure, StaticPressure, ShockPressure, WaterVelocity, LeakLoad, "
            "PumpRunTime, "
            "TagID01, TagID02, TagID03, TagID04) VALUES ('" +
            id + "', 'O''Hara & 水 <7>', '" + model +
            "', 4, 1234.5, 'Water', 40, 180, 12, 30, 260, 45, 65, 150, 8.44, .136, 5.6, " + tags + ")");
    }

    static Pages submittal(const QString& tank, const QString& model) {
        Session::TankID.write(tank);
        return Report(*findReport(Submittals::SetReport(model))).Run().pages;
    }

    static Pages list(const QString& sql) {
        Connection catalogue = Gateway::openDatabase("Sys");
        Recordset rows;
        rows.Open(sql, catalogue);
        return renderPages(listLayout(), rows);
    }

    static Document report(const char* name, const char* application = "") {
        Session::JobID.write("O'Hara & 水 <7>");
        Session::TankClass.write(application);
        Schedule::FillScheduleTable();
        return Report(*findReport(name)).Run();
    }

    QString write(const char* command, const Document& document, const char* name) {
        QString path = home.dataFolder() + u'/' + QLatin1String(name);
        Export::toFile(Export::format(command), document, path);
        return path;
    }
    QString write(const char* command, const Pages& pages, const char* name) {
        return write(command, Document{"Brennoval Submittal", "Author", "a", pages}, name);
    }

    static QStringList textsOf(const Pages& pages) {
        QStringList texts;
        for (const Page& page : pages)
            for (const PageText& text : page.texts)
                texts.append(text.plain());
        return texts;
    }

    static void expectAll(const Pages& pages, const QString& content, const char* format) {
        const QString have = dense(content);
        for (const Page& page : pages)
            for (const PageText& text : page.texts) {
                if (text.pageNumber && QLatin1String(format) == "Excel") // a sheet has no pages
                    continue;
                for (const QString& line : text.lines()) // headings side by side are read line by line
                    EXPECT_TRUE(have.contains(dense(line))) << format << ": " << line.toStdString();
            }
    }

    TemporaryHome home;
};

} // namespace

TEST_F(Exports, AllSixHoldTheSameTexts) {
    QList<Document> documents;
    const std::pair<const char*, const char*> tanks[] = {
        {"T1", "RCB 500"}, {"T2", "24RB60"}, {"T3", "PKG 30-1.8"}, {"T4", "SHK 300"}, {"T5", "JWB 800"}};
    for (const auto& [tank, model] : tanks) {
        documents.append({"Submittal", "Author", "a", submittal(tank, model)});
        ASSERT_EQ(documents.last().pages.size(), 1) << model;
    }
    documents << report("rptExpTankList", "Thermal Expansion Tank")
              << report("rptPKGTankList", "Glycol Make-up Package") << report("rptSchedule");
    for (const Document& document : documents) {
        const Pages& pages = document.pages;
        EXPECT_GT(textsOf(pages).size(), 30);
        expectAll(
            pages,
            QString::fromUtf8(run("pdftotext", {"-layout", write("mnuExportPDF", document, "a.pdf"), "-"})),
            "PDF");
        expectAll(pages,
                  QString::fromUtf8(run("xmllint", {"--html", "--nowarning", "--xpath", "string(/html/body)",
                                                    write("mnuExportHTML", document, "a.htm")})),
                  "HTML");
        expectAll(pages, csvOf(write("mnuExportExcel", document, "a.xls")), "Excel");
        expectAll(pages, textOfRtf(write("mnuExportRTF", document, "a.rtf")), "RTF");
        QFile text(write("mnuExportText", document, "a.txt"));
        ASSERT_TRUE(text.open(QIODevice::ReadOnly));
        expectAll(pages, QString::fromUtf8(text.readAll()), "text");
    }
}

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

TEST_F(Exports, PdfHasTextAndVectors) {
    const QString file = write("mnuExportPDF", submittal("T1", "RCB 500"), "a.pdf");
    const QString info = run("pdfinfo", {file});
    EXPECT_TRUE(info.contains(QRegularExpression("Pages:\\s+1\\n"))) << info.toStdString();
    EXPECT_TRUE(info.contains("Brennoval Submittal"));
    EXPECT_TRUE(info.contains(QRegularExpression("Author:\\s+Author")));
    EXPECT_TRUE(run("pdftotext", {file, "-"}).contains("charging")) << "the letters of the drawing are text";
    EXPECT_TRUE(info.contains("612 x 792"));
    const QStringList fonts = QString(run("pdffonts", {file})).split('\n').mid(2);
    EXPECT_GE(fonts.size(), 3);
    for (const QString& font : fonts)
        if (!font.isEmpty()) {
            EXPECT_TRUE(font.contains(QRegularExpression("\\byes\\b")))
                << "not embedded: " << font.toStdString();
        }
    EXPECT_EQ(run("pdfimages", {"-list", file}).count('\n'), 2) << "no image: the drawing stays lines";
}

// Letters that no font has show as a sign, and keep their meaning for those who search.
TEST_F(Exports, PdfKeepsTheMeaningOfMissingLetters) {
    PageText text;
    text.text = QString::fromUcs4(U"pump \U0010FFFD1 pump");
    text.place = QRectF(72, 72, 200, 12);
    Page page;
    page.texts.append(text);
    const QString file = write("mnuExportPDF", {"Signs", "Author", "a", {page}}, "a.pdf");
    run("qpdf", {"--check", file});
    EXPECT_TRUE(run("qpdf", {"--qdf", "--object-streams=disable", file, "-"})
                    .contains("ActualText<feffdbffdffd0031>"));
    EXPECT_TRUE(run("pdftotext", {file, "-"}).contains("pump"));
}

TEST_F(Exports, PdfTellsWhatItsPartsAre) {
    const struct {
        Document document;
        QStringList parts; // in this order, as a reader of the structure finds them
    } cases[] = {
        {{"Submittal", "Author", "a", submittal("T1", "RCB 500")},
         {"Document Figure:", R"(H1 (block) "Brennoval Submittal")", R"(P (block) "JOB" "O'Hara & 水 <7>")",
          R"(H2 (block) "CONSTRUCTION")", R"(P (block) "Shell:" "Carbon steel")", R"("charging valve")",
          R"(H2 (block) "Typical Specifications")", R"(P (block) "Temperatures" "Min 40°F" "Max 180°F")"}},
        {report("rptExpTankList", "Thermal Expansion Tank"),
         {R"(H1 (block) "List of Standard Models")",
          R"(TH: /Scope /Column "Model Number" TH: /Scope /Column "Dimensions" "Diameter" "Height")",
          R"(TR TH: /Scope /Row /ColSpan 7 H2 (block) "Series" )", R"("ASME? No")",
          R"(TR TD "G 5" TD "8 X 9" TD "1.3 gal")"}},
        {report("rptSchedule"),
         {R"(H1 (block) "Tank Schedule for Job:" "O'Hara & 水 <7>")",
          R"(Table (block) TR TH: /Scope /Column /RowSpan 2 "Tag ID")",
          R"(TH: /Scope /Column /ColSpan 2 "Temperatures" TR TH: /Scope /Column "Dia")",
          R"(TR TD "North-1" TD "RCB 500")"}},
    };
    for (const auto& [document, parts] : cases) {
        const QString file = write("mnuExportPDF", document, "a.pdf");
        run("qpdf", {"--check", file});
        const QString read = QString::fromUtf8(run("pdfinfo", {"-struct-text", file})).simplified();
        qsizetype from = 0;
        for (const QString& part : parts) {
            const qsizetype at = read.indexOf(part, from);
            EXPECT_GE(at, 0) << part.toStdString() << " in " << read.left(3000).toStdString();
            from = std::max(from, at);
        }
        EXPECT_FALSE(read.contains("Page 1 of")) << "a footer is not part of the text";
    }
}

TEST_F(Exports, PdfLeadsItsReaderToItsPages) {
    Document document = report("rptSchedule");
    const PageText tag = *std::ranges::find_if(document.pages[0].texts,
                                               [](const PageText& text) { return text.text == "North-1"; });
    document.pages += submittal("T1", "RCB 500");
    document.author = "Łukasz & 水";
    document.bookmarks = {{"Cover", 0, 0}, {"Tank", 0, 1}, {"Submittal", 1, 1}};
    document.links = {{0, QRectF(tag.place), 1}};
    document.pageLabels = QStringList{"Cover", "2 of 2"};
    const QString file = write("mnuExportPDF", document, "a.pdf");
    const QString info = QString::fromUtf8(run("pdfinfo", {file}));
    for (const char* line : {"Title:\\s+Tank Schedule, O'Hara & 水 <7>", "Author:\\s+Łukasz & 水",
                             "Tagged:\\s+yes", "CreationDate:\\s+\\S"})
        EXPECT_TRUE(info.contains(QRegularExpression(QString::fromUtf8(line)))) << line;
    EXPECT_TRUE(run("pdfinfo", {"-struct-text", file}).simplified().contains("Link (inline) Object"));
    const QByteArray read = run("qpdf", {"--json=2", file}).simplified();
    for (const char* part :
         {R"("/Lang": "u:en-US")", R"("/DisplayDocTitle": true)", R"("/Alt": "u:Drawing of RCB 500")",
          R"("/Alt": "u:Ordwick Company")", R"("/P": "u:Cover")", R"("/P": "u:2 of 2")",
          R"("/Subtype": "/Link")", R"("/Contents": "u:North-1")", R"("title": "Submittal")"})
        EXPECT_TRUE(read.contains(part)) << part;
}

TEST_F(Exports, TiffHasItsPagesAndResolution) {
    Pages pages = submittal("T1", "RCB 500");
    pages += submittal("T4", "SHK 300");
    Page shaded = pages[0];
    shaded.pictures.append(
        {QRectF(400, 400, 40, 40),
         "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"9\" height=\"9\"><rect width=\"9\" "
         "height=\"9\" fill=\"#cfe3f5\"/></svg>",
         {}});
    pages.append(shaded);
    const QString file = write("mnuExportTIFF", pages, "a.tif");
    const QString info = run("tiffinfo", {file});
    EXPECT_EQ(info.count("TIFF Directory"), 3);
    EXPECT_EQ(info.count("Resolution: 200, 200 pixels/inch"), 3);
    EXPECT_EQ(info.count("Image Width: 1700 Image Length: 2200"), 3);
    EXPECT_EQ(info.count("Compression Scheme: LZW"), 1);
    EXPECT_EQ(info.count("Compression Scheme: CCITT Group 4"), 2); // black and white say all
    const QString shownAs = QString(file).replace(".tif", ".pdf");
    run("tiff2pdf", {"-o", shownAs, file});
    for (const char* page : {"1", "3"}) {
        const QByteArray shown =
            run("pdftoppm", {"-gray", "-r", "40", "-f", page, "-l", page, "-singlefile", shownAs});
        const QByteArray dots = shown.right(qsizetype(340) * 440);
        const double light = std::accumulate(dots.begin(), dots.end(), 0.0,
                                             [](double sum, char dot) { return sum + std::uint8_t(dot); }) /
                             double(dots.size());
        EXPECT_GT(light, 215) << page;
        EXPECT_LT(light, 253) << page;
    }
}

TEST_F(Exports, HtmlIsSelfContained) {
    QFile file(write("mnuExportHTML", submittal("T3", "PKG 30-1.8"), "a.htm"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(file.readAll());
    EXPECT_TRUE(text.contains("src=\"data:image/svg+xml;base64,"));
    EXPECT_FALSE(text.contains(QRegularExpression("(src|href)=\"(?!data:)")));
    EXPECT_TRUE(text.contains("O'Hara &amp; 水 &lt;7&gt;"));
    EXPECT_TRUE(text.contains("alt=\"Drawing of PKG 30-1.8\""));
    EXPECT_TRUE(text.contains("@page{size:612.00pt 792.00pt"));
    EXPECT_EQ(text.count("<h1"), 1);
    const QString read = QString::fromUtf8(
        run("xmllint", {"--html", "--nowarning", "--xpath", "string(//body)", file.fileName()}));
    EXPECT_TRUE(dense(read).contains("Make-upCapacity1.8gpm@70psi")) << "a value behind its label";
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

TEST_F(Exports, NamesStayTextsAndMarksAreWords) {
    sql("UPDATE tblJobHeader SET JobID = '007'");
    sql("UPDATE tblJobData SET JobID = '007'");
    const Pages pages = submittal("T5", "JWB 800");
    QStringList numbers;
    for (const PageText& text : pages[0].texts)
        if (text.isNumber())
            numbers.append(text.text);
    for (const char* number : {"4", "1,235 gal", "Min 12 psi"})
        EXPECT_TRUE(numbers.contains(number)) << number;
    EXPECT_FALSE(numbers.contains("007"));
    for (const char* format : {"mnuExportExcel", "mnuExportRTF", "mnuExportText"}) {
        const QString file = write(format, pages, "a");
        QFile text(file);
        ASSERT_TRUE(text.open(QIODevice::ReadOnly));
        const QString read = QLatin1String(format) == "mnuExportExcel" ? csvOf(file)
                             : QLatin1String(format) == "mnuExportRTF" ? textOfRtf(file)
                                                                       : QString(text.readAll());
        for (const char* word : {"007", "NSF mark", "IAPMO mark"})
            EXPECT_TRUE(read.contains(word)) << format << ": " << word;
    }
}

TEST_F(Exports, ListsHoldEveryModelOfTheirApplicationOnce) {
    const struct {
        const char* application;
        const char* code;
        const char* report;
        bool sorted;
    } lists[] = {{"Expansion Tank", "EXP", "rptExpTankList", true},
                 {"Thermal Expansion Tank", "THM", "rptExpTankList", true},
                 {"Hydropneumatic Tank", "HYD", "rptExpTankList", true},
                 {"Shock Arrestor Tank", "SHK", "rptExpTankList", true},
                 {"Glycol Make-up Package", "PKG", "rptPKGTankList", false}};
    for (const auto& list : lists) {
        Session::TankClass.write(list.application);
        const Pages pages = Report(*findReport(list.report)).Run().pages;
        QStringList found;
        for (const Page& page : pages)
            for (qsizetype i = 0; i + 2 < page.texts.size(); ++i)
                if (page.texts[i].section == Section::Detail && page.texts[i].style->bold)
                    found.append(page.texts[i].text + '|' + page.texts[i + 1].text + '|' +
                                 QString::number(page.texts[i + 2].number));
        QStringList expected;
        Connection catalogue = Gateway::openDatabase("Sys");
        Recordset model;
        model.Open(QString("SELECT * FROM tblModelMaster WHERE App = '%1'").arg(list.code) +
                       (list.sorted ? " ORDER BY Class, TankVolume" : ""),
                   catalogue);
        for (; !model.atEnd(); model.moveNext())
            expected.append(model["ModelDscrptn"].text() + '|' + model["TankOD"].text() + " X " +
                            model["OAL"].text() + '|' + QString::number(model["TankVolume"].number()));
        EXPECT_EQ(found, expected) << list.application;
        EXPECT_GT(found.size(), 10);
    }
}

TEST_F(Exports, ScheduleIsOnLandscapePaperWithItsUnits) {
    const Document schedule = report("rptSchedule");
    ASSERT_EQ(schedule.pages.size(), 1);
    for (const char* text :
         {"O'Hara & 水 <7>", "North-1", "T1.2", "EXP", "132 gal", "24", "77.25", "12 psi", "180°F"})
        EXPECT_TRUE(textsOf(schedule.pages).contains(QString::fromUtf8(text))) << text;
    const QString info = run("pdfinfo", {write("mnuExportPDF", schedule, "a.pdf")});
    EXPECT_TRUE(info.contains("792 x 612")) << info.toStdString();
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

TEST_F(Exports, FailureLeavesNoFile) {
    const Pages pages = submittal("T1", "RCB 500");
    QDir(home.dataFolder()).mkdir("folder");
    const QStringList before = QDir(home.dataFolder()).entryList();
    const Document document{"t", {}, {}, pages};
    for (const Export::Format& format : Export::formats()) {
        for (const char* name : {"/folder", "/missing/a.pdf", "/folder/"})
            EXPECT_THROW(Export::toFile(format, document, home.dataFolder() + QLatin1String(name)), Fault);
        {
            const FullDisk full(100);
            try {
                Export::toFile(format, document, home.dataFolder() + "/full");
                ADD_FAILURE() << format.command;
            } catch (const Fault& fault) {
                EXPECT_TRUE(QByteArray(fault.what()).endsWith("/full: File too large")) << fault.what();
            }
        }
        EXPECT_EQ(QDir(home.dataFolder()).entryList(), before);
    }
    const QString pipe = home.dataFolder() + "/pipe";
    ASSERT_EQ(mkfifo(pipe.toUtf8().constData(), 0600), 0);
    EXPECT_THROW(Export::toFile(Export::formats()[0], document, pipe), Fault);
    QFile::remove(pipe);
    const QString kept = write("mnuExportText", pages, "kept.txt");
    QFile(kept).setPermissions(QFile::Permissions(0x6000));
    write("mnuExportText", pages, "kept.txt");
    EXPECT_EQ(QFile(kept).permissions() & 0x0FFF, QFile::Permissions(0x0600))
        << "an existing file keeps its mode";
    QFile::remove(kept);
    QFile(home.path()).setPermissions(QFile::Permissions(0x7777));
    QFile(home.dataFolder()).setPermissions(QFile::Permissions(0x5555));
    {
        const OrdinaryUser user;
        EXPECT_THROW(Export::toFile(Export::format("mnuExportText"), document, home.dataFolder() + "/a.txt"),
                     Fault);
    }
    QFile(home.dataFolder()).setPermissions(QFile::Permissions(0x7777));
    EXPECT_EQ(QDir(home.dataFolder()).entryList(), before);
}

TEST_F(Exports, StoppedOneLeavesEverythingAsItWas) {
    const Page page = submittal("T1", "RCB 500").first();
    for (const bool table : {false, true})
        for (const Export::Format& format : Export::formats()) {
            const Document document{"t", {}, {}, {page, page, page}, table};
            const QString path = home.dataFolder() + "/kept";
            QFile kept(path);
            ASSERT_TRUE(kept.open(QIODevice::WriteOnly) && kept.write("as it was") > 0);
            kept.close();
            const QStringList before = QDir(home.dataFolder()).entryList();
            for (const qsizetype stop : {0, 1, 2}) {
                qsizetype asked = -1;
                const auto goOn = [&](qsizetype written, qsizetype all) {
                    EXPECT_TRUE(written == asked + 1 && written < all) << format.command;
                    asked = written;
                    return written < stop;
                };
                EXPECT_FALSE(Export::toFile(format, document, path, goOn)) << format.command;
                EXPECT_EQ(asked, stop) << format.command;
            }
            ASSERT_TRUE(kept.open(QIODevice::ReadOnly));
            EXPECT_EQ(kept.readAll(), "as it was") << format.command;
            EXPECT_EQ(QDir(home.dataFolder()).entryList(), before);
            EXPECT_TRUE(Export::toFile(format, document, path, [](qsizetype, qsizetype) { return true; }));
        }
}

TEST_F(Exports, SubmittalsAreFilledAsTheirModelAsks) {
    const auto shows = [](const Pages& pages, const QString& text) { return textsOf(pages).contains(text); };
    const Pages bladder = submittal("T1", "RCB 500");
    EXPECT_TRUE(shows(bladder, "North-1, South-3")) << "units without a tag add nothing";
    EXPECT_TRUE(shows(bladder, "Pump & Tank"));
    EXPECT_TRUE(shows(bladder, "Replaceable Heavy Duty Butyl "));
    EXPECT_TRUE(shows(bladder, "1,235 gal"));
    EXPECT_TRUE(shows(bladder, "Min 40°F"));
    EXPECT_TRUE(shows(bladder, "Max 30 psi"));
    EXPECT_TRUE(textsOf(bladder).join('\n').contains(
        "or an approved equal; the Ordwick representative Pump & Tank supplies"));
    EXPECT_TRUE(bladder[0].pictures.size() == 2) << "logo and drawing; no marks";
    const Pages steel = submittal("T2", "24RB60");
    EXPECT_TRUE(shows(steel, "Height/Length"));
    EXPECT_FALSE(shows(steel, "Bladder:"));
    const Pages package = submittal("T3", "PKG 30-1.8");
    EXPECT_TRUE(shows(package, "1.8 gpm @ 70 psi"));
    EXPECT_TRUE(shows(package, "10 psi - 70 psi"));
    EXPECT_TRUE(shows(package, "0.33 hp"));
    EXPECT_FALSE(shows(package, "DESCRIPTION")) << "the third part of the description takes its place";
    const Pages shock = submittal("T4", "SHK 300");
    EXPECT_TRUE(shows(shock, "Replaceable FDA Butyl Bladder"));
    EXPECT_TRUE(shows(shock, "8.4 fps"));
    EXPECT_TRUE(shows(shock, "13.6%"));
    EXPECT_TRUE(shows(shock, "260 gpm"));
    const Pages drawdown = submittal("T5", "JWB 800");
    EXPECT_TRUE(shows(drawdown, "Drawdown"));
    EXPECT_FALSE(shows(drawdown, "Water"));
    EXPECT_FALSE(shows(drawdown, "Temperatures"));
    EXPECT_EQ(drawdown[0].pictures.size(), 4) << "with both marks";
    // Without a tank in the session the report covers all lines, one page each.
    Session::TankID.write("nothing");
    Registry::removeRegValue(Registry::HKeyCurrentUser(), Registry::AppRegistryKey(), "TankID");
    EXPECT_EQ(Report(*findReport("rptSubmittal1")).Run().pages.size(), 5);
}
