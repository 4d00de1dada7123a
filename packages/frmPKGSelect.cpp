#include "packages/frmPKGSelect.h"

#include "core/shell/Dialogs.h"
#include "core/shell/DisplayFields.h"
#include "core/shell/FieldChecks.h"
#include "core/shell/Hourglass.h"
#include "core/shell/Lists.h"
#include "core/shell/Status.h"
#include "core/store/Gateway.h"
#include "core/store/Model.h"
#include "core/store/SessionStore.h"
#include "documents/drawings/Drawings.h"

#include <QDate>

using namespace Catalogue;
using namespace Drawings;
using namespace Fields;
using namespace Records;
using namespace StatusBar;

namespace {

constexpr QSize drawingArea(505, 273); // the picture box as laid out in the form

} // namespace

frmPKGSelect::frmPKGSelect() : ResultScreen("frmPKGSelect") {
    setupUi(this);
    prepare();
    SortByHeadings(lvOptions);
    enlarges(imgDrawing, [this] { return familyDrawing; });
    const struct {
        QRadioButton* option;
        const char* packageClass;
        const char* drawing;
    } families[] = {{optPKG, "PKG", "PKG1"},
                    {optPKGD, "PKGD", "PKG2"},
                    {OptPKGT, "PKGT", "PKG3"},
                    {optFDM, "FDM", "PKG4"}};
    for (const auto& family : families)
        on(family.option, "." + family.option->objectName(),
           [this, family] { SelectFamily(family.packageClass, family.drawing); });
    for (QLineEdit* box : {txtModelNo, txtQty, txtSysPressure})
        connect(box, &QLineEdit::textChanged, this, [this] { Dirty = true; });
    for (QLineEdit* box : {txtQty, txtSysPressure})
        onLeaving(box, "." + box->objectName() + "_Validate", [box] { return ValidateNumeric(box, true); });
    connect(lvOptions, &QTreeWidget::itemSelectionChanged, this,
            [this] { trap(".lvOptions", [this] { SelectModel(); }); });

    on(bttnSave, ".tbToolbar", [this] { procedure(".SaveRecord", [this] { SaveRecord(); }); });
    offersSubmittal(bttnPreview, bttnPrint);
    opens(bttnSpecs, "frmResultSpecs");
    on(bttnAddMore, ".tbToolbar", [this] { // the mode does not change
        Session::TankID.write("");
        leaveFor("frmClassSelect");
    });
    on(bttnRecalc, ".tbToolbar", [] { Dialogs::current().beep(); }); // nothing here can be recalculated
    opens(bttnUnitTagID, "frmUnitTagData");
    opens(bttnSchedule, "frmSchedule");
}

void frmPKGSelect::Load() {
    txtModelNo->setMaxLength(TankLineTextSize("ModelNo"));
    optPKG->click();
    SetStatusText("Select Package");
    QString jobID;
    if (Session::JobID.read(jobID)) {
        setTitle("Select Glycol Make-up Package for Job: " + jobID);
        lblJobID->setText(jobID);
    }
    ShowChanges();
}

/// Shows what is stored for the line, without leaving the family that the user is viewing.
void frmPKGSelect::ShowChanges() {
    asRead = ReadTankLineToEdit();
    if (!asRead)
        return;
    txtModelNo->setText(Shown(asRead->modelNo));
    txtQty->setText(Shown(asRead->qty));
    txtSysPressure->setText(Shown(asRead->sopMax));
    Dirty = false; // what is stored needs no saving
}

void frmPKGSelect::SelectFamily(const QString& packageClass, const QString& drawing) {
    FillListView(packageClass);
    familyDrawing = drawing;
    imgDrawing->setGeometry(QRect({0, 0}, drawingArea)); // or the box drifts between drawings
    QString path;
    imgDrawing->setVisible(LoadDrawing(imgDrawing, drawingArea.width(), drawingArea.height(), drawing, path));
}

void frmPKGSelect::FillListView(const QString& packageClass) {
    SetStatusText("Select Package");
    const QSignalBlocker noSelection(lvOptions);
    ListRows rows;
    for (const Model& model : ModelsOf(packageClass)) {
        rows.push_back(std::make_unique<ListRow>(
            QStringList{Shown(model.modelDscrptn),
                        Shown(model.makeUpCapacity) + "gpm @ " + Shown(model.tankWkPressure) + " psi",
                        Shown(model.pumpHp), Shown(model.tankVolume) + " gal",
                        Shown(model.minSysPressure) + "-" + Shown(model.tankWkPressure) + " psi",
                        Shown(model.oal), Shown(model.tankOD), Shown(model.shipWeight) + " lbs"}));
        int column = 0;
        for (const auto& key : {model.makeUpCapacity, model.pumpHp, model.tankVolume, model.minSysPressure,
                                model.oal, model.tankOD, model.shipWeight}) {
            ++column;
            if (key)
                rows.back()->setSortKey(column, *key);
        }
    }
    FillList(lvOptions,
             {"Model No.", "Make Up Capacity", "Pump hp", "Volume", "psi Range", "Height", "Width", "Weight"},
             std::move(rows), Selected::None);
}

void frmPKGSelect::SelectModel() {
    const auto selected = lvOptions->selectedItems();
    if (selected.isEmpty())
        return;
    txtModelNo->setText(selected.first()->text(0));
    if (txtQty->text().isEmpty())
        txtQty->setText("1");
    txtQty->setFocus();
}

void frmPKGSelect::SaveRecord() {
    if (!Dirty)
        return;
    const Hourglass hourglass;
    for (QLineEdit* box : {txtQty, txtSysPressure}) // an empty box counts as 0 even if never visited
        if (!ValidateNumeric(box, true))
            return;
    TankLine line;
    line.tankClass = ""; // the model's, whichever family the list shows
    if (const auto model = ReadModel(txtModelNo->text()))
        line.tankClass = Shown(model->series);
    line.jobID = lblJobID->text();
    line.dateCreated = QDate::currentDate().startOfDay(); // of the last save
    line.modelNo = txtModelNo->text();
    line.qty = ToInt32(ToNumber(txtQty->text()));
    line.sopMax = ToNumber(txtSysPressure->text());
    bool stored = false;
    const bool saved = saves([&](Record::IfChanged ifChanged) {
        stored = SaveTankLine(line, TankLine::package(), asRead, ifChanged);
    });
    if (!saved || !stored)
        return;
    asRead = ReadTankLine(Session::TankID.text());
    SetStatusText("Record Saved");
    Dirty = false;
}

bool frmPKGSelect::QueryUnload() {
    if (Tag != "1")
        SetStatusBarText();
    return true;
}
