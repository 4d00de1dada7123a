#include "core/shell/Fields.h"

#include "core/look/Appearance.h"

#include <QAccessible>
#include <QComboBox>
#include <QCoreApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QToolButton>

namespace Fields {

namespace {
const char* const markProperty = "fieldError";
const char* const describedProperty = "describedBefore"; // the field's description while it has no mark

/// Whether the Tab key reaches a widget.
bool isReachable(const QWidget* widget) {
    return widget->isVisible() && widget->isEnabled() && (widget->focusPolicy() & Qt::TabFocus);
}

/// Whether a widget takes input; tools, pictures and read-only values do not.
bool takesInput(const QWidget* widget) {
    const auto* box = dynamic_cast<const QLineEdit*>(widget);
    return !dynamic_cast<const QToolButton*>(widget) && !dynamic_cast<const QLabel*>(widget) &&
           !(box && box->isReadOnly());
}

} // namespace

QHash<QString, QString> textsOf(const QWidget& part) {
    QHash<QString, QString> texts;
    for (const QLineEdit* box : part.findChildren<QLineEdit*>())
        texts.insert(box->objectName(), box->text());
    for (const QComboBox* box : part.findChildren<QComboBox*>())
        texts.insert(box->objectName(), box->currentText());
    return texts;
}

void setTexts(const QWidget& part, const QHash<QString, QString>& texts) {
    for (QLineEdit* box : part.findChildren<QLineEdit*>())
        if (texts.contains(box->objectName()))
            box->setText(texts[box->objectName()]);
    for (QComboBox* box : part.findChildren<QComboBox*>())
        if (const int choice = box->findText(texts.value(box->objectName())); choice >= 0)
            box->setCurrentIndex(choice);
}

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
    QString name = face ? face->text(QAccessible::Name).remove(u'&') : QString();
    if (const auto* list = dynamic_cast<const QComboBox*>(field)) // is called by its choice too
        if (const QString choice = ": " + list->currentText(); name.endsWith(choice))
            name.chop(choice.size());
    if (name.endsWith(u':'))
        name.chop(1);
    return name;
}

void markField(QWidget* field) {
    field->setPalette(Appearance::errorPalette(field->palette()));
    const bool before = isMarked(field);
    if (!before)
        field->setProperty(describedProperty, field->accessibleDescription());
    field->setProperty(markProperty, true);
    describeMark(field);
    if (before)
        return;
    QAccessibleEvent marked(field, QAccessible::Alert);
    QAccessible::updateAccessibility(&marked);
}

void describeMark(QWidget* field) {
    const QString own = field->property(describedProperty).toString();
    const QString hint = own.isEmpty() ? field->toolTip() : own; // as without a description
    const QString refusal = QCoreApplication::translate("Fields", "This value is not accepted.");
    field->setAccessibleDescription((refusal + ' ' + hint).trimmed());
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

void focusFirst(QWidget& screen, QWidget* wanted) {
    QWidget* first = nullptr;
    for (QWidget* next = screen.nextInFocusChain(); !wanted && next != &screen;
         next = next->nextInFocusChain()) {
        if (!screen.isAncestorOf(next) || !isReachable(next))
            continue;
        if (!first)
            first = next;
        if (takesInput(next))
            wanted = next;
    }
    (wanted ? wanted : first ? first : &screen)->setFocus(Qt::TabFocusReason);
}

} // namespace Fields
