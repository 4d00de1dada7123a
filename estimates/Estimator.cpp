#include "estimates/Estimator.h"

#include "core/look/Icons.h"
#include "core/shell/FieldChecks.h"
#include "core/shell/Fields.h"
#include "core/shell/Screens.h"
#include "core/shell/Status.h"
#include "core/store/SessionStore.h"
#include "estimates/Pipes.h"
#include "estimates/frmMetricCalc.h"

#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>

using namespace Fields;
using namespace Pipes;
using namespace StatusBar;

namespace {

/// What asks for an entry: a caption such as "Enter Pump Capacity" does so itself.
QString wordsFor(const QString& caption) {
    return caption.startsWith("Enter ") || caption.startsWith("Select ")
               ? caption
               : QCoreApplication::translate("Estimator", "Fill in: %1").arg(caption);
}

} // namespace

void Estimator::prepareEstimator(const QString& toolbarProcedure) {
    prepare();
    drawSketches();
    result = control<QLineEdit>("TotSysFluidCalc");
    for (QLineEdit* box : findChildren<QLineEdit*>())
        if (box != result)
            connect(box, &QLineEdit::textChanged, this, [this] { noteChange(); });
    for (QComboBox* list : findChildren<QComboBox*>())
        connect(list, &QComboBox::currentTextChanged, this, [this] { noteChange(); });
    on(control<QToolButton>("bttnMetric"), toolbarProcedure, [this] {
        if (OpenMetricForm())
            return;
        Screens::unload("frmMetricCalc");
        Dialogs::current().beep();
    });
    on(control<QToolButton>("bttnCalc"), toolbarProcedure, [this] {
        const auto shown = Calculate();
        if (!shown) {
            if (const QWidget* empty = focusWidget(); empty && isMarked(empty))
                ask(wordsFor(nameOf(empty)));
            return;
        }
        stopAsking();
        result->setText(*shown);
        ValidateValueEntered(result, false); // clears the mark
        Dirty = false;
    });
    onCancel(control<QToolButton>("bttnCancel"), toolbarProcedure, [this] { Screens::unload(name()); });
    handsOver(control<QToolButton>("bttnOK"), [this] { return target; });
    on(control<QToolButton>("bttnOK"), toolbarProcedure, [this] { confirm(); });
}

void Estimator::noteChange() {
    Dirty = true;
    stopAsking();
}

/// Return calculates from any box, and from the button of a method, which it would only press once more.
void Estimator::keyPressEvent(QKeyEvent* event) {
    const auto* button = dynamic_cast<QAbstractButton*>(focusWidget());
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!isReturn || (button && !button->isCheckable()))
        Screen::keyPressEvent(event);
    else if (!focusWidget() || validateLeaving(focusWidget()))
        control<QToolButton>("bttnCalc")->click();
}

void Estimator::checksNumber(QLineEdit* box) {
    onLeaving(box, "." + box->objectName() + "_Validate", [box] { return ValidateNumeric(box, true); });
}

void Estimator::checksPipe(QLineEdit* box) {
    onLeaving(box, "." + box->objectName() + "_Validate", [box] { return ValidatePipeSize(box, ""); });
}

void Estimator::findsPipe(QAbstractButton* button) {
    on(button, "." + button->objectName(), [this] { openPipeChooser(name()); });
}

void Estimator::drawSketches() {
    for (QLabel* label : findChildren<QLabel*>())
        if (const QString sketch = label->property("sketch").toString(); !sketch.isEmpty())
            label->setPixmap(Appearance::picture(sketch, label->minimumSize(), devicePixelRatioF()));
}

void Estimator::changeEvent(QEvent* event) {
    if (event->type() == QEvent::PaletteChange)
        drawSketches();
    Screen::changeEvent(event);
}

void Estimator::setTarget(const QString& screen) {
    target = screen;
    updateHandOver();
}

bool Estimator::OpenMetricForm() {
    bool opened = false;
    procedure(".OpenMetricForm", [&] { opened = frmMetricCalc::openFor(metricTag()); });
    return opened;
}

void Estimator::confirm() {
    const Hourglass hourglass;
    if (result->text().isEmpty())
        ask(QCoreApplication::translate("Estimator", "Calculate the volume first"));
    if (!ValidateValueEntered(result, asksForResult()))
        return;
    const QString question =
        // The "\n\r" order is deliberate.
        "Total System Volume should be recalculated first\n\rDo you want to continue?";
    if (Dirty && Dialogs::current().show({.text = question,
                                          .title = "Recalc?",
                                          .icon = QMessageBox::Question,
                                          .buttons = QMessageBox::Yes | QMessageBox::No,
                                          .defaultButton = QMessageBox::No}) != QMessageBox::Yes)
        return;
    Screens::handOver(*this, target, "txtTotSysFluid", result->text());
    Screens::unload(name());
}

/// Also closes the look-ups that would write into this screen.
bool Estimator::QueryUnload() {
    closePipeChooser(name());
    if (const Screen* pad = Screens::find("frmMetricCalc"); pad && pad->Tag.section('-', 0, 0) == name())
        Screens::unload("frmMetricCalc");
    resetStatus();
    return true;
}

QString estimatorOf(Application application) {
    switch (application) {
    case Application::Expansion:
        return "frmCalcExpTSF";
    case Application::Thermal:
        return "frmcalcThmTSF";
    case Application::Hydropneumatic:
        return "frmCalcHydTSF";
    case Application::Shock:
    case Application::Package:
        break;
    }
    return {};
}

void openEstimator(const QString& screen, const QString& target) {
    if (target.isEmpty()) {
        if (Screens::find(screen)) // it may hold a job's estimate
            return Screens::show(screen);
        Session::JobID.write(""); // of the task that this command begins
        Session::TankID.write("");
    }
    auto* estimator = dynamic_cast<Estimator*>(Screens::load(screen));
    if (!estimator)
        return;
    estimator->setTarget(target);
    Screens::show(screen);
}
