#include "estimates/frmCalcExpTSF.h"

#include "core/base/Text.h"
#include "core/shell/FieldChecks.h"
#include "core/shell/Lists.h"
#include "core/store/Catalogue.h"

#include <QCoreApplication>
#include <QKeyEvent>

#include <algorithm>

using namespace Catalogue;
using namespace Fields;

namespace {

double numberIn(const QLineEdit* box) {
    return toNumber(box->text());
}

/// Whether every box has text; an empty one silently ends a calculation.
bool allEntered(std::initializer_list<QWidget*> boxes) {
    return std::ranges::all_of(boxes, isEntered);
}

/// Copies a dimension of the building into its sketch as it is typed.
void showsDimension(QLineEdit* box, QLabel* label) {
    QObject::connect(box, &QLineEdit::textChanged, label,
                     [label, dimension = label->text()](const QString& text) {
                         const auto feet = parseNumber(text.toStdString());
                         label->setText(feet ? formattedNumber(*feet, "#,##0 ft") : dimension);
                     });
}

} // namespace

frmCalcExpTSF::frmCalcExpTSF() : Estimator("frmCalcExpTSF") {
    setupUi(this);
    prepareEstimator(".tbToolbar.ButtonClick");
    methods = {{bttnBldg, BldgFrame, &frmCalcExpTSF::estimateByBuilding},
               {bttnBoiler, BoilerFrame, &frmCalcExpTSF::estimateByBoiler},
               {bttnChiller, ChillerFrame, &frmCalcExpTSF::estimateByChiller},
               {bttnComponent, ComponentsFrame, &frmCalcExpTSF::estimateByComponents},
               {bttnDetail, frmDetailCalc, &frmCalcExpTSF::estimateByList}};
    for (const Method& method : methods) {
        method.button->setFocusPolicy(Qt::StrongFocus); // a press leaves a box, whose check may refuse it
        method.button->installEventFilter(this);
        on(method.button, ".tbToolbar.ButtonClick", [this] { SetEstimateFrames(); });
    }
    for (QLineEdit* box : {BldgHeight, BldgWidth, BldgDepth, BoilerOutput, ChillerTons, BoilerCapacity,
                           AdditionalCapacity, txtPipeLengthItemized}) // PipeCapacity is not checked
        checksNumber(box);
    for (QLineEdit* box : {PipeIndex, PipeIndexCom})
        checksPipe(box);
    for (QPushButton* button : {cmdFindPipe2, cmdFindPipe1, imgFindPipeItemized})
        findsPipe(button);
    showsDimension(BldgHeight, lblBldgHeightImg);
    showsDimension(BldgWidth, lblBldgWidthImg);
    showsDimension(BldgDepth, lblBldgDepthImg);
    on(cmdAddItemized, ".cmdAddItemized", [this] { addItems(); });
    on(cmdRestartItemized, ".cmdRestartItemized", [this] { lvItemized->clear(); });
}

const frmCalcExpTSF::Method& frmCalcExpTSF::pressedMethod() const {
    const auto pressed =
        std::ranges::find_if(methods, [](const Method& method) { return method.button->isChecked(); });
    return pressed == methods.end() ? methods.first() : *pressed;
}

/// Once another method has been chosen, the building's frame does not come back. Calculate still goes by the
/// pressed button and uses its hidden boxes. The program has always done so.
void frmCalcExpTSF::SetEstimateFrames() {
    if (const Method& pressed = pressedMethod(); pressed.button != bttnBldg)
        frames->setCurrentWidget(pressed.frame);
}

/// A digit typed on the button of a method, where its letter leaves the focus, goes into its first box.
bool frmCalcExpTSF::eventFilter(QObject* object, QEvent* event) {
    const auto typesDigit = [event] {
        const QString text = static_cast<QKeyEvent*>(event)->text();
        return !text.isEmpty() && text[0].isDigit();
    };
    if (event->type() != QEvent::KeyPress || object != pressedMethod().button ||
        !pressedMethod().frame->isVisible() || !typesDigit())
        return Estimator::eventFilter(object, event);
    auto* box = pressedMethod().frame->findChild<QLineEdit*>();
    box->setFocus(Qt::TabFocusReason);
    QCoreApplication::sendEvent(box, event);
    return true;
}

std::optional<QString> frmCalcExpTSF::Calculate() {
    const auto gallons = (this->*pressedMethod().calculate)();
    return gallons ? std::optional(formattedNumber(*gallons, "#,##0")) : std::nullopt;
}

QString frmCalcExpTSF::metricTag() const {
    return name() + "-" + pressedMethod().button->objectName();
}

/// Checks the height twice and never the depth, which counts as 0 when empty, nor the pipe, whose look-up
/// then fails. The program has always done so.
std::optional<double> frmCalcExpTSF::estimateByBuilding() {
    if (!allEntered({BldgHeight, BldgWidth, BldgHeight}))
        return std::nullopt;
    const double width = numberIn(BldgWidth);
    const double height = numberIn(BldgHeight);
    const double depth = BldgDepth->text().isEmpty() ? 0 : numberIn(BldgDepth);
    return buildingFluid(height, width, depth, transverseArea(PipeIndex->text()));
}

std::optional<double> frmCalcExpTSF::estimateByBoiler() {
    if (!isEntered(RadType) || !isEntered(PipeType) || !allEntered({BoilerOutput}))
        return std::nullopt;
    return boilerFluid(ToInt16(numberIn(BoilerOutput)), {RadClass, PipeClass});
}

std::optional<double> frmCalcExpTSF::estimateByChiller() {
    if (!allEntered({ChillerTons}))
        return std::nullopt;
    return chillerFluid(numberIn(ChillerTons));
}

std::optional<double> frmCalcExpTSF::estimateByComponents() {
    if (!allEntered({BoilerCapacity, PipeIndexCom, PipeCapacity}))
        return std::nullopt;
    const double area = transverseArea(PipeIndexCom->text());
    const double further = AdditionalCapacity->text().isEmpty() ? 0 : numberIn(AdditionalCapacity);
    return componentFluid(numberIn(BoilerCapacity), further, numberIn(PipeCapacity), area);
}

std::optional<double> frmCalcExpTSF::estimateByList() {
    ItemizedFluid fluid;
    for (int row = 0; row < lvItemized->topLevelItemCount(); ++row) {
        const QTreeWidgetItem& item = *lvItemized->topLevelItem(row);
        const double amount = toNumber(item.text(1));
        if (item.text(2) == lblCapacityItemUM->text()) {
            fluid.addEquipment(amount);
            continue;
        }
        fluid.addRun(findBore(item.text(0)), amount);
    }
    return fluid.total();
}

/// Adds both halves of the entries. Feet and gallons share a column; the unit beside them tells which is
/// which.
void frmCalcExpTSF::addItems() {
    if (!txtPipeSizeItemized->text().isEmpty()) {
        addItem(txtPipeSizeItemized->text(), txtPipeLengthItemized->text(), lblPipeLengthItemizedUM->text());
        txtPipeSizeItemized->clear();
        txtPipeLengthItemized->clear();
    }
    if (!cmboFixtureItem->currentText().isEmpty()) {
        addItem(cmboFixtureItem->currentText(), txtCapacityItem->text(), lblCapacityItemUM->text());
        cmboFixtureItem->setCurrentIndex(-1);
        txtCapacityItem->clear();
    }
}

void frmCalcExpTSF::addItem(const QString& item, const QString& amount, const QString& unit) {
    auto* row = new QTreeWidgetItem(lvItemized, {item, amount.isEmpty() ? "0" : amount, unit});
    fitColumns(lvItemized);
    lvItemized->scrollToItem(row);
}
