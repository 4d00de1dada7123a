#include "extras/package/JobPackage.h"

#include "core/shell/DisplayFields.h"
#include "core/store/Catalogue.h"
#include "core/store/JobHeader.h"
#include "core/store/Model.h"
#include "core/store/OwnDetails.h"
#include "core/store/Representative.h"
#include "core/store/SessionStore.h"
#include "core/store/TankLine.h"
#include "documents/drawings/Drawings.h"
#include "documents/report/Imprint.h"
#include "documents/report/Picture.h"
#include "documents/report/Reports.h"
#include "documents/schedule/ScheduleTable.h"
#include "documents/specifications/ResultSpecification.h"
#include "documents/submittals/Submittals.h"

#include <QHash>

#include <algorithm>

using namespace Records;

namespace JobPackage {

namespace {

void prepared(Report& /*report*/) {} // its caller fills it in

constexpr ReportKind cover = {"rptPackage", "rptPackage", "User", prepared, ReportOf::Job};
constexpr ReportKind tankPage = {"rptTankPage", "rptTankPage", "User", prepared, ReportOf::Job};

/// Puts the session's tank line back.
class TankAtWork {
  public:
    TankAtWork() : before(Session::TankID.text()) {}
    ~TankAtWork() { Session::TankID.write(before); }
    TankAtWork(const TankAtWork&) = delete;
    TankAtWork& operator=(const TankAtWork&) = delete;

  private:
    QString before;
};

class Maker {
  public:
    Maker(const QString& job, const Contents& wanted) : jobID(job), chosen(wanted) {}

    void addSchedule() {
        Schedule::prepareScheduleTable();
        add("Tank schedule", 0, Report(*findReport("rptSchedule")).Run().pages);
        schedulePages = int(pages.size());
        scheduled = Schedule::scheduledTanks();
    }

    void addTank(const TankLine& tank) {
        const QString tankID = shownText(tank.tankID);
        tankPages.insert(tankID, int(pages.size()));
        Session::TankID.write(tankID);
        const auto model = tank.modelNo ? Catalogue::findModel(*tank.modelNo) : std::nullopt;
        QString title = "Tank " + tankID;
        if (tank.modelNo && !tank.modelNo->isEmpty())
            title += ", " + QString::number(tank.qty.value_or(0)) + " × " + *tank.modelNo;
        const qsizetype before = marks.size();
        if (!model) {
            const QString reason = shownText(tank.modelNo).isEmpty()
                                       ? QStringLiteral("No model has been chosen for this tank yet.")
                                       : QStringLiteral("The model is not in the catalogue.");
            return add(title, 0, pageOf(tank, "No documents", {}, reason, {}));
        }
        if (const QString report = Submittals::SetReport(*tank.modelNo); chosen.submittals)
            if (const ReportKind* kind = findReport(report))
                add("Submittal", 1, Report(*kind).Run().pages);
        if (chosen.calculations)
            add("Calculation sheet", 1, Report(*findReport("rptCalculation")).Run().pages);
        if (chosen.specifications)
            addSpecification(tank);
        if (chosen.drawings)
            addDrawing(tank, *model);
        if (marks.size() > before) // the line's own entry leads to its first document
            marks.insert(before, {title, 0, marks[before].page});
    }

    Document document() {
        Document whole;
        whole.title = "Package, " + jobID;
        whole.author = Imprint::maker;
        whole.fileName = jobID + " package";
        whole.of = ReportOf::Job;
        whole.pages = coverPages();
        const qsizetype first = whole.pages.size();
        whole.pages += pages;
        whole.bookmarks.append({"Cover", 0, 0});
        for (const Bookmark& mark : marks)
            whole.bookmarks.append({mark.title, mark.depth, mark.page + int(first)});
        addLinks(whole, int(first));
        addScheduleLinks(whole, int(first));
        number(whole.pages, first);
        for (qsizetype page = 0; page < whole.pages.size(); ++page)
            whole.pageLabels.append(labelOf(page, first, whole.pages.size()));
        if (const auto own = ownRepresentatives(); !own.empty() && own.front().companyName)
            whole.author = representative();
        return whole;
    }

  private:
    void add(const QString& title, int depth, const Pages& added) {
        marks.append({title, depth, int(pages.size())});
        pages.append(added);
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

    void addSpecification(const TankLine& tank) {
        // The same that the submittal names.
        const Specification specification = resultSpecification(tank, representative());
        const QString text = (specification.text + "\n\n" + specification.lastLine).trimmed();
        if (!text.isEmpty())
            add("Specification", 1, pageOf(tank, "Specification", "Typical Specifications", text, {}));
    }

    void addDrawing(const TankLine& tank, const Model& model) {
        const QString name = shownText(model.tankDraw);
        const auto known = name.isEmpty() ? std::nullopt : Catalogue::findDrawing(name);
        if (known)
            add("Drawing", 1, pageOf(tank, "Drawing", {}, {}, readPicture(drawingPath(name, known->ending))));
    }

    static QString representative() {
        const auto own = ownRepresentatives();
        return own.empty() ? QString() : shownText(own.front().companyName).replace("&&", "&");
    }

    Pages coverPages() const {
        Report report(cover);
        const JobHeader header = readJobHeader(jobID).value_or(JobHeader());
        report.control("txtJob").text = jobID;
        report.control("txtJobDscrptn").text = shownText(header.jobDscrptn);
        report.control("txtEngineer").text = shownText(header.engineer);
        report.control("txtContractor").text = shownText(header.contractor);
        report.control("txtRep").text = representative();
        report.control("txtRevision").text = chosen.revision;
        report.control("txtNote").text = chosen.note;
        report.control("txtRunningJob").text = jobID;
        addOwn(report);
        for (const Bookmark& mark : marks)
            report.rows.push_back({{"What", QString(qsizetype(mark.depth) * 4, u' ') + mark.title},
                                   {"Page", QString::number(mark.page + 1)}});
        return report.Run().pages;
    }

    /// Puts the engineer's own logo and address on the cover, if the setup has them.
    static void addOwn(Report& report) {
        constexpr double height = 64; // points of both
        const OwnDetails own = readOwnDetails();
        QStringList lines{shownText(own.address1), shownText(own.address2), shownText(own.phoneNo)};
        lines.removeAll(QString());
        if (!own.name && !own.logo && lines.isEmpty())
            return;
        report.layout().section(Section::ReportHeader)->height += height;
        report.control("lblOwn").visible = own.name || !lines.isEmpty();
        report.control("txtOwnName").text = shownText(own.name);
        report.control("txtOwnAddress").text = lines.join(u'\n');
        ReportControl& logo = report.control("imgOwnLogo");
        logo.visible = own.logo.has_value();
        logo.svg = shownText(own.logo).toUtf8();
        for (const char* text : {"lblOwn", "txtOwnName", "txtOwnAddress"})
            if (!logo.visible)
                report.control(text).place.moveLeft(0);
        logo.description = own.name ? "Logo of " + *own.name : QStringLiteral("Logo");
    }

    /// Each line of the contents leads to its page.
    void addLinks(Document& whole, int coverSize) const {
        qsizetype mark = 0;
        for (int page = 0; page < coverSize; ++page)
            for (const PageText& text : std::as_const(whole.pages[page]).texts)
                if (text.section == Section::Detail && !(text.style->alignment & Qt::AlignRight) &&
                    mark < marks.size())
                    whole.links.append({page, QRectF(text.place), marks[mark++].page + coverSize});
    }

    /// Each line of the schedule leads to the first page of its tank, if it has one.
    void addScheduleLinks(Document& whole, int coverSize) const {
        qsizetype row = 0;
        for (int page = coverSize; page < coverSize + schedulePages; ++page)
            for (const PageText& text : std::as_const(whole.pages[page]).texts) {
                if (text.section != Section::Detail || !text.starts || row == scheduled.size())
                    continue;
                const int target = tankPages.value(scheduled[row++], int(pages.size()));
                if (target < pages.size())
                    whole.links.append({page, QRectF(text.place), target + coverSize});
            }
    }

    /// What a page is called: the cover's pages do not count.
    static QString labelOf(qsizetype page, qsizetype coverSize, qsizetype all) {
        if (page < coverSize)
            return page == 0 ? QStringLiteral("Cover") : QStringLiteral("Cover %1").arg(page + 1);
        return QStringLiteral("%1 of %2").arg(page - coverSize + 1).arg(all - coverSize);
    }

    /// The page numbers are those of the package.
    static void number(Pages& all, qsizetype coverSize) {
        for (qsizetype page = 0; page < all.size(); ++page)
            for (PageText& text : all[page].texts)
                if (text.pageNumber)
                    text.text =
                        (page < coverSize ? QString() : "Page ") + labelOf(page, coverSize, all.size());
    }

    QString jobID;
    Contents chosen;
    Pages pages;           // behind the cover
    QList<Bookmark> marks; // to them
    int schedulePages = 0; // the first of them
    QStringList scheduled; // the tank of each line of the schedule
    QHash<QString, int> tankPages;
};

} // namespace

std::optional<Document> make(const QString& jobID, const Contents& contents,
                             const std::function<bool(int done, int all)>& goOn) {
    const TankAtWork atWork;
    Maker maker(jobID, contents);
    maker.addSchedule();
    const std::vector<TankLine> tanks = tankLinesOf(jobID);
    for (std::size_t i = 0; i < tanks.size(); ++i) {
        if (!goOn(int(i), int(tanks.size())))
            return std::nullopt;
        maker.addTank(tanks[i]);
    }
    return maker.document();
}

} // namespace JobPackage
