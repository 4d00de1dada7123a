#include "documents/schedule/frmSchedule.h"

#include "core/base/Applications.h"
#include "core/base/Fault.h"
#include "core/base/Text.h"
#include "core/shell/DisplayFields.h"
#include "core/shell/Screens.h"
#include "core/shell/Status.h"
#include "core/store/Deletion.h"
#include "core/store/Gateway.h"
#include "core/store/Model.h"
#include "core/store/SessionStore.h"
#include "core/store/TankLine.h"
#include "documents/schedule/ScheduleTable.h"
#include "documents/tags/UnitTags.h"

#include <QHash>

#include <array>
#include <memory>
#include <utility>
#include <vector>

using namespace Catalogue;
using namespace Deletion;
using namespace Gateway;
using namespace Records;
using namespace Schedule;
using namespace StatusBar;

namespace {

const QStringList headings = {"TagID",   "Model No.", "Application", "Volume",  "Dia",   "Ht",
                              "SOP Min", "SOP Max",   "SOT Min",     "SOT Max", "TankID"};
enum Column : std::size_t {
    TagColumn,
    ModelColumn,
    ApplicationColumn,
    VolumeColumn,
    DiaColumn,
    HtColumn,
    SOPMinColumn,
    SOPMaxColumn,
    SOTMinColumn,
    SOTMaxColumn,
    TankColumn,
    ColumnCount
};

/// What all units of a tank line show, once for all of them.
struct LineCells {
    std::array<QString, ColumnCount> texts;
    std::array<QVariant, ColumnCount> sortKeys;

    /// Numbers sort by value; a cell without a stored number is blank.
    void setNumber(Column column, const std::optional<double>& value, const QString& text) {
        if (!value)
            return;
        texts[column] = text;
        sortKeys[column] = *value;
    }
};

LineCells cellsOf(const TankLine& tank) {
    LineCells cells;
    cells.texts[ModelColumn] = shownText(tank.modelNo);
    for (const auto& [column, value, unitOfMeasure] : {std::tuple{SOPMinColumn, tank.sopMin, " psi"},
                                                       {SOPMaxColumn, tank.sopMax, " psi"},
                                                       {SOTMinColumn, tank.sotMin, "°F"},
                                                       {SOTMaxColumn, tank.sotMax, "°F"}})
        cells.setNumber(column, value, shownText(value) + unitOfMeasure);
    cells.texts[TankColumn] = shownText(tank.tankID);
    cells.sortKeys[TankColumn] = tank.tankNo.value_or(0);
    return cells;
}

/// Adds the catalogue's data for a line's model.
void showModel(const Model& model, const QString& application, LineCells& cells) {
    cells.texts[ApplicationColumn] = application;
    cells.setNumber(VolumeColumn, model.tankVolume, shownText(model.tankVolume, "#,##0 gal"));
    cells.setNumber(DiaColumn, model.tankOD, shownText(model.tankOD));
    cells.setNumber(HtColumn, model.oal, shownText(model.oal));
    if (applicationCoded(shownText(model.app).toStdString()) == Application::Hydropneumatic)
        for (const std::size_t temperature : {SOTMinColumn, SOTMaxColumn}) { // this tank has no temperatures
            cells.texts[temperature].clear();
            cells.sortKeys[temperature].clear();
        }
}

/// A unit. It has a tag of its own; everything else it shows is its line's and is looked up when it comes in
/// sight.
class UnitRow : public ListRow {
  public:
    UnitRow(QString unitTag, std::shared_ptr<const LineCells> shared)
        : tag(std::move(unitTag)), line(std::move(shared)) {}

  protected:
    QVariant cell(int column, int role) const override {
        const auto place = static_cast<Column>(column);
        if (role == Qt::UserRole)
            return line->sortKeys[place];
        return place == TagColumn ? tag : line->texts[place];
    }

  private:
    QString tag;
    std::shared_ptr<const LineCells> line;
};

/// Adds what the catalogue tells of the lines' models.
void showModels(const std::vector<std::shared_ptr<LineCells>>& lines) {
    QStringList names;
    for (const auto& line : lines)
        names.append(line->texts[ModelColumn]);
    const QHash<QString, Model> models = findModels(names, Model::measures());
    QHash<QString, QString> applications; // each name is read once
    for (const auto& line : lines) {
        const auto model = models.constFind(line->texts[ModelColumn].toCaseFolded());
        if (model == models.cend())
            continue; // has left the catalogue: its columns stay blank
        const QString code = shownText(model->app);
        if (!applications.contains(code))
            applications.insert(code, applicationDescription(code));
        showModel(*model, applications.value(code), *line);
    }
}

/// Adds the units of a job's lines, and the lines themselves as far as they have units.
void addUnits(const QString& job, ListRows& units, std::vector<std::shared_ptr<LineCells>>& lines) {
    for (const TankLine& tank : tankLinesOf(job, openDatabase("User"), TankLine::scheduled())) {
        const int quantity = ToInt16(tank.qty.value_or(0));
        if (quantity < 1)
            continue;
        lines.push_back(std::make_shared<LineCells>(cellsOf(tank)));
        for (int number = 1; number <= quantity; ++number)
            units.push_back(std::make_unique<UnitRow>(UnitTags::tagOf(tank, number), lines.back()));
    }
}

} // namespace

frmSchedule::frmSchedule() : ResultScreen("frmSchedule") {
    setupUi(this);
    prepare();
    sortByHeadings(lvOptions);
    offersSubmittal(bttnPreview, bttnPrint);
    on(bttnDelete, ".tbToolbar", [this] { deleteTank(); });
}

void frmSchedule::Load() {
    QString job;
    if (Session::JobID.read(job)) {
        lblJobID->setText(job);
        setStatusText("Schedule for Job " + job);
    }
    FillScheduleTable();
    Screens::startReading(*this);
    FillListView();
}

/// Rows read before a failure are still listed.
void frmSchedule::FillListView() {
    const Hourglass hourglass;
    ListRows units;
    trap(".FillListView", [&] {
        std::vector<std::shared_ptr<LineCells>> lines;
        addUnits(lblJobID->text(), units, lines);
        showModels(lines);
    });
    fillList(lvOptions, headings, std::move(units));
}

/// Deletes the whole tank line of the selected unit. The work table stays as it is: the report skips the
/// units of a deleted line.
void frmSchedule::deleteTank() {
    const auto selected = lvOptions->selectedItems();
    if (selected.isEmpty())
        throw Fault(Fault::ObjectNotSet, "Object variable or With block variable not set");
    if (selected.first()->text(TagColumn).isEmpty())
        return;
    if (!confirmDeletion("Selected item will be permantently deleted!\n\rDo you wish to continue?"))
        return;
    deleteTankLines({selected.first()->text(TankColumn)});
    FillListView();
}
