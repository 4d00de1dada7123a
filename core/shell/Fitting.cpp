#include "core/shell/Fitting.h"

#include <QApplication>
#include <QComboBox>
#include <QGridLayout>
#include <QLineEdit>
#include <QScrollArea>
#include <QScrollBar>
#include <QToolButton>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <QWheelEvent>

namespace {

constexpr double pointsDrawnFor = 9; // the letters that the forms' widths are meant for

const char* const widenedProperty = "widened"; // of a list that is as wide as its columns
const char* const narrowProperty = "narrow";   // of a list that scrolls in a small window

/// What lies between a screen's tool bar and its buttons.
class Middle : public QScrollArea {
  public:
    explicit Middle(QWidget* parent) : QScrollArea(parent) {
        setFrameShape(QFrame::NoFrame);
        setWidgetResizable(true);
        setFocusPolicy(Qt::NoFocus);
        setWidget(new QWidget);
        viewport()->setAutoFillBackground(false);
        widget()->setAutoFillBackground(false);
    }
    QSize sizeHint() const override {
        const int bar = verticalScrollBar()->sizeHint().width();
        return widget()->sizeHint() + QSize(bar, bar);
    }
    QSize minimumSizeHint() const override { return {160, 80}; }

  protected:
    /// Texts that wrap take their height from the width that there is.
    void resizeEvent(QResizeEvent* event) override {
        if (const QLayout* rows = widget()->layout(); rows && rows->hasHeightForWidth())
            widget()->setMinimumHeight(
                rows->heightForWidth(std::max(viewport()->width(), rows->minimumSize().width())));
        QScrollArea::resizeEvent(event);
    }
    /// The wheel scrolls; it does not choose in a list on which the pointer happens to be.
    bool eventFilter(QObject* object, QEvent* event) override {
        const auto* list = dynamic_cast<QComboBox*>(object);
        if (list && event->type() == QEvent::Wheel && !list->hasFocus()) {
            event->ignore();
            return true;
        }
        return QScrollArea::eventFilter(object, event);
    }
};

/// The row of tools at the top of a screen; null when it has none.
QLayout* toolBarOf(const QWidget& screen) {
    QLayoutItem* first = screen.layout() ? screen.layout()->itemAt(0) : nullptr;
    QLayout* row = first ? first->layout() : nullptr;
    return row && row->objectName().compare("tbToolbar", Qt::CaseInsensitive) == 0 ? row : nullptr;
}

/// Whether an item is a row of buttons and nothing else.
bool isButtonRow(QLayoutItem* item) {
    const QLayout* row = item->layout();
    if (!row)
        return false;
    bool buttons = false;
    for (int i = 0; i < row->count(); ++i) {
        const QLayoutItem* part = row->itemAt(i);
        if (dynamic_cast<const QAbstractButton*>(const_cast<QLayoutItem*>(part)->widget()))
            buttons = true;
        else if (!const_cast<QLayoutItem*>(part)->spacerItem())
            return false;
    }
    return buttons;
}

void move(QVBoxLayout& from, int index, QVBoxLayout& to) {
    const int stretch = from.stretch(index);
    QLayoutItem* item = from.takeAt(index);
    if (QLayout* layout = item->layout()) {
        layout->setParent(nullptr);
        to.addLayout(layout, stretch);
    } else if (QWidget* widget = item->widget()) {
        to.addWidget(widget, stretch);
        delete item;
    } else {
        to.addItem(item);
    }
}

} // namespace

void Fitting::makeRoomForText(QLineEdit& box) {
    const QFontMetrics letters = box.fontMetrics();
    const int frame = box.sizeHint().width() - 17 * letters.horizontalAdvance('x'); // which is Qt's own width
    const int longest = 40 * letters.horizontalAdvance('x');
    const int width = std::min(letters.horizontalAdvance(box.text()), longest) + frame + 2;
    box.setMaximumWidth(std::max(box.maximumWidth(), width));
    box.setMinimumWidth(std::max(box.minimumWidth(), width));
}

void Fitting::makeRoomForColumns(QTreeWidget& list, int width) {
    constexpr int widest = 1200;
    if (list.property(narrowProperty).toBool())
        return;
    const int around = 2 * list.frameWidth() + list.verticalScrollBar()->sizeHint().width();
    list.setMinimumWidth(std::max(list.minimumWidth(), std::min(width + around, widest)));
    list.setProperty(widenedProperty, true);
}

void Fitting::scaleWidths(const QWidget& screen) {
    const double scale = QApplication::font().pointSizeF() / pointsDrawnFor;
    if (scale <= 1)
        return;
    const auto scaled = [scale](int width) {
        return width < QWIDGETSIZE_MAX / 8 ? static_cast<int>(width * scale) : width;
    };
    for (QWidget* widget : screen.findChildren<QWidget*>())
        if (dynamic_cast<QLineEdit*>(widget) || dynamic_cast<QComboBox*>(widget)) {
            widget->setMaximumWidth(scaled(widget->maximumWidth()));
            widget->setMinimumWidth(scaled(widget->minimumWidth()));
        }
}

void Fitting::tighten(const QWidget& screen) {
    constexpr int gap = 2;
    for (QLayout* layout : screen.findChildren<QLayout*>()) {
        const QMargins margins = layout->contentsMargins();
        layout->setContentsMargins(margins.left(), std::min(margins.top(), 2 * gap), margins.right(),
                                   std::min(margins.bottom(), 2 * gap));
        if (auto* grid = dynamic_cast<QGridLayout*>(layout))
            grid->setVerticalSpacing(gap);
        else if (auto* column = dynamic_cast<QVBoxLayout*>(layout))
            column->setSpacing(2 * gap);
    }
    screen.layout()->activate();
}

void Fitting::fitToolBar(const QWidget& screen, int width) {
    const QLayout* toolBar = toolBarOf(screen);
    if (!toolBar)
        return;
    const QMargins margins = screen.layout()->contentsMargins();
    if (toolBar->minimumSize().width() + margins.left() + margins.right() <= width)
        return;
    for (int i = 0; i < toolBar->count(); ++i)
        if (auto* button = dynamic_cast<QToolButton*>(toolBar->itemAt(i)->widget()))
            if (!button->icon().isNull())
                button->setToolButtonStyle(Qt::ToolButtonIconOnly);
}

void Fitting::letScroll(QWidget& screen, int width) {
    auto* rows = dynamic_cast<QVBoxLayout*>(screen.layout());
    if (!rows || rows->isEmpty() || screen.findChild<QScrollArea*>("middle", Qt::FindDirectChildrenOnly))
        return;
    const bool toolBar = toolBarOf(screen);
    const bool buttons = isButtonRow(rows->itemAt(rows->count() - 1));
    constexpr int aroundLists = 80; // pixels: margins and the scroll bar
    auto* middle = new Middle(&screen);
    middle->setObjectName("middle");
    auto* column = new QVBoxLayout(middle->widget());
    column->setContentsMargins(0, 0, 8, 0); // clear of the scroll bar
    column->setSpacing(rows->spacing());
    const int first = toolBar ? 1 : 0;
    for (int left = rows->count() - first - (buttons ? 1 : 0); left > 0; --left)
        move(*rows, first, *column);
    rows->insertWidget(first, middle, 1);
    for (QTreeWidget* list : middle->findChildren<QTreeWidget*>()) {
        list->setProperty(narrowProperty, true);
        if (list->property(widenedProperty).toBool())
            list->setMinimumWidth(std::min(list->minimumWidth(), width - aroundLists));
    }
    for (QComboBox* list : middle->findChildren<QComboBox*>())
        list->installEventFilter(middle);
    screen.setMinimumSize(0, 0);
    middle->show(); // the layout would show it only later, and take it for nothing until then
    for (QLayout* layout : {static_cast<QLayout*>(column), static_cast<QLayout*>(rows)})
        layout->activate();
}
