#include "core/look/ListFace.h"

#include <QAccessibleWidget>
#include <QComboBox>

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

QAccessibleInterface* faceOf(const QString& /*className*/, QObject* object) {
    auto* list = dynamic_cast<QComboBox*>(object);
    return list ? new ListFace(list) : nullptr; // Qt's registry takes ownership
}

} // namespace

void nameListsForScreenReaders() {
    static const bool installed = [] {
        QAccessible::installFactory(faceOf);
        return true;
    }();
    static_cast<void>(installed);
}
