#include "core/shell/FieldChecks.h"

#include "core/base/EntryRules.h"
#include "core/base/Fault.h"
#include "core/base/Text.h"
#include "core/shell/Dialogs.h"
#include "core/shell/Fields.h"
#include "core/store/SessionStore.h"

namespace Fields {

namespace {

void showError(const QString& text, const QList<const QWidget*>& fields) {
    Dialogs::current().show({.text = text, .title = "Error", .fields = fields});
}

// What a field that was refused for its order keeps of the other one.
constexpr const char* maximumProperty = "mustBeBelow";
constexpr const char* minimumProperty = "mustBeAbove";

QWidget* other(const QWidget* field, const char* property) {
    return qobject_cast<QWidget*>(field->property(property).value<QObject*>());
}

void forgetOrder(QWidget* field) {
    field->setProperty(maximumProperty, {});
    field->setProperty(minimumProperty, {});
}

void markForItself(QWidget* field) {
    forgetOrder(field);
    markField(field);
}

void pass(QWidget* field) {
    unmarkField(field);
    unmarkOrdered(field);
}

bool isNumber(const QWidget* field) {
    return !fieldText(field).isEmpty() && !EntryRules::objectionToNumber(fieldText(field));
}

bool failNumeric(QWidget* field, bool showMessage, const QString& message) {
    markForItself(field);
    field->setFocus();
    if (showMessage)
        showError(message, {field});
    else
        setFieldText(field, "0");
    return false;
}

} // namespace

void unmarkOrdered(QWidget* field) {
    QWidget* const maximum = other(field, maximumProperty);
    QWidget* const minimum = other(field, minimumProperty);
    QWidget* const half = maximum ? maximum : minimum;
    if (!half || other(half, maximum ? minimumProperty : maximumProperty) != field || !isNumber(field) ||
        !isNumber(half))
        return;
    const double value = toNumber(fieldText(field));
    const double otherValue = toNumber(fieldText(half));
    if (maximum ? value < otherValue : otherValue < value) {
        for (QWidget* either : {field, half}) {
            unmarkField(either);
            forgetOrder(either);
        }
    }
}

bool ValidateNumeric(QWidget* field, bool showMessage) {
    if (fieldText(field).isEmpty()) {
        setFieldText(field, "0");
        return true;
    }
    if (const auto objection = EntryRules::objectionToNumber(fieldText(field)))
        return failNumeric(field, showMessage, *objection);
    pass(field);
    return true;
}

bool ValidateMinMax(QWidget* field, double minimum, double maximum) {
    const double value = underName("ValidateMinMax", [field] { return toNumber(fieldText(field)); });
    if (const auto objection = EntryRules::objectionToValue(value, minimum, maximum)) {
        showError(*objection, {field});
        markForItself(field);
        return false;
    }
    if (value != 0) // an empty field has become 0, and keeps a mark that it has for another reason
        pass(field);
    return true;
}

bool ValidateValueRange(QWidget* minimumField, QWidget* maximumField) {
    const bool passed = underName("ValidateValueRange", [=] {
        return toNumber(fieldText(minimumField)) < toNumber(fieldText(maximumField));
    });
    if (!passed)
        showError(EntryRules::wrongOrder, {minimumField, maximumField});
    for (QWidget* field : {minimumField, maximumField}) {
        forgetOrder(field);
        passed ? unmarkField(field) : markField(field);
    }
    if (!passed) {
        minimumField->setProperty(maximumProperty, QVariant::fromValue<QObject*>(maximumField));
        maximumField->setProperty(minimumProperty, QVariant::fromValue<QObject*>(minimumField));
    }
    return passed;
}

bool ValidateValueEntered(QWidget* field, bool showMessage) {
    if (!fieldText(field).isEmpty()) {
        unmarkField(field);
        return true;
    }
    if (showMessage) {
        markForItself(field);
        field->setFocus();
        showError(EntryRules::nothingEntered, {field});
    }
    return false;
}

bool isEntered(QWidget* field) {
    if (ValidateValueEntered(field, false))
        return true;
    markForItself(field);
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
        showError(EntryRules::nothingEntered, {field});
    return false;
}

std::int16_t SetHelpContext() {
    const auto application = Session::application();
    return application ? static_cast<std::int16_t>(infoOf(*application).helpContext) : std::int16_t(0);
}

} // namespace Fields
