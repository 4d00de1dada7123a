#include "core/shell/FieldChecks.h"

#include "core/base/Fault.h"
#include "core/base/Text.h"
#include "core/shell/Dialogs.h"
#include "core/shell/Fields.h"
#include "core/store/SessionStore.h"

namespace Fields {

namespace {

void showError(const QString& text) {
    Dialogs::current().show({text, "Error"});
}

bool failNumeric(QWidget* field, bool showMessage, const QString& message) {
    markField(field);
    field->setFocus();
    if (showMessage)
        showError(message);
    else
        setFieldText(field, "0");
    return false;
}

} // namespace

bool ValidateNumeric(QWidget* field, bool showMessage) {
    if (fieldText(field).isEmpty()) {
        setFieldText(field, "0");
        return true;
    }
    const auto value = parseNumber(fieldText(field).toStdString());
    if (!value)
        return failNumeric(field, showMessage, "Please enter a valid numeric value!");
    if (*value < 0)
        return failNumeric(field, showMessage, "Please enter a positive number!");
    unmarkField(field);
    return true;
}

bool ValidateMinMax(QWidget* field, double minimum, double maximum) {
    const double value = underName("ValidateMinMax", [field] { return toNumber(fieldText(field)); });
    if (value == 0) // an empty field has become 0, which is not an error
        return true;
    if (value >= minimum && value <= maximum) {
        unmarkField(field);
        return true;
    }
    showError("Please enter a value between " + shownNumber(minimum) + " and " + shownNumber(maximum) + ".");
    markField(field);
    return false;
}

bool ValidateValueRange(QWidget* minimumField, QWidget* maximumField) {
    const bool passed = underName("ValidateValueRange", [=] {
        return toNumber(fieldText(minimumField)) < toNumber(fieldText(maximumField));
    });
    if (!passed)
        showError("The maximum value must be greater than the minimum value!");
    for (QWidget* field : {minimumField, maximumField})
        passed ? unmarkField(field) : markField(field);
    return passed;
}

bool ValidateValueEntered(QWidget* field, bool showMessage) {
    if (!fieldText(field).isEmpty()) {
        unmarkField(field);
        return true;
    }
    if (showMessage) {
        markField(field);
        field->setFocus();
        showError("Please enter a valid value!");
    }
    return false;
}

bool isEntered(QWidget* field) {
    if (ValidateValueEntered(field, false))
        return true;
    markField(field);
    field->setFocus();
    return false;
}

bool ValidateItemSelected(QWidget* field, bool showMessage) {
    if (!fieldText(field).isEmpty()) {
        unmarkField(field);
        return true;
    }
    markField(field);
    field->setFocus();
    if (showMessage)
        showError("Please enter a valid value!");
    return false;
}

std::int16_t SetHelpContext() {
    const auto application = Session::application();
    return application ? static_cast<std::int16_t>(infoOf(*application).helpContext) : std::int16_t(0);
}

} // namespace Fields
