#include "documents/schedule/frmSchedule.h"

#include "core/base/Fault.h"
#include "core/base/Text.h"
#include "core/shell/Status.h"
#include "core/store/Gateway.h"
#include "core/store/SessionStore.h"
#include "core/store/SqlText.h"
#include "documents/schedule/ScheduleTable.h"
#include "documents/tags/UnitTags.h"

#include <QHash>

using namespace UtilityFunctions;

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

/// Numbers stand below each other on the right, and sort by what they are; nothing shows where none is
/// stored.
void setNumber(ListRow& unit, int column, const Recordset::Field& value, const QString& text) {
    unit.setTextAlignment(column, Qt::AlignRight | Qt::AlignVCenter);
    if (value.isNull())
        return;
    unit.setText(column, text);
    unit.setSortKey(column, value.number());
}

std::unique_ptr<ListRow> rowOf(Recordset& tank, int number) {
    auto unit = std::make_unique<ListRow>();
    unit->setText(TagColumn, UnitTags::TagOf(tank, number, UnitTags::Column(number)));
    unit->setText(ModelColumn, tank["ModelNo"].text());
    for (const auto& [column, name, unitOfMeasure] : {std::tuple{SOPMinColumn, "SOPMin", " psi"},
                                                      {SOPMaxColumn, "SOPMax", " psi"},
                                                      {SOTMinColumn, "SOTMin", "°F"},
                                                      {SOTMaxColumn, "SOTMax", "°F"}})
        setNumber(*unit, column, tank[name], tank[name].text() + unitOfMeasure);
    unit->setText(TankColumn, tank["TankID"].text());
    unit->setSortKey(TankColumn, tank["TankNo"].number());
    return unit;
}

/// Shows what the catalogue says of the models of some units; one that has left it leaves them blank.
void showModel(const QString& modelNo, const QList<ListRow*>& units) {
    Rows model("Sys", "SELECT * FROM tblModelMaster INNER JOIN tblAppMaster ON tblModelMaster.App = "
                      "tblAppMaster.App WHERE ModelDscrptn = '" +
                          SqlEscape(modelNo) + "'");
    if (model.AtEnd())
        return;
    for (ListRow* unit : units) {
        unit->setText(ApplicationColumn, model["Description"].text());
        setNumber(*unit, VolumeColumn, model["TankVolume"],
                  FormattedNumber(model["TankVolume"].number(), "#,##0 gal"));
        setNumber(*unit, DiaColumn, model["TankOD"], model["TankOD"].text());
        setNumber(*unit, HtColumn, model["OAL"], model["OAL"].text());
        if (model["App"].text() != "HYD")
            continue;
        for (const int temperature : {SOTMinColumn, SOTMaxColumn}) { // such a tank has none of its own
            unit->setText(temperature, {});
            unit->setSortKey(temperature, {});
        }
    }
}

} // namespace

frmSchedule::frmSchedule() : ResultScreen("frmSchedule") {
    setupUi(this);
    prepare();
    SortByHeadings(lvOptions);
    offersSubmittal(bttnPreview, bttnPrint);
    on(bttnDelete, ".tbToolbar", [this] { DeleteTank(); });
}

void frmSchedule::Load() {
    QString job;
    if (Session::JobID.read(job)) {
        lblJobID->setText(job);
        SetStatusText("Schedule for Job " + job);
    }
    FillScheduleTable();
    FillListView();
}

/// What was read before a failure is listed all the same.
void frmSchedule::FillListView() {
    const Hourglass hourglass;
    ListRows units;
    trap(".FillListView", [&] {
        AddUnits(units);
        QHash<QString, QList<ListRow*>> models; // each is read once
        for (const std::unique_ptr<ListRow>& unit : units)
            models[unit->text(ModelColumn)].append(unit.get());
        for (auto model = models.cbegin(); model != models.cend(); ++model)
            showModel(model.key(), *model);
    });
    FillList(lvOptions, headings, std::move(units));
    for (int column = VolumeColumn; column <= SOTMaxColumn; ++column)
        lvOptions->headerItem()->setTextAlignment(column, Qt::AlignRight | Qt::AlignVCenter);
}

void frmSchedule::AddUnits(ListRows& units) const {
    Rows tank("User", "SELECT * FROM tblJobData WHERE JobID = '" + SqlEscape(lblJobID->text()) + "'");
    for (; !tank.AtEnd(); tank->MoveNext()) {
        const int quantity = ToInt16(tank["Qty"].number());
        for (int number = 1; number <= quantity; ++number)
            units.push_back(rowOf(*tank, number));
    }
}

/// Deletes the whole tank line of the selected unit. The work table stays as it is: the report leaves out the
/// units of a line that is gone.
void frmSchedule::DeleteTank() {
    const auto selected = lvOptions->selectedItems();
    if (selected.isEmpty())
        throw Fault(Fault::ObjectNotSet, "Object variable or With block variable not set");
    if (selected.first()->text(TagColumn).isEmpty())
        return;
    if (!ConfirmDeletion("Selected item will be permantently deleted!\n\rDo you wish to continue?"))
        return;
    Execute("User", "DELETE * FROM tblJobData WHERE TankID = '" +
                        SqlEscape(selected.first()->text(TankColumn)) + "'");
    FillListView();
}
