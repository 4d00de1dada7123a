#include "extras/package/JobPackage.h"

#include "core/base/Fault.h"
#include "core/shell/DisplayFields.h"
#include "core/shell/Screens.h"
#include "core/store/DataState.h"
#include "core/store/SessionTask.h"
#include "documents/report/Imprint.h"
#include "documents/report/Picture.h"
#include "documents/report/Reports.h"
#include "documents/schedule/ScheduleTable.h"
#include "extras/package/PackageCover.h"
#include "extras/package/PackagePlan.h"

#include <QHash>

namespace JobPackage {

namespace {

constexpr ReportKind tankPage = {"rptTankPage", "rptTankPage", "User", [](Report& /*report*/) {},
                                 ReportOf::Job};

class Maker : public DocumentMaker {
  public:
    Maker(const QString& packed, const Contents& wanted)
        : jobID(packed), chosen(wanted), task(Session::newTask()) {}

    void start() {
        Screens::inTask(task, [this] { begin(); });
    }

    int partsMade() const override { return next; }
    int parts() const override { return int(plan.parts.size()); }

    void makeNext() override {
        Screens::inTask(task, [this] {
            switch (dataNow()) {
            case Data::Locked:
                return;
            case Data::Changed:
                return begin();
            case Data::Same:
                make(plan.parts[std::size_t(next)]);
            }
            if (++next < parts())
                return;
            if (dataNow() == Data::Changed) // while the last one was made
                return begin();
            finish();
        });
    }

  private:
    void begin() {
        Schedule::prepareScheduleTable();
        const auto state = Gateway::readDataState(jobID, {});
        version = state ? std::optional(state->version) : std::nullopt;
        job = readJobRecords(jobID);
        plan = planOf(job, chosen);
        next = 0;
        ++begun;
        tankPages.clear();
        made = {.title = "Package, " + jobID,
                .author = Imprint::maker,
                .fileName = jobID + " package",
                .pages = coverPages(jobID, job, chosen, plan.entries),
                .of = ReportOf::Job};
        if (!job.representatives.empty() && job.representatives.front().companyName)
            made.author = job.representative();
        coverSize = int(made.pages.size());
        made.bookmarks.append({"Cover", 0, 0});
        numberPages(0);
        addSchedule();
        if (isDone())
            finish();
    }

    enum class Data { Same, Changed, Locked };

    /// Whether the job is still as it was read. Another program may hold the data for a moment; once that
    /// has lasted, the next part is made all the same and tells what is wrong.
    Data dataNow() {
        constexpr int patience = 30; // tries, each of which waits for a tenth of a second
        const auto state = Gateway::readDataState(jobID, {});
        if (!state)
            return ++timesLocked < patience ? Data::Locked : Data::Same;
        timesLocked = 0;
        if (state->version == version)
            return Data::Same;
        version = state->version;
        const JobRecords now = readJobRecords(jobID);
        if (job.header && !now.header)
            throw RecordGone("This job has been deleted.");
        return now == job ? Data::Same : Data::Changed;
    }

    void addSchedule() {
        add(1, Report(*findReport("rptSchedule")).Run().pages);
        schedulePages = int(made.pages.size()) - coverSize;
        scheduled = Schedule::scheduledTanks();
    }

    void make(const Part& part) {
        const TankLine& tank = job.tanks[part.tank];
        arriveAt(part.tank);
        task->tankID = shownText(tank.tankID); // no screen has joined the task
        add(part.entries, pagesOf(part, tank));
    }

    Pages pagesOf(const Part& part, const TankLine& tank) const {
        switch (part.kind) {
        case Part::Kind::Submittal:
            return Report(*findReport(part.what)).Run().pages;
        case Part::Kind::Calculation:
            return Report(*findReport("rptCalculation")).Run().pages;
        case Part::Kind::Specification:
            return pageOf(tank, "Specification", "Typical Specifications", part.what, {});
        case Part::Kind::Drawing:
            return drawingPage(tank, part.what);
        case Part::Kind::Nothing:
            return pageOf(tank, "No documents", {}, part.what, {});
        }
        return {};
    }

    /// A file that is missing or damaged must not cost the user the rest of the package.
    Pages drawingPage(const TankLine& tank, const QString& file) const {
        QByteArray drawing;
        QString instead;
        try {
            drawing = readPicture(file);
        } catch (const Fault&) {
            instead = "The drawing of " + shownText(tank.modelNo) + " cannot be read.";
        }
        return pageOf(tank, "Drawing", {}, instead, drawing);
    }

    Pages pageOf(const TankLine& tank, const QString& heading, const QString& textHeading,
                 const QString& text, const QByteArray& drawing) const {
        Report report(tankPage);
        report.control("lblWhat").text = heading;
        report.control("txtJob").text = jobID;
        report.control("txtTank").text = shownText(tank.tankID);
        report.control("txtModelNo").text = shownText(tank.modelNo);
        report.control("lblText").text = textHeading;
        report.control("txtText").text = text;
        report.control("txtContinuedJob").text = jobID + "   " + shownText(tank.tankID);
        report.control("imgDrawing").svg = drawing;
        report.control("imgDrawing").description = "Drawing of " + shownText(tank.modelNo);
        report.rows.push_back({});
        return report.Run().pages;
    }

    /// Adds the pages to which the next entries of the contents lead.
    void add(int entries, const Pages& added) {
        const qsizetype from = made.pages.size();
        for (int i = 0; i < entries; ++i) {
            const qsizetype place = made.bookmarks.size() - 1; // the cover has no entry
            made.bookmarks.append({plan.entries[place].title, plan.entries[place].depth, int(from)});
            writePageNumber(made.pages, coverSize, place, int(from) - coverSize + 1);
        }
        made.pages.append(added);
        numberPages(from);
    }

    /// The lines of the schedule lead to where their tanks begin; a tank without documents begins where the
    /// next one does.
    void arriveAt(std::size_t tank) {
        while (tankPages.size() <= qsizetype(tank))
            tankPages.append(int(made.pages.size()));
    }

    void finish() {
        const QList<PageLink> titles = titlesOf(made.pages, coverSize);
        for (qsizetype i = 0; i < titles.size() && i + 1 < made.bookmarks.size(); ++i)
            made.links.append({titles[i].page, titles[i].place, made.bookmarks[i + 1].page});
        addScheduleLinks();
        numberPages(0);
    }

    /// Each line of the schedule leads to the first page of its tank, if it has one.
    void addScheduleLinks() {
        QHash<QString, int> pages;
        for (qsizetype tank = 0; tank < tankPages.size(); ++tank)
            pages.insert(shownText(job.tanks[std::size_t(tank)].tankID), tankPages[tank]);
        qsizetype row = 0;
        for (int page = coverSize; page < coverSize + schedulePages; ++page)
            for (const PageText& text : made.pages.at(page).texts) {
                if (text.section != Section::Detail || !text.starts || row == scheduled.size())
                    continue;
                const int none = int(made.pages.size());
                if (const int target = pages.value(scheduled[row++], none); target < none)
                    made.links.append({page, QRectF(text.place), target});
            }
    }

    /// What a page is called: the cover's pages do not count.
    QString labelOf(qsizetype page) const {
        if (page < coverSize)
            return page == 0 ? QStringLiteral("Cover") : QStringLiteral("Cover %1").arg(page + 1);
        return QStringLiteral("%1 of %2")
            .arg(page - coverSize + 1)
            .arg(isDone() ? QString::number(made.pages.size() - coverSize) : QString(Unknown));
    }

    /// The page numbers are those of the package.
    void numberPages(qsizetype from) {
        made.pageLabels.resize(from);
        for (qsizetype page = from; page < made.pages.size(); ++page)
            made.pageLabels.append(labelOf(page));
        for (qsizetype page = from; page < made.pages.size(); ++page)
            for (PageText& text : made.pages[page].texts)
                if (text.pageNumber)
                    text.text = (page < coverSize ? QString() : "Page ") + labelOf(page);
    }

    QString jobID;
    Contents chosen;
    Session::Task task;
    std::optional<quint32> version; // of the data, as the job was read
    int timesLocked = 0;            // one after the other
    JobRecords job;
    Plan plan;
    int next = 0; // part
    int coverSize = 0;
    int schedulePages = 0; // behind the cover
    QStringList scheduled; // the tank of each line of the schedule
    QList<int> tankPages;  // where each tank begins, as far as they are made
};

} // namespace

std::unique_ptr<DocumentMaker> begin(const QString& jobID, const Contents& contents) {
    auto maker = std::make_unique<Maker>(jobID, contents);
    maker->start();
    return maker;
}

} // namespace JobPackage
