#include "estimates/MetricPad.h"

#include "core/base/Fault.h"
#include "core/base/Text.h"
#include "core/shell/FieldChecks.h"
#include "core/shell/Fields.h"
#include "core/shell/Screens.h"
#include "core/shell/Status.h"
#include "estimates/Pipes.h"

#include <QLabel>
#include <QLineEdit>

using namespace Fields;
using namespace Pipes;
using namespace StatusBar;

void MetricPad::Load() {
    setProperty("helpContext", SetHelpContext());
}

bool MetricPad::QueryUnload() {
    closePipeChooser(name());
    resetStatus();
    return true;
}

void MetricPad::converts(QLineEdit* box, QLabel* shown, Conversion conversion, const QString& unit) {
    conversions.insert(box, conversion);
    onLeaving(box, "." + box->objectName() + "_Validate",
              [this, box] { return (box->text().isEmpty() && emptyStays()) || ValidateNumeric(box, true); });
    connect(box, &QLineEdit::textChanged, shown, [this, shown, conversion, unit](const QString& text) {
        shown->setText(converted(text, conversion, unit));
    });
}

QString MetricPad::converted(const QString& text, Conversion conversion, const QString& unit) const {
    const auto value = parseNumber(text.toStdString());
    if (!value || *value < 0) // the check will refuse it
        return {};
    if (leavesTarget(text))
        return "left as it is";
    try {
        return "= " + shownNumber(conversion(*value)) + " " + unit;
    } catch (const Fault&) { // too large; OK reports it
        return {};
    }
}

void MetricPad::setTarget(const QString& screen) {
    targetScreen = screen;
    adaptToTarget();
    updateHandOver();
}

void openMetricPad(const QString& pad, const QString& target) {
    auto* screen = dynamic_cast<MetricPad*>(Screens::load(pad));
    if (!screen)
        return;
    screen->setTarget(target);
    Screens::show(pad);
}

void MetricPad::handOver(const QLineEdit* box, const QString& targetBox) const {
    const QString text = box->text();
    if (!leavesTarget(text))
        Screens::handOver(*this, targetScreen, targetBox,
                          shownNumber(conversions.value(box)(toNumber(text))));
}
