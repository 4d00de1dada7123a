#include "extras/package/PackagePlan.h"

#include "core/base/Fault.h"
#include "core/shell/DisplayFields.h"
#include "core/store/Catalogue.h"
#include "core/store/Model.h"
#include "documents/drawings/Drawings.h"
#include "documents/report/Reports.h"
#include "documents/specifications/ResultSpecification.h"
#include "documents/submittals/Submittals.h"

#include <QHash>

#include <utility>

namespace JobPackage {

namespace {

class Planner {
  public:
    Planner(const JobRecords& planned, const Contents& wanted) : job(planned), chosen(wanted) {}

    Plan plan() {
        result.entries.append({"Tank schedule", 0});
        for (std::size_t tank = 0; tank < job.tanks.size(); ++tank)
            addTank(tank);
        return std::move(result);
    }

  private:
    void addTank(std::size_t index) {
        const TankLine& tank = job.tanks[index];
        at = index;
        title = "Tank " + shownText(tank.tankID);
        if (tank.modelNo && !tank.modelNo->isEmpty())
            title += ", " + QString::number(tank.qty.value_or(0)) + " × " + *tank.modelNo;
        begun = false;
        const auto model = tank.modelNo ? modelOf(*tank.modelNo) : std::nullopt;
        if (!model)
            return addNothing(tank);
        if (const QString report = Submittals::SetReport(*model); chosen.submittals && findReport(report))
            add(Part::Kind::Submittal, "Submittal", report);
        if (chosen.calculations)
            add(Part::Kind::Calculation, "Calculation sheet", {});
        if (chosen.specifications)
            addSpecification(tank);
        if (chosen.drawings)
            addDrawing(shownText(model->tankDraw));
    }

    void add(Part::Kind kind, const QString& document, const QString& what) {
        const bool first = !std::exchange(begun, true);
        if (first)
            result.entries.append({title, 0});
        result.entries.append({document, 1});
        result.parts.push_back({.kind = kind, .tank = at, .what = what, .entries = first ? 2 : 1});
    }

    void addNothing(const TankLine& tank) {
        result.entries.append({title, 0});
        result.parts.push_back({.kind = Part::Kind::Nothing,
                                .tank = at,
                                .what = shownText(tank.modelNo).isEmpty()
                                            ? QStringLiteral("No model has been chosen for this tank yet.")
                                            : QStringLiteral("The model is not in the catalogue.")});
    }

    void addSpecification(const TankLine& tank) {
        // The same that the submittal names.
        const Specification specification = resultSpecification(tank, job.representative());
        const QString text = (specification.text + "\n\n" + specification.lastLine).trimmed();
        if (!text.isEmpty())
            add(Part::Kind::Specification, "Specification", text);
    }

    void addDrawing(const QString& name) {
        if (name.isEmpty())
            return;
        auto known = drawings.constFind(name);
        if (known == drawings.cend()) {
            const auto found = Catalogue::findDrawing(name);
            known = drawings.insert(name, found ? std::optional(fileOf(name, found->ending)) : std::nullopt);
        }
        if (*known)
            add(Part::Kind::Drawing, "Drawing", **known);
    }

    /// The file of a drawing; empty if its name is not that of a file in the drawings folder.
    static QString fileOf(const QString& name, const QString& ending) {
        try {
            return drawingPath(name, ending);
        } catch (const Fault&) {
            return {};
        }
    }

    /// The lines of a job share a few models.
    std::optional<Model> modelOf(const QString& name) {
        auto known = models.constFind(name);
        if (known == models.cend())
            known = models.insert(name, Catalogue::findModel(name));
        return *known;
    }

    const JobRecords& job;
    const Contents& chosen;
    Plan result;
    QHash<QString, std::optional<Model>> models;
    QHash<QString, std::optional<QString>> drawings; // their files; nothing for one that the catalogue lacks

    // Of the current tank:
    std::size_t at = 0;
    QString title;
    bool begun = false; // has a document
};

} // namespace

QString JobRecords::representative() const {
    return representatives.empty() ? QString()
                                   : shownText(representatives.front().companyName).replace("&&", "&");
}

JobRecords readJobRecords(const QString& jobID) {
    return {.header = Records::readJobHeader(jobID),
            .tanks = Records::tankLinesOf(jobID),
            .representatives = Records::ownRepresentatives()};
}

Plan planOf(const JobRecords& job, const Contents& contents) {
    return Planner(job, contents).plan();
}

} // namespace JobPackage
