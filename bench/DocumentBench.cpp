#include "bench/DocumentBench.h"

#include "bench/BenchData.h"
#include "core/store/SessionStore.h"
#include "documents/export/Export.h"
#include "documents/export/PdfContent.h"
#include "documents/export/PdfPictures.h"
#include "documents/export/PdfStructure.h"
#include "documents/report/Reports.h"
#include "documents/schedule/ScheduleTable.h"
#include "documents/submittals/Submittals.h"
#include "tests/support/Driver.h"

#include <benchmark/benchmark.h>

#include <QPainter>
#include <QPdfWriter>
#include <QSvgRenderer>
#include <QTemporaryFile>

#include <malloc.h>

using namespace Schedule;
using namespace Submittals;

namespace {

double listMemory = 0; // megabytes

/// From a user action to the painted screen that it opens; the screen is closed again each time.
void timeToScreen(benchmark::State& state, const char* screen, void (*act)()) {
    for (auto _ : state) {
        const ProcessorClock clock;
        act();
        Screens::find(screen)->repaint();
        state.SetIterationTime(clock.seconds());
        Screens::unload(screen);
        Driver::settle();
    }
}

/// Adds a tank line complete enough for the results screen.
void addFinishedTank(const Data& data) {
    Bare(data.file("User"))
        .run("INSERT INTO tblJobHeader (JobID) VALUES ('B'); INSERT INTO tblJobData (TankID, TankNo, JobID, "
             "ModelNo, Qty, AtmPressure, SOPMin, SOPMax, SOTMin, SOTMax, SysFluidType, TotSysVolume) VALUES "
             "('B.1', 1, 'B', 'RCB 500', 1, 14.7, 12, 30, 40, 180, 'Water', 500)");
    Session::JobID.write("B");
    Session::TankID.write("B.1");
}

void previewSubmittal(benchmark::State& state) {
    const Data data(200, 100);
    Driver::start();
    addFinishedTank(data);
    Screens::open("frmResults");
    timeToScreen(state, "frmReportViewer", [] { Driver::press("frmResults", "bttnPreview"); });
    Driver::stop();
}

/// The results of a stored tank, from the command to the painted screen.
void openResults(benchmark::State& state) {
    const Data data(10000, 100);
    Driver::start();
    addFinishedTank(data);
    timeToScreen(state, "frmResults", [] { Screens::open("frmResults"); });
    Driver::stop();
}

/// Draws the same texts and pictures at the same places with Qt's writer, and does nothing else.
void qtPdf(const Pages& pages, QIODevice& file) {
    QPdfWriter writer(&file);
    constexpr int resolution = 1200;
    constexpr double scale = resolution / 72.0;
    writer.setResolution(resolution);
    writer.setPageSize(QPageSize(pages.first().size, QPageSize::Point));
    writer.setPageMargins(QMarginsF());
    QPainter painter(&writer);
    double size = 0;
    bool bold = false;
    for (const Page& page : pages) {
        if (&page != &pages.first())
            writer.newPage();
        for (const PagePicture& picture : page.pictures)
            QSvgRenderer(picture.svg)
                .render(&painter, QRectF(picture.place.topLeft() * scale, picture.place.size() * scale));
        for (const PageText& text : page.texts) {
            if (size != text.style->size || bold != text.style->bold) {
                QFont font("Liberation Sans");
                font.setPointSizeF(size = text.style->size);
                font.setBold(bold = text.style->bold);
                painter.setFont(font);
            }
            double y = text.place.top() + text.style->size;
            for (const QString& line : text.lines()) {
                painter.drawText(QPointF(text.place.left(), y) * scale, line);
                y += text.style->size * 1.15;
            }
        }
    }
    painter.end();
}

/// The same with the program's own writer, each text as a cell of one table.
void barePdf(const Pages& pages, QIODevice& target) {
    PdfFile file(target);
    PdfFonts fonts;
    PdfPictures pictures(file);
    PdfStructure tags(file, int(pages.size()));
    const int list = file.reserve();
    const int resources = file.reserve();
    QByteArray kids;
    for (const Page& page : pages) {
        PdfContent content(fonts, page.size.height());
        const int object = file.reserve();
        tags.beginPage(object);
        for (const PageBox& box : page.boxes)
            content.box(box.place, box.width, box.fill);
        for (const PageLine& line : page.lines)
            content.line(line.from, line.to, line.width);
        for (const PagePicture& picture : page.pictures)
            content.picture(pictures.picture(picture.svg).name, picture.place.topLeft(), 1);
        for (const PageText& text : page.texts) {
            double y = text.place.top() + text.style->size;
            tags.begin("TD");
            content.beginMarked("TD", tags.content());
            for (const QString& line : text.lines()) {
                content.text(line, text.style, {text.place.left(), y});
                y += text.style->size * 1.15;
            }
            content.endMarked();
            tags.end();
        }
        tags.endPage();
        file.write(object, "<</Type/Page/Parent " + PdfWords::reference(list) +
                               "/MediaBox[0 0 612 792]/Resources " + PdfWords::reference(resources) +
                               "/Contents " + PdfWords::reference(file.addStream({}, content.bytes)) + ">>");
        kids += PdfWords::reference(object) + ' ';
    }
    file.write(list, "<</Type/Pages/Kids[" + kids + "]/Count " + QByteArray::number(pages.size()) + ">>");
    file.write(resources, "<</Font<<" + fonts.write(file) + ">>/XObject<<" + pictures.names() + ">>>>");
    const QByteArray catalog = "<</Type/Catalog/Pages " + PdfWords::reference(list) + "/StructTreeRoot " +
                               PdfWords::reference(tags.finish()) + ">>";
    file.finish(file.add(catalog), file.add("<<>>"));
}

void programPdf(const Pages& pages, QIODevice& file) {
    Export::pdf({.title = "Bench", .author = {}, .fileName = {}, .pages = pages}, file);
}

void programTiff(const Pages& pages, QIODevice& file) {
    Export::tiff({.title = "Bench", .author = {}, .fileName = {}, .pages = pages}, file);
}

/// Writes to a file, as an export does.
void toFile(void (*write)(const Pages&, QIODevice&), const Pages& pages) {
    QTemporaryFile file;
    file.open();
    write(pages, file);
}

void pdfOfSubmittal(benchmark::State& state, void (*write)(const Pages&, QIODevice&)) {
    const Data data(200, 100);
    addFinishedTank(data);
    const Pages pages = Report(*findReport(SetReport("RCB 500"))).Run().pages;
    for (auto _ : state)
        toFile(write, pages);
}

/// A catalogue with this many expansion tanks and no other models.
class TankList {
  public:
    explicit TankList(int models) : data(models, 1) {
        Bare(data.file("Sys"))
            .run("DELETE FROM tblModelMaster WHERE ModelDscrptn NOT LIKE 'M %'; UPDATE tblModelMaster SET "
                 "App = 'EXP'");
        Session::TankClass.write("Expansion Tank");
    }
    static Pages pages() { return Report(*findReport("rptExpTankList")).Run().pages; }
    /// Reads the report's columns as text and does nothing else.
    void readBare() const {
        constexpr std::array columns = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10};
        Bare catalogue(data.file("Sys"));
        benchmark::DoNotOptimize(
            catalogue.texts("SELECT Class, Bladder, ASME, ModelDscrptn, TankOD, OAL, TankVolume, "
                            "AcceptanceVolume, SysConnStd, "
                            "TankWkPressure, ShipWeight FROM tblModelMaster ORDER BY Class, TankVolume",
                            columns));
    }

  private:
    Data data;
};

double heapMegabytes() {
    const struct mallinfo2 heap = mallinfo2();
    return double(heap.uordblks + heap.hblkhd) / (1024 * 1024);
}

void renderList(benchmark::State& state, int rows) {
    const TankList list(rows);
    for (auto _ : state) {
        const double before = heapMegabytes();
        const Pages pages = TankList::pages();
        listMemory = std::max(listMemory, heapMegabytes() - before);
    }
}

void pdfOfList(benchmark::State& state, int rows, void (*write)(const Pages&, QIODevice&)) {
    const TankList list(rows);
    const Pages pages = TankList::pages();
    for (auto _ : state)
        toFile(write, pages);
}

void listToPdf(benchmark::State& state, int rows) {
    const TankList list(rows);
    for (auto _ : state)
        toFile(programPdf, TankList::pages());
}

void listToPdfBare(benchmark::State& state, int rows) {
    const TankList list(rows);
    const Pages pages = TankList::pages();
    for (auto _ : state) {
        list.readBare();
        toFile(barePdf, pages);
    }
}

/// A job of a thousand tank lines with nine units each, next to 100,000 other lines.
class LongSchedule {
  public:
    LongSchedule() : data(10000, 100000) {
        Bare(data.file("User"))
            .run("INSERT INTO tblJobHeader (JobID) VALUES ('B'); WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL "
                 "SELECT "
                 "i + 1 FROM n WHERE i < 1000) INSERT INTO tblJobData (TankID, TankNo, JobID, ModelNo, Qty, "
                 "SOPMin, "
                 "SOPMax, SOTMin, SOTMax, TagID01) SELECT 'B.' || i, i, 'B', 'M ' || i, 9, 12, 30, 40, 180, "
                 "'T-' || "
                 "i FROM n");
        Session::JobID.write("B");
    }
    QString userFile() const { return data.file("User"); }
    QString catalogueFile() const { return data.file("Sys"); }

  private:
    Data data;
};

void showSchedule(benchmark::State& state, const char* screen, void (*act)()) {
    const LongSchedule schedule;
    Driver::start();
    timeToScreen(state, screen, act);
    Driver::stop();
}

void fillSchedule(benchmark::State& state) {
    const LongSchedule schedule;
    for (auto _ : state)
        FillScheduleTable();
}

/// Reads the same tank lines and each model once, and inserts the same number of rows, all with kept
/// statements.
void fillScheduleBare(benchmark::State& state) {
    const LongSchedule schedule;
    constexpr int units = 9;
    for (auto _ : state) {
        Bare user(schedule.userFile());
        Bare catalogue(schedule.catalogueFile());
        user.run("BEGIN; DELETE FROM tblSchedule");
        const auto models = catalogue.prepared("SELECT * FROM tblModelMaster WHERE ModelDscrptn = ?");
        const auto rows = user.prepared("INSERT INTO tblSchedule (TagID, TankID, TankOD, OAL, TankVol, App) "
                                        "VALUES (?, ?, '24', '77.25', 132.1, 'EXP')");
        for (const auto& [tank, model] :
             user.texts("SELECT TankID, ModelNo, * FROM tblJobData WHERE JobID = 'B'", std::array{0, 1})) {
            Bare::start(models.get(), {model});
            for (int unit = 0; unit < units; ++unit)
                Bare::start(rows.get(), {"B.1.1", tank});
        }
        sqlite3_reset(rows.get());
        user.run("COMMIT");
    }
}

} // namespace

void registerDocumentBenchmarks() {
    using benchmark::RegisterBenchmark;
    RegisterBenchmark("results of a stored tank/program", openResults)
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond);
    RegisterBenchmark("preview of a submittal, click to page/program", previewSubmittal)
        ->UseManualTime()
        ->Iterations(30);
    const std::pair<std::string, void (*)(const Pages&, QIODevice&)> writers[] = {{"program", programPdf},
                                                                                  {"bare", barePdf}};
    RegisterBenchmark("PDF of a submittal with Qt's writer/program",
                      [](benchmark::State& s) { pdfOfSubmittal(s, qtPdf); });
    for (const auto& [name, write] : writers)
        RegisterBenchmark(("PDF of a submittal/" + name).c_str(),
                          [write = write](benchmark::State& s) { pdfOfSubmittal(s, write); });
    for (const int rows : {10000, 100000}) {
        const std::string list = "list of " + std::to_string(rows) + " rows, ";
        const auto add = [&](const std::string& what, const std::function<void(benchmark::State&)>& run) {
            auto* added = RegisterBenchmark((list + what).c_str(), run);
            if (rows > 10000)
                added->Iterations(1);
        };
        add("pages/program", [rows](benchmark::State& s) { renderList(s, rows); });
        add("pages and PDF/program", [rows](benchmark::State& s) { listToPdf(s, rows); });
        add("its PDF with Qt's writer/program", [rows](benchmark::State& s) { pdfOfList(s, rows, qtPdf); });
        if (rows == 10000)
            add("its TIFF/program", [rows](benchmark::State& s) { pdfOfList(s, rows, programTiff); });
        add("pages and PDF/bare", [rows](benchmark::State& s) { listToPdfBare(s, rows); });
        for (const auto& [name, write] : writers)
            add("its PDF/" + name, [rows, write = write](benchmark::State& s) { pdfOfList(s, rows, write); });
    }
    RegisterBenchmark("schedule of 9000 units, work table/program", fillSchedule);
    RegisterBenchmark("schedule of 9000 units, work table/bare", fillScheduleBare);
    RegisterBenchmark(
        "schedule of 9000 units, screen/program",
        [](benchmark::State& s) { showSchedule(s, "frmSchedule", [] { Screens::open("frmSchedule"); }); })
        ->UseManualTime()
        ->Iterations(5);
    RegisterBenchmark("schedule of 9000 units, report/program",
                      [](benchmark::State& s) {
                          showSchedule(s, "frmReportViewer", [] { Driver::command("mnuSchedule"); });
                      })
        ->UseManualTime()
        ->Iterations(5);
}

double longestListMemory() {
    return listMemory;
}
