#include "core/shell/Fields.h"

#include "core/look/Appearance.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>

namespace Fields {

namespace {
const char* const markProperty = "fieldError";
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

void markField(QWidget* field) {
    field->setPalette(Appearance::errorPalette(field->palette()));
    field->setProperty(markProperty, true);
}

void unmarkField(QWidget* field) {
    field->setPalette(QPalette());
    field->setProperty(markProperty, false);
}

bool isMarked(const QWidget* field) {
    return field->property(markProperty).toBool();
}

} // namespace Fields
