#include "documents/viewer/Printing.h"
#include "tests/documents/Exports.h"
#include "tests/support/ScriptedDialogs.h"

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

TEST_F(Exports, ScheduleIsOnLandscapePaperWithItsUnits) {
    const Document schedule = report("rptSchedule");
    ASSERT_EQ(schedule.pages.size(), 1);
    for (const char* text :
         {"O'Hara & 水 <7>", "North-1", "T1.2", "EXP", "132 gal", "24", "77.25", "12 psi", "180°F"})
        EXPECT_TRUE(textsOf(schedule.pages).contains(QString::fromUtf8(text))) << text;
    const QString info = run("pdfinfo", {write("mnuExportPDF", schedule, "a.pdf")});
    EXPECT_TRUE(info.contains("792 x 612")) << info.toStdString();
}

TEST_F(Exports, PrintsToAFileOnThePaperChosen) {
    const Document document{"Brennoval Submittal", "Author", "a", submittal("T1", "RCB 500")};
    const struct {
        QPageSize::PageSizeId paper;
        const char* size;
    } cases[] = {
        {QPageSize::LastPageSize, "612 x 792"}, {QPageSize::A4, "595 x 842"}, {QPageSize::A5, "420 x 595"}};
    const QString file = home.dataFolder() + "/printed.pdf";
    for (const auto& [paper, size] : cases) {
        ScriptedDialogs::install().prints.append({file, 0, 0, paper});
        printDocument(document);
        const QString info = run("pdfinfo", {file});
        EXPECT_TRUE(info.contains(size)) << info.toStdString();
        EXPECT_TRUE(info.contains(QRegularExpression("Tagged:\\s+yes"))) << info.toStdString();
        expectAll(document.pages, run("pdftotext", {"-layout", file, "-"}), size);
        QFile::remove(file);
    }
}

TEST_F(Exports, PrintsTheLastPageFirstIfAsked) {
    struct Reversing : ScriptedDialogs {
        bool printer(Printer& printer) override {
            printer.choose({.lastPageFirst = true});
            return ScriptedDialogs::printer(printer);
        }
    };
    auto dialogs = std::make_unique<Reversing>();
    const QString file = home.dataFolder() + "/printed.pdf";
    dialogs->prints.append({file, 1, 2});
    Dialogs::install(std::move(dialogs));
    printDocument({"Submittals", "Author", "a",
                   submittal("T1", "RCB 500") + submittal("T4", "SHK 300") + submittal("T1", "RCB 500")});
    EXPECT_TRUE(run("pdftotext", {"-l", "1", file, "-"}).contains("SHK 300"));
    EXPECT_TRUE(run("pdftotext", {"-f", "2", file, "-"}).contains("RCB 500"));
}

// What leads to pages that are not printed goes, and a page keeps its own paper and label.
TEST_F(Exports, PrintsSomePagesToAFile) {
    Document document = {"Package", "Author", "a",
                         submittal("T1", "RCB 500") + report("rptSchedule").pages +
                             submittal("T1", "RCB 500") + submittal("T4", "SHK 300")};
    document.bookmarks = {
        {"Cover", 0, 0}, {"Schedule", 0, 1}, {"Tank", 0, 0}, {"Submittal", 1, 2}, {"Last", 0, 3}};
    document.pageLabels = QStringList{"Cover", "1 of 3", "2 of 3", "3 of 3"};
    const PageText tag = *std::ranges::find_if(document.pages[1].texts,
                                               [](const PageText& text) { return text.text == "North-1"; });
    const PageText other = *std::ranges::find_if(document.pages[1].texts,
                                                 [](const PageText& text) { return text.text == "South-3"; });
    document.links = {{1, QRectF(tag.place), 2}, {1, QRectF(other.place), 3}};
    const QString file = home.dataFolder() + "/some.pdf";
    const struct {
        QPageSize::PageSizeId paper;
        const char* across;
        const char* upright;
    } cases[] = {{QPageSize::LastPageSize, "792 x 612", "612 x 792"},
                 {QPageSize::A4, "842 x 595", "595 x 842"}};
    for (const auto& [paper, across, upright] : cases) {
        ScriptedDialogs::install().prints.append({file, 2, 3, paper});
        printDocument(document);
        const QString sizes = run("pdfinfo", {"-l", "2", file}).simplified();
        EXPECT_TRUE(sizes.contains(QString("Page 1 size: ") + QLatin1String(across))) << sizes.toStdString();
        EXPECT_TRUE(sizes.contains(QString("Page 2 size: ") + QLatin1String(upright))) << sizes.toStdString();
        const QByteArray read = run("qpdf", {"--json=2", file}).simplified();
        for (const char* part : {R"("title": "Schedule")", R"("destpageposfrom1": 2)", R"("title": "Tank")",
                                 R"("/P": "u:1 of 3")", R"("/Contents": "u:North-1")"})
            EXPECT_TRUE(read.contains(part)) << part;
        for (const char* part : {R"("title": "Cover")", R"("title": "Last")", R"("destpageposfrom1": null)",
                                 R"("/P": "u:Cover")", R"("/Contents": "u:South-3")"})
            EXPECT_FALSE(read.contains(part)) << part;
    }
}
