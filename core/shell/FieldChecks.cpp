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
    MarkField(field);
    field->setFocus();
    if (showMessage)
        showError(message);
    else
        SetFieldText(field, "0");
    return false;
}

} // namespace

bool ValidateNumeric(QWidget* field, bool showMessage) {
    if (FieldText(field).isEmpty()) {
        SetFieldText(field, "0");
        return true;
    }
    const auto value = ParseNumber(FieldText(field).toStdString());
    if (!value)
        return failNumeric(field, showMessage, "Please enter a valid numeric value!");
    if (*value < 0)
        return failNumeric(field, showMessage, "Please enter a positive number!");
    UnmarkField(field);
    return true;
}

bool ValidateMinMax(QWidget* field, double minimum, double maximum) {
    const double value = Named("ValidateMinMax", [field] { return ToNumber(FieldText(field)); });
    if (value == 0) // an empty field has become 0, which is not an error
        return true;
    if (value >= minimum && value <= maximum) {
        UnmarkField(field);
        return true;
    }
    showError("Please enter a value between " + ShownNumber(minimum) + " and " + ShownNumber(maximum) + ".");
    MarkField(field);
    return false;
}

bool ValidateValueRange(QWidget* minimumField, QWidget* maximumField) {
    const bool passed = Named("ValidateValueRange", [=] {
        return ToNumber(FieldText(minimumField)) < ToNumber(FieldText(maximumField));
    });
    if (!passed)
        showError("The maximum value must be greater than the minimum value!");
    for (QWidget* field : {minimumField, maximumField})
        passed ? UnmarkField(field) : MarkField(field);
    return passed;
}

bool ValidateValueEntered(QWidget* field, bool showMessage) {
    if (!FieldText(field).isEmpty()) {
        UnmarkField(field);
        return true;
    }
    if (showMessage) {
        MarkField(field);
        field->setFocus();
        showError("Please enter a valid value!");
    }
    return false;
}

bool ValidateItemSelected(QWidget* field, bool showMessage) {
    if (!FieldText(field).isEmpty()) {
        UnmarkField(field);
        return true;
    }
    MarkField(field);
    field->setFocus();
    if (showMessage)
        showError("Please enter a valid value!");
    return false;
}

std::int16_t SetHelpContext() {
    const auto application = Session::application();
    return application ? static_cast<std::int16_t>(InfoOf(*application).helpContext) : std::int16_t(0);
}

} // namespace Fields
