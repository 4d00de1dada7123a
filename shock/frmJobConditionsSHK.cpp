#include "shock/frmJobConditionsSHK.h"

#include "core/base/Numbers.h"
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
#include "core/store/UserDefaults.h"
#include "estimates/Pipes.h"

#include <QDate>

using namespace Catalogue;
using namespace Deletion;
using namespace Fields;
using namespace Pipes;
using namespace Records;
using namespace StatusBar;

namespace {

double numberIn(const QLineEdit* box) {
    return ToNumber(box->text());
}

/// The user's atmospheric pressure in psia.
double atmosphericPressure() {
    const double stored = ReadUserDefaults().value_or(UserDefaults()).defaultPSIa.value_or(0);
    return stored == 0 ? UserDefaults::standardAtmosphere : stored;
}

/// The pressure factor for two band values in psig; 0 when the table has no row for them.
double pressureFactor(double shockBand, double staticBand) {
    if (!TableHasPressureFactor(shockBand, staticBand))
        return HighPressureFactor(shockBand, staticBand);
    return ReadPressureFactor(shockBand, staticBand);
}

} // namespace

frmJobConditionsSHK::frmJobConditionsSHK() : Screen("frmJobConditionsSHK") {
    setupUi(this);
    prepare();
    setDefault(cmdNext);
    txtAtmPressure->hide();
    imgPipe->setPixmap(Appearance::picture("pipe-sketch", imgPipe->size(), devicePixelRatioF()));
    cmdFindPipe2->setIcon(Appearance::icon("search"));
    for (QLineEdit* box : {PipeIndex, PipeLength, FlowRate, FlowPressure, StaticPressure, ShockPressure})
        connect(box, &QLineEdit::textChanged, this, [this] { Dirty = true; });

    onLeaving(PipeIndex, ".PipeIndex_Validate", [this] {
        const bool passed = ValidatePipeSize(PipeIndex->text(), "");
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
    onLeaving(StaticPressure, ".StaticPressure_Validate", [this] { return CheckStaticPressure(); });
    onLeaving(ShockPressure, ".ShockPressure_Validate", [this] { return CheckShockPressure(); });

    on(cmdFindPipe2, ".cmdFindPipe2", [this] { OpenPipeChooser(name()); });
    for (QAbstractButton* button : std::initializer_list<QAbstractButton*>{cmdMetric, Metric})
        opens(button, "frmMetricSHK");
    for (QAbstractButton* button : std::initializer_list<QAbstractButton*>{cmdNext, Next})
        on(button, ".cmdNext", [this] { GoOn(); });
    for (QAbstractButton* button : std::initializer_list<QAbstractButton*>{cmdPrevious, Previous})
        on(button, ".cmdPrevious", [this] { GoBack(); });
    for (QAbstractButton* button : std::initializer_list<QAbstractButton*>{cmdCancel, Cancel})
        onCancel(button, ".cmdCancel", [this] { GiveUp(); });
}

void frmJobConditionsSHK::Load() {
    SetStatusText("Enter job conditions");
    lblJobID->setText(Session::JobID.text());
    PipeIndex->setMaxLength(TankLineTextSize("PipeIndex"));
    SetPipeGraphic();
    asRead = ReadTankLineToEdit();
    if (!asRead)
        return;
    PipeIndex->setText(Shown(asRead->pipeIndex));
    for (const auto& [box, value] : {std::pair(PipeLength, asRead->pipeLength),
                                     {FlowRate, asRead->flowRate},
                                     {FlowPressure, asRead->flowPressure},
                                     {StaticPressure, asRead->staticPressure},
                                     {ShockPressure, asRead->shockPressure}})
        box->setText(Shown(value));
    SetPipeGraphic();
}

void frmJobConditionsSHK::SetPipeGraphic() {
    const bool hasPipe = !PipeIndex->text().isEmpty();
    const bool hasLength = !PipeLength->text().isEmpty();
    lblPipeIDGraphic->clear();
    lblLenGraphic->clear();
    if (hasPipe)
        lblPipeIDGraphic->setText(FormattedNumber(PipeBore(PipeIndex->text()), "#,##0.0 in"));
    if (hasLength)
        lblLenGraphic->setText(FormattedNumber(numberIn(PipeLength), "#,##0 ft"));
    for (QFrame* line : {linDiameter, linDiameterTop, linDiameterBottom})
        line->setVisible(hasPipe);
    for (QFrame* line : {linLength, linLengthStart, linLengthEnd})
        line->setVisible(hasLength);
    imgPipe->setVisible(hasPipe && hasLength);
}

bool frmJobConditionsSHK::CheckStaticPressure() {
    if (!ValidateNumeric(StaticPressure, true) || !ValidateMinMax(StaticPressure, 20, 110))
        return false;
    UnmarkField(FlowPressure);
    UnmarkField(ShockPressure);
    return true;
}

bool frmJobConditionsSHK::CheckShockPressure() { // only Next checks the upper limit
    if (!ValidateNumeric(ShockPressure, true))
        return false;
    UnmarkField(StaticPressure);
    return true;
}

void frmJobConditionsSHK::Refuse(const QString& text) {
    SetStatusText("Error...");
    Dialogs::current().show({text, "Error"});
}

void frmJobConditionsSHK::GoOn() {
    const Hourglass hourglass;
    SetStatusText("Processing...");
    for (QLineEdit* box : {PipeIndex, PipeLength, FlowRate, FlowPressure, StaticPressure, ShockPressure})
        if (!ValidateValueEntered(box, false))
            return;
    if (!ValidateValueRange(FlowPressure, StaticPressure) ||
        !ValidateValueRange(StaticPressure, ShockPressure))
        return;
    ShockConditions conditions{.length = numberIn(PipeLength),
                               .flowRate = numberIn(FlowRate),
                               .flowPressure = numberIn(FlowPressure),
                               .staticPressure = numberIn(StaticPressure),
                               .shockPressure = numberIn(ShockPressure)};
    conditions.atmosphericPressure = atmosphericPressure();
    txtAtmPressure->setText(ShownNumber(conditions.atmosphericPressure));
    conditions.bore = PipeBore(PipeIndex->text());
    if (conditions.bore == 0) {
        MarkField(PipeIndex);
        Dirty = false;
        Refuse("Not a valid Pipe Index");
        return;
    }
    const double acceptance = ShockAcceptanceFactor(conditions.flowPressure, conditions.staticPressure,
                                                    conditions.atmosphericPressure);
    const double shockBand = ShockPressureBand(conditions.shockPressure);
    const double staticBand = StaticPressureBand(conditions.staticPressure);
    const ShockSizes sizes = ComputeShockSizes(conditions, pressureFactor(shockBand, staticBand));
    if (const auto objection = ShockObjection(sizes.waterVelocity, acceptance, shockBand)) {
        Refuse("Check input.\n\r" + ToQString(*objection));
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
    constexpr int decimals = 8;
    TankLine line;
    line.jobID = lblJobID->text();
    line.dateCreated = QDate::currentDate().startOfDay();
    line.atmPressure = conditions.atmosphericPressure;
    line.pipeIndex = PipeIndex->text();
    line.pipeLength = conditions.length;
    line.flowRate = conditions.flowRate;
    line.flowPressure = conditions.flowPressure;
    line.staticPressure = conditions.staticPressure;
    line.shockPressure = conditions.shockPressure;
    line.waterVelocity = Round(sizes.waterVelocity, decimals);
    line.kineticEnergy = Round(sizes.kineticEnergy, decimals);
    line.totalKineticEnergy = Round(sizes.totalKineticEnergy, decimals);
    line.requiredVolume = Round(sizes.requiredVolume, decimals);
    line.requiredAcceptance = Round(sizes.requiredAcceptance, decimals);
    line.tankClass = "SHK";
    return saves([&](Record::IfChanged ifChanged) {
        SaveTankLine(line, TankLine::shockConditions(), asRead, ifChanged);
    });
}

void frmJobConditionsSHK::GoBack() {
    const Hourglass hourglass;
    Tag = "1";
    QString mode;
    if (Session::Mode.read(mode))
        Screens::open(mode == Session::Modes::New ? "frmClassSelect" : "frmTankIDSearch");
    Screens::unload(name());
}

void frmJobConditionsSHK::GiveUp() {
    const Hourglass hourglass;
    Tag = "1";
    CancelJobInput(lblJobID->text());
    if (const Screen* pad = Screens::find("frmMetricSHK"); pad && !Screens::isOfAnotherJob(*pad, name()))
        Screens::unload(pad->name());
    ClosePipeChooser(name());
    Screens::unload(name());
}

bool frmJobConditionsSHK::QueryUnload() {
    if (Tag != "1") {
        GiveUp();
        SetStatusBarText();
    }
    return true;
}
