#include "core/shell/Fields.h"

#include "core/look/Appearance.h"

#include <QAccessible>
#include <QComboBox>
#include <QCoreApplication>
#include <QLineEdit>
#include <QPlainTextEdit>

namespace Fields {

namespace {
const char* const markProperty = "fieldError";
const char* const describedProperty = "describedBefore"; // the field's description while it has no mark
} // namespace

QString fieldText(const QWidget* field) {
    if (const auto* line = dynamic_cast<const QLineEdit*>(field))
        return line->text();
    if (const auto* area = dynamic_cast<const QPlainTextEdit*>(field))
        return area->toPlainText();
    const auto* combo = dynamic_cast<const QComboBox*>(field);
    return combo ? combo->currentText() : QString();
}

void setFieldText(QWidget* field, const QString& text) {
    if (auto* line = dynamic_cast<QLineEdit*>(field))
        line->setText(text);
    else if (auto* area = dynamic_cast<QPlainTextEdit*>(field))
        area->setPlainText(text);
    else if (auto* list = dynamic_cast<QComboBox*>(field))
        list->setCurrentText(text);
}

QString nameOf(const QWidget* field) {
    QAccessibleInterface* face = QAccessible::queryAccessibleInterface(const_cast<QWidget*>(field));
    return face ? face->text(QAccessible::Name).remove(u'&') : QString();
}

void markField(QWidget* field) {
    field->setPalette(Appearance::errorPalette(field->palette()));
    if (isMarked(field))
        return;
    field->setProperty(markProperty, true);
    field->setProperty(describedProperty, field->accessibleDescription());
    field->setAccessibleDescription(QCoreApplication::translate("Fields", "This value is not accepted."));
    QAccessibleEvent marked(field, QAccessible::Alert);
    QAccessible::updateAccessibility(&marked);
}

void unmarkField(QWidget* field) {
    field->setPalette(QPalette());
    if (!isMarked(field))
        return;
    field->setProperty(markProperty, false);
    field->setAccessibleDescription(field->property(describedProperty).toString());
}

bool isMarked(const QWidget* field) {
    return field->property(markProperty).toBool();
}

} // namespace Fields
