#include "shock/frmJobConditionsSHK.h"

#include "core/base/Text.h"
#include "core/look/Appearance.h"
#include "core/shell/DisplayFields.h"
#include "core/shell/FieldChecks.h"
#include "core/shell/Fields.h"
#include "core/shell/Screens.h"
#include "core/shell/Status.h"
#include "core/store/Catalogue.h"
#include "core/store/Deletion.h"
#include "core/store/SessionStore.h"
#include "estimates/MetricPad.h"
#include "estimates/Pipes.h"
#include "shock/ShockSizing.h"

#include <QDate>

using namespace Catalogue;
using namespace Deletion;
using namespace Fields;
using namespace Pipes;
using namespace Records;
using namespace StatusBar;

namespace {

double numberIn(const QLineEdit* box) {
    return toNumber(box->text());
}

} // namespace

frmJobConditionsSHK::frmJobConditionsSHK() : Screen("frmJobConditionsSHK") {
    setupUi(this);
    prepare();
    setDefault(cmdNext);
    txtAtmPressure->hide();
    imgPipe->setPixmap(Appearance::picture("pipe-sketch", imgPipe->size(), devicePixelRatioF()));
    cmdFindPipe2->setIcon(Appearance::icon("search"));

    onLeaving(PipeIndex, ".PipeIndex_Validate", [this] {
        const bool passed = ValidatePipeSize(PipeIndex, "");
        if (passed)
            SetPipeGraphic();
        return passed;
    });
    onLeaving(PipeLength, ".PipeLength_Validate", [this] {
        const bool passed = ValidateNumeric(PipeLength, true);
        if (passed)
            SetPipeGraphic();
        return passed;
    });
    onLeaving(FlowRate, ".FlowRate_Validate", [this] { return ValidateNumeric(FlowRate, false); });
    onLeaving(FlowPressure, ".FlowPressure_Validate", [this] { return ValidateNumeric(FlowPressure, true); });
    onLeaving(StaticPressure, ".StaticPressure_Validate", [this] { return checkStaticPressure(); });
    onLeaving(ShockPressure, ".ShockPressure_Validate", [this] { return checkShockPressure(); });

    on(cmdFindPipe2, ".cmdFindPipe2", [this] { openPipeChooser(name()); });
    for (QAbstractButton* button : std::initializer_list<QAbstractButton*>{cmdMetric, Metric})
        on(button, ".cmdMetric", [this] { openMetricPad("frmMetricSHK", name()); });
    for (QAbstractButton* button : std::initializer_list<QAbstractButton*>{cmdNext, Next})
        on(button, ".cmdNext", [this] { goOn(); });
    for (QAbstractButton* button : std::initializer_list<QAbstractButton*>{cmdPrevious, Previous})
        on(button, ".cmdPrevious", [this] { goBack(); });
    for (QAbstractButton* button : std::initializer_list<QAbstractButton*>{cmdCancel, Cancel})
        onCancel(button, ".cmdCancel", [this] { giveUp(); });
}

void frmJobConditionsSHK::Load() {
    setStatusText("Enter job conditions");
    lblJobID->setText(Session::JobID.text());
    PipeIndex->setMaxLength(tankLineTextSize("PipeIndex"));
    SetPipeGraphic();
    asRead = readTankLineToEdit();
    if (!asRead)
        return;
    setTexts(*this, ShockSizing::boxesOf(*asRead));
    SetPipeGraphic();
}

void frmJobConditionsSHK::SetPipeGraphic() {
    const bool hasPipe = !PipeIndex->text().isEmpty();
    const bool hasLength = !PipeLength->text().isEmpty();
    lblPipeIDGraphic->clear();
    lblLenGraphic->clear();
    if (hasPipe)
        lblPipeIDGraphic->setText(formattedNumber(pipeBore(PipeIndex->text()), "#,##0.0 in"));
    if (hasLength)
        lblLenGraphic->setText(formattedNumber(numberIn(PipeLength), "#,##0 ft"));
    for (QFrame* line : {linDiameter, linDiameterTop, linDiameterBottom})
        line->setVisible(hasPipe);
    for (QFrame* line : {linLength, linLengthStart, linLengthEnd})
        line->setVisible(hasLength);
    imgPipe->setVisible(hasPipe && hasLength);
}

bool frmJobConditionsSHK::checkStaticPressure() {
    if (!ValidateNumeric(StaticPressure, true) ||
        !ValidateMinMax(StaticPressure, lowestStatic, highestStatic))
        return false;
    unmarkField(FlowPressure);
    unmarkField(ShockPressure);
    return true;
}

bool frmJobConditionsSHK::checkShockPressure() { // only Next checks the upper limit
    if (!ValidateNumeric(ShockPressure, true))
        return false;
    unmarkField(StaticPressure);
    return true;
}

void frmJobConditionsSHK::refuse(const QString& text) {
    setStatusText("Error...");
    Dialogs::current().show({text, "Error"});
}

void frmJobConditionsSHK::goOn() {
    const Hourglass hourglass;
    setStatusText("Processing...");
    for (QLineEdit* box : {PipeIndex, PipeLength, FlowRate, FlowPressure, StaticPressure, ShockPressure})
        if (!isEntered(box))
            return;
    if (!ValidateValueRange(FlowPressure, StaticPressure) ||
        !ValidateValueRange(StaticPressure, ShockPressure))
        return;
    ShockConditions conditions{.length = numberIn(PipeLength),
                               .flowRate = numberIn(FlowRate),
                               .flowPressure = numberIn(FlowPressure),
                               .staticPressure = numberIn(StaticPressure),
                               .shockPressure = numberIn(ShockPressure)};
    conditions.atmosphericPressure = ShockSizing::atmosphericPressure();
    txtAtmPressure->setText(shownNumber(conditions.atmosphericPressure));
    conditions.bore = pipeBore(PipeIndex->text());
    if (conditions.bore == 0) {
        markField(PipeIndex);
        refuse("Not a valid Pipe Index");
        return;
    }
    std::optional<std::string_view> objection;
    const ShockSizes sizes = ShockSizing::sizesOf(conditions, objection);
    if (objection) {
        refuse("Check input.\n\r" + toQString(*objection));
        PipeIndex->setFocus();
        return;
    }
    bool saved = false;
    procedure(".SaveRecord", [&] { saved = SaveRecord(conditions, sizes); });
    if (saved)
        leaveFor("frmtankselection");
}

/// False when the user chose to keep someone else's changes.
bool frmJobConditionsSHK::SaveRecord(const ShockConditions& conditions, const ShockSizes& sizes) {
    TankLine line = ShockSizing::lineOf(conditions, PipeIndex->text(), sizes);
    line.jobID = lblJobID->text();
    line.dateCreated = QDate::currentDate().startOfDay();
    return saves([&](Record::IfChanged ifChanged) {
        saveTankLine(line, TankLine::shockConditions(), asRead, ifChanged);
    });
}

void frmJobConditionsSHK::goBack() {
    const Hourglass hourglass;
    Tag = "1";
    QString mode;
    if (Session::Mode.read(mode))
        Screens::open(mode == Session::Modes::New ? "frmClassSelect" : "frmTankIDSearch");
    Screens::unload(name());
}

void frmJobConditionsSHK::giveUp() {
    const Hourglass hourglass;
    Tag = "1";
    CancelJobInput(lblJobID->text());
    if (const Screen* pad = Screens::find("frmMetricSHK"); pad && !Screens::isOfAnotherJob(*pad, name()))
        Screens::unload(pad->name());
    closePipeChooser(name());
    Screens::unload(name());
}

bool frmJobConditionsSHK::QueryUnload() {
    if (Tag != "1") {
        giveUp();
        SetStatusBarText();
    }
    return true;
}
