#include "core/look/ControlFaces.h"

#include <QAbstractButton>
#include <QAccessibleWidget>
#include <QCheckBox>
#include <QComboBox>
#include <QRadioButton>

namespace {

class ListFace : public QAccessibleWidget {
  public:
    explicit ListFace(QComboBox* box) : QAccessibleWidget(box, QAccessible::ComboBox) {}

    QString text(QAccessible::Text kind) const override {
        if (kind == QAccessible::Value)
            return list().currentText();
        if (kind == QAccessible::Name && !list().accessibleName().isEmpty())
            return list().accessibleName();
        return QAccessibleWidget::text(kind);
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
            const_cast<QComboBox&>(list()).showPopup();
        else
            QAccessibleWidget::doAction(action);
    }

  private:
    const QComboBox& list() const { return *static_cast<const QComboBox*>(object()); }
};

class OptionFace : public QAccessibleWidget {
  public:
    OptionFace(QAbstractButton* option, QAccessible::Role role) : QAccessibleWidget(option, role) {}

    QString text(QAccessible::Text kind) const override {
        if (kind == QAccessible::Name && option().accessibleName().isEmpty())
            return option().text().remove(u'&'); // the base would take the name of the group
        return QAccessibleWidget::text(kind);
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
