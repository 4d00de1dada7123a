#include "tests/documents/Exports.h"

#include "core/base/Fault.h"
#include "tests/faults/Limits.h"

#include <numeric>
#include <sys/stat.h>

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
