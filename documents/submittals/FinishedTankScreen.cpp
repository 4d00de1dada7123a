#include "documents/submittals/FinishedTankScreen.h"

#include "core/base/Fault.h"
#include "core/shell/Status.h"
#include "core/store/SessionStore.h"
#include "documents/drawings/Drawings.h"
#include "documents/submittals/SizingFacts.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>

using namespace Catalogue;
using namespace Drawings;
using namespace Records;
using namespace StatusBar;

void FinishedTankScreen::shows(const Fields& shownFields) {
    fields = shownFields;
    fields.drawing->hide();
    enlarges(fields.picture, [this] { return fields.drawing->text(); });
    offersSubmittal(fields.preview, fields.print);
    opens(fields.specification, "frmResultSpecs");
    offersCalculation(fields.calculation);
    fields.notes->hide();
}

QString FinishedTankScreen::bladderType(const Model& model) {
    return (model.asme.value_or(false) ? "ASME " : "non-ASME ") + shownText(model.bladder);
}

QString FinishedTankScreen::modelText() const {
    return fields.model->text();
}

void FinishedTankScreen::Load() {
    setStatusText("View results");
    QString tankID;
    std::optional<TankLine> tank;
    if (Session::TankID.read(tankID)) {
        tank = findTankLine(tankID);
        if (!tank) // else the form's sample figures would be shown
            throw RecordGone("This tank has been deleted.");
        showTankLine(*tank);
    }
    QString drawing;
    const auto model = findModel(modelText());
    if (model) {
        showModel(*model);
        drawing = shownText(model->tankDraw);
    }
    if (tank) {
        SizingNotes::Facts facts = SizingNotes::factsOf(*tank, model);
        addFacts(facts, *tank);
        showNotes(fields.notes, facts);
    }
    showTankDrawing(fields.picture, fields.drawing, drawing);
}

void FinishedTankScreen::Activate() {
    showResultCommands(true);
    setStatusText("View results");
}

void FinishedTankScreen::Deactivate() {
    showResultCommands(false);
}

bool FinishedTankScreen::QueryUnload() {
    SetStatusBarText();
    return true;
}
