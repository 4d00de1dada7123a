#include "core/look/ControlFaces.h"

#include <QAbstractButton>
#include <QAccessibleWidget>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QRadioButton>
#include <QVBoxLayout>

namespace {

/// A list is called by its name and its choice, because a screen reader speaks no other text of it. Its
/// value, the place of the choice, is what makes a reader speak again after a change.
class ListFace : public QAccessibleWidget, public QAccessibleValueInterface {
  public:
    explicit ListFace(QComboBox* box) : QAccessibleWidget(box, QAccessible::ComboBox) {
        QObject::connect(box, &QComboBox::currentTextChanged, box, [box] {
            QAccessibleEvent renamed(box, QAccessible::NameChanged);
            QAccessible::updateAccessibility(&renamed);
        });
    }

    void* interface_cast(QAccessible::InterfaceType type) override {
        if (type == QAccessible::ValueInterface)
            return static_cast<QAccessibleValueInterface*>(this);
        return QAccessibleWidget::interface_cast(type);
    }
    QString text(QAccessible::Text kind) const override {
        QString choice = list().currentText();
        if (kind == QAccessible::Value)
            return choice;
        QString own = QAccessibleWidget::text(kind);
        if (kind != QAccessible::Name || own == choice)
            return own;
        return own.isEmpty() || choice.isEmpty() ? own + choice : own + ": " + choice;
    }
    QAccessible::State state() const override {
        QAccessible::State now = QAccessibleWidget::state();
        now.expandable = true;
        now.editable = list().isEditable();
        return now;
    }
    QStringList actionNames() const override {
        return QStringList{showMenuAction(), pressAction()} + QAccessibleWidget::actionNames();
    }
    void doAction(const QString& action) override {
        if (action == showMenuAction() || action == pressAction())
            box().showPopup();
        else
            QAccessibleWidget::doAction(action);
    }

    QVariant currentValue() const override { return list().currentIndex(); }
    void setCurrentValue(const QVariant& value) override {
        if (!list().isEnabled() || value.toInt() < 0 || value.toInt() >= list().count())
            return;
        box().setCurrentIndex(value.toInt());
        emit box().activated(value.toInt()); // it is the user's choice
    }
    QVariant minimumValue() const override { return 0; }
    QVariant maximumValue() const override { return list().count() - 1; }
    QVariant minimumStepSize() const override { return 1; }

  private:
    const QComboBox& list() const { return *static_cast<const QComboBox*>(object()); }
    QComboBox& box() { return *static_cast<QComboBox*>(object()); }
};

/// The heading of the column in which an option is, or else the title of its group.
QString headingOf(const QWidget& option) {
    const auto* group = dynamic_cast<const QGroupBox*>(option.parentWidget());
    const auto* column = group ? dynamic_cast<const QVBoxLayout*>(group->layout()) : nullptr;
    QString heading = group ? group->title() : QString();
    for (int i = 0; column && i < column->count() && column->itemAt(i)->widget() != &option; ++i)
        if (const auto* label = dynamic_cast<const QLabel*>(column->itemAt(i)->widget()))
            heading = label->text();
    return heading.remove(u'&');
}

class OptionFace : public QAccessibleWidget {
  public:
    OptionFace(QAbstractButton* option, QAccessible::Role role) : QAccessibleWidget(option, role) {}

    QString text(QAccessible::Text kind) const override {
        if (kind == QAccessible::Name && option().accessibleName().isEmpty())
            return option().text().remove(u'&'); // the base would take the name of the group
        QString own = QAccessibleWidget::text(kind);
        return kind == QAccessible::Description && own.isEmpty() ? headingOf(option()) : own;
    }
    QAccessible::State state() const override {
        QAccessible::State now = QAccessibleWidget::state();
        now.checkable = true;
        now.checked = option().isChecked();
        return now;
    }
    QStringList actionNames() const override {
        return QStringList{toggleAction(), pressAction()} + QAccessibleWidget::actionNames();
    }
    void doAction(const QString& action) override {
        if (action == toggleAction() || action == pressAction())
            const_cast<QAbstractButton&>(option()).click();
        else
            QAccessibleWidget::doAction(action);
    }

  private:
    const QAbstractButton& option() const { return *static_cast<const QAbstractButton*>(object()); }
};

QAccessibleInterface* faceOf(const QString& /*className*/, QObject* object) {
    if (auto* list = dynamic_cast<QComboBox*>(object)) // Qt's registry takes ownership of what is returned
        return new ListFace(list);
    if (auto* option = dynamic_cast<QRadioButton*>(object))
        return new OptionFace(option, QAccessible::RadioButton);
    if (auto* box = dynamic_cast<QCheckBox*>(object))
        return new OptionFace(box, QAccessible::CheckBox);
    return nullptr;
}

} // namespace

void improveControlsForScreenReaders() {
    static const bool installed = [] {
        QAccessible::installFactory(faceOf);
        return true;
    }();
    static_cast<void>(installed);
}
