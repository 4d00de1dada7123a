#include "documents/viewer/ReportFace.h"

#include "documents/viewer/ReportView.h"

#include <QAccessibleWidget>

namespace {

/// A report as a read-only text: all pages, a line for each text.
class ReportFace : public QAccessibleWidget, public QAccessibleTextInterface {
  public:
    explicit ReportFace(ReportView* view) : QAccessibleWidget(view, QAccessible::Document) {}

    void* interface_cast(QAccessible::InterfaceType type) override {
        if (type == QAccessible::TextInterface)
            return static_cast<QAccessibleTextInterface*>(this);
        return QAccessibleWidget::interface_cast(type);
    }
    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Value ? wholeText() : QAccessibleWidget::text(kind);
    }
    QAccessible::State state() const override {
        QAccessible::State now = QAccessibleWidget::state();
        now.readOnly = true;
        now.multiLine = true;
        return now;
    }

    QString text(int start, int end) const override { return wholeText().mid(start, end - start); }
    int characterCount() const override { return static_cast<int>(wholeText().size()); }
    int cursorPosition() const override { return cursor; }
    void setCursorPosition(int position) override { cursor = position; }
    void selection(int /*index*/, int* start, int* end) const override { *start = *end = 0; }
    int selectionCount() const override { return 0; }
    void addSelection(int /*start*/, int /*end*/) override {}
    void removeSelection(int /*index*/) override {}
    void setSelection(int /*index*/, int /*start*/, int /*end*/) override {}
    QRect characterRect(int /*offset*/) const override { return {}; }
    int offsetAtPoint(const QPoint& /*point*/) const override { return -1; }
    void scrollToSubstring(int /*start*/, int /*end*/) override {}
    QString attributes(int /*offset*/, int* start, int* end) const override {
        *start = 0;
        *end = characterCount();
        return {};
    }

  private:
    QString wholeText() const {
        const Pages& pages = static_cast<const ReportView*>(object())->pages();
        if (pages.isEmpty())
            return {};
        const int last = static_cast<int>(pages.size()) - 1;
        const auto& texts = pages.at(last).texts;
        const int end = texts.isEmpty() ? 0 : static_cast<int>(texts.last().text.size());
        return textBetween(pages, {0, 0, 0}, {last, static_cast<int>(texts.size()) - 1, end});
    }

    int cursor = 0;
};

QAccessibleInterface* faceOf(const QString& /*className*/, QObject* object) {
    auto* view = dynamic_cast<ReportView*>(object);
    return view ? new ReportFace(view) : nullptr; // Qt's registry takes ownership
}

} // namespace

void readReportsToScreenReaders() {
    static const bool installed = [] {
        QAccessible::installFactory(faceOf);
        return true;
    }();
    static_cast<void>(installed);
}
