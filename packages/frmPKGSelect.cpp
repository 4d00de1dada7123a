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
#include "documents/submittals/SizingFacts.h"

#include <QApplication>
#include <QDate>
#include <QKeyEvent>

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
    sortByHeadings(lvOptions);
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
           [this, family] { selectFamily(family.packageClass, family.drawing); });
    for (QLineEdit* box : {txtModelNo, txtQty, txtSysPressure})
        connect(box, &QLineEdit::textChanged, this, [this] {
            Dirty = true;
            setStatusText("Not saved");
        });
    for (QLineEdit* box : {txtQty, txtSysPressure})
        onLeaving(box, "." + box->objectName() + "_Validate", [box] { return ValidateNumeric(box, true); });
    connect(lvOptions, &QTreeWidget::itemSelectionChanged, this,
            [this] { trap(".lvOptions", [this] { selectModel(); }); });

    on(bttnSave, ".tbToolbar", [this] { procedure(".SaveRecord", [this] { SaveRecord(); }); });
    offersSubmittal(bttnPreview, bttnPrint);
    offersCalculation(bttnCalculation);
    lblNotes->hide();
    opens(bttnSpecs, "frmResultSpecs");
    opens(bttnOverview, "frmJobOverview");
    on(bttnAddMore, ".tbToolbar", [this] { // the mode does not change
        Session::TankID.write("");
        leaveFor("frmClassSelect");
    });
    on(bttnRecalc, ".tbToolbar", [] { Dialogs::current().beep(); }); // nothing here can be recalculated
    opens(bttnUnitTagID, "frmUnitTagData");
    opens(bttnSchedule, "frmSchedule");
}

void frmPKGSelect::Load() {
    txtModelNo->setMaxLength(tankLineTextSize("ModelNo"));
    optPKG->click();
    setStatusText("Select Package");
    QString jobID;
    if (Session::JobID.read(jobID)) {
        setTitle("Select Glycol Make-up Package for Job: " + jobID);
        lblJobID->setText(jobID);
    }
    showChanges();
}

/// Shows what is stored for the line, without leaving the family that the user is viewing.
void frmPKGSelect::showChanges() {
    asRead = readTankLineToEdit();
    if (!asRead)
        return;
    txtModelNo->setText(shownText(asRead->modelNo));
    txtQty->setText(shownText(asRead->qty));
    txtSysPressure->setText(shownText(asRead->sopMax));
    showNotes(lblNotes, SizingNotes::factsOf(*asRead, findModel(shownText(asRead->modelNo))));
    Dirty = false; // what is stored needs no saving
    setStatusText("Select Package");
}

void frmPKGSelect::selectFamily(const QString& packageClass, const QString& drawing) {
    stopSorting(lvOptions);
    FillListView(packageClass);
    familyDrawing = drawing;
    imgDrawing->setGeometry(QRect({0, 0}, drawingArea)); // or the box drifts between drawings
    QString path;
    imgDrawing->setVisible(LoadDrawing(imgDrawing, drawingArea.width(), drawingArea.height(), drawing, path));
}

void frmPKGSelect::FillListView(const QString& packageClass) {
    setStatusText("Select Package");
    const QSignalBlocker noSelection(lvOptions);
    ListRows rows;
    for (const Model& model : modelsOf(packageClass)) {
        rows.push_back(std::make_unique<ListRow>(QStringList{
            shownText(model.modelDscrptn),
            shownText(model.makeUpCapacity) + "gpm @ " + shownText(model.tankWkPressure) + " psi",
            shownText(model.pumpHp), shownText(model.tankVolume) + " gal",
            shownText(model.minSysPressure) + "-" + shownText(model.tankWkPressure) + " psi",
            shownText(model.oal), shownText(model.tankOD), shownText(model.shipWeight) + " lbs"}));
        int column = 0;
        for (const auto& key : {model.makeUpCapacity, model.pumpHp, model.tankVolume, model.minSysPressure,
                                model.oal, model.tankOD, model.shipWeight}) {
            ++column;
            if (key)
                rows.back()->setSortKey(column, *key);
        }
    }
    fillList(lvOptions,
             {"Model No.", "Make Up Capacity", "Pump hp", "Volume", "psi Range", "Height", "Width", "Weight"},
             std::move(rows), Selected::None);
}

void frmPKGSelect::selectModel() {
    const auto selected = lvOptions->selectedItems();
    if (selected.isEmpty())
        return;
    txtModelNo->setText(selected.first()->text(0));
    if (txtQty->text().isEmpty())
        txtQty->setText("1");
    txtQty->setFocus();
}

/// A chosen row leads to the quantity. From there the arrow keys still walk the list and letters search it,
/// so that several steps, or a name typed in one go, choose that model and leave nothing in the quantity.
bool frmPKGSelect::eventFilter(QObject* object, QEvent* event) {
    if (object != txtQty || event->type() != QEvent::KeyPress || !goesToList(*static_cast<QKeyEvent*>(event)))
        return ResultScreen::eventFilter(object, event);
    QApplication::sendEvent(lvOptions, event);
    return true;
}

bool frmPKGSelect::goesToList(const QKeyEvent& key) {
    if (key.key() == Qt::Key_Up || key.key() == Qt::Key_Down)
        return true;
    const bool searching =
        lastLetter.isValid() && lastLetter.elapsed() < QApplication::keyboardInputInterval();
    const QString text = key.text();
    if (key.modifiers() & ~Qt::ShiftModifier || text.isEmpty() ||
        !(text[0].isLetter() || (searching && text[0].isPrint()))) {
        lastLetter.invalidate();
        return false;
    }
    lastLetter.start();
    return true;
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
    if (const auto model = findModel(txtModelNo->text()))
        line.tankClass = shownText(model->series);
    line.jobID = lblJobID->text();
    line.dateCreated = QDate::currentDate().startOfDay(); // of the last save
    line.modelNo = txtModelNo->text();
    line.qty = toInt32(toNumber(txtQty->text()));
    line.sopMax = toNumber(txtSysPressure->text());
    bool stored = false;
    const bool saved = saves([&](Record::IfChanged ifChanged) {
        stored = saveTankLine(line, TankLine::package(), asRead, ifChanged);
    });
    if (!saved || !stored)
        return;
    asRead = findTankLine(Session::TankID.text());
    if (asRead)
        showNotes(lblNotes, SizingNotes::factsOf(*asRead, findModel(shownText(asRead->modelNo))));
    setStatusText("Record Saved");
    Dirty = false;
}

QString frmPKGSelect::nothingToPrint() const {
    // A report shows what is stored, which would be another package or none.
    return Dirty || !asRead ? tr("Save the package first.") : QString();
}

bool frmPKGSelect::QueryUnload() {
    if (Dirty && hasEntries()) {
        const auto answer = askToSave("Current record has not been saved!\nDo you want to save the record?");
        if (answer == QMessageBox::Yes)
            procedure(".SaveRecord", [this] { SaveRecord(); });
        if (answer == QMessageBox::Cancel || (answer == QMessageBox::Yes && Dirty)) {
            setStatusText("Not saved");
            return false;
        }
    }
    if (Tag != "1")
        SetStatusBarText();
    return true;
}
