#include "documents/schedule/frmSchedule.h"

#include "core/base/Applications.h"
#include "core/base/Fault.h"
#include "core/base/Text.h"
#include "core/shell/DisplayFields.h"
#include "core/shell/Screens.h"
#include "core/shell/Status.h"
#include "core/store/Deletion.h"
#include "core/store/Model.h"
#include "core/store/SessionStore.h"
#include "core/store/TankLine.h"
#include "documents/schedule/ScheduleTable.h"
#include "documents/tags/UnitTags.h"

#include <QHash>

using namespace Catalogue;
using namespace Deletion;
using namespace Records;
using namespace Schedule;
using namespace StatusBar;

namespace {

const QStringList headings = {"TagID",   "Model No.", "Application", "Volume",  "Dia",   "Ht",
                              "SOP Min", "SOP Max",   "SOT Min",     "SOT Max", "TankID"};
enum Column {
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
    TankColumn
};

/// Numbers sort by value; a cell without a stored number is blank.
void setNumber(ListRow& unit, int column, const std::optional<double>& value, const QString& text) {
    if (!value)
        return;
    unit.setText(column, text);
    unit.setSortKey(column, *value);
}

std::unique_ptr<ListRow> rowOf(const TankLine& tank, int number) {
    auto unit = std::make_unique<ListRow>();
    unit->setText(TagColumn, UnitTags::tagOf(tank, number));
    unit->setText(ModelColumn, shownText(tank.modelNo));
    for (const auto& [column, value, unitOfMeasure] : {std::tuple{SOPMinColumn, tank.sopMin, " psi"},
                                                       {SOPMaxColumn, tank.sopMax, " psi"},
                                                       {SOTMinColumn, tank.sotMin, "°F"},
                                                       {SOTMaxColumn, tank.sotMax, "°F"}})
        setNumber(*unit, column, value, shownText(value) + unitOfMeasure);
    unit->setText(TankColumn, shownText(tank.tankID));
    unit->setSortKey(TankColumn, tank.tankNo.value_or(0));
    return unit;
}

/// Shows the catalogue's data for a model in the rows of its units.
void showModel(const Model& model, const QString& application, const QList<ListRow*>& units) {
    const bool drawdown = applicationCoded(shownText(model.app).toStdString()) == Application::Hydropneumatic;
    for (ListRow* unit : units) {
        unit->setText(ApplicationColumn, application);
        setNumber(*unit, VolumeColumn, model.tankVolume, shownText(model.tankVolume, "#,##0 gal"));
        setNumber(*unit, DiaColumn, model.tankOD, shownText(model.tankOD));
        setNumber(*unit, HtColumn, model.oal, shownText(model.oal));
        if (!drawdown)
            continue;
        for (const int temperature : {SOTMinColumn, SOTMaxColumn}) { // this tank has no temperatures
            unit->setText(temperature, {});
            unit->setSortKey(temperature, {});
        }
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
        addUnits(units);
        QHash<QString, QList<ListRow*>> unitsOf;
        for (const std::unique_ptr<ListRow>& unit : units)
            unitsOf[unit->text(ModelColumn)].append(unit.get());
        const QHash<QString, Model> models = findModels(unitsOf.keys());
        QHash<QString, QString> applications; // each name is read once
        for (auto one = unitsOf.cbegin(); one != unitsOf.cend(); ++one) {
            const auto model = models.constFind(one.key().toCaseFolded());
            if (model == models.cend())
                continue; // has left the catalogue: its columns stay blank
            const QString code = shownText(model->app);
            if (!applications.contains(code))
                applications.insert(code, applicationDescription(code));
            showModel(*model, applications.value(code), *one);
        }
    });
    fillList(lvOptions, headings, std::move(units));
}

void frmSchedule::addUnits(ListRows& units) const {
    for (const TankLine& tank : tankLinesOf(lblJobID->text())) {
        const int quantity = ToInt16(tank.qty.value_or(0));
        for (int number = 1; number <= quantity; ++number)
            units.push_back(rowOf(tank, number));
    }
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
