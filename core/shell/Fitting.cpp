#include "core/shell/Fitting.h"

#include <QApplication>
#include <QComboBox>
#include <QGridLayout>
#include <QLineEdit>
#include <QPointer>
#include <QScrollArea>
#include <QScrollBar>
#include <QTimer>
#include <QToolButton>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <QWheelEvent>

namespace {

constexpr double pointsDrawnFor = 9; // the letters that the forms' widths are meant for

const char* const widenedProperty = "widened"; // of a list that is as wide as its columns
const char* const narrowProperty = "narrow";   // of a list that scrolls in a small window

/// Scrolls an area to what has the focus. By itself it does so after the Tab key alone.
class FocusFollower : public QObject {
  public:
    explicit FocusFollower(QScrollArea& owner) : QObject(&owner), area(owner) {
        connect(qApp, &QApplication::focusChanged, this,
                [this](const QWidget* /*before*/, QWidget* now) { follow(now); });
        area.viewport()->installEventFilter(this);
    }

  protected:
    bool eventFilter(QObject* object, QEvent* event) override {
        if (event->type() == QEvent::Resize)
            QTimer::singleShot(0, this, [this] { show(QApplication::focusWidget()); }); // once laid out anew
        return QObject::eventFilter(object, event);
    }

  private:
    void follow(QWidget* focus) {
        disconnect(row);
        if (const auto* list = dynamic_cast<QAbstractItemView*>(focus); list && list->selectionModel())
            row = connect(list->selectionModel(), &QItemSelectionModel::currentChanged, this,
                          [this, focus] { show(focus); });
        show(focus);
    }

    void show(const QWidget* focus) {
        if (!focus || !area.widget()->isAncestorOf(focus) || QApplication::mouseButtons() != Qt::NoButton)
            return;
        reveal(*focus, focus->rect());
        const auto* list = dynamic_cast<const QAbstractItemView*>(focus);
        if (list && list->currentIndex().isValid())
            reveal(*list->viewport(), list->visualRect(list->currentIndex()));
    }

    /// Scrolls to the beginning of a part that is larger than the window.
    void reveal(const QWidget& widget, const QRect& part) {
        constexpr int around = 4;
        const QRect shown(widget.mapTo(area.widget(), part.topLeft()),
                          part.size().boundedTo(area.viewport()->size() - QSize(2 * around, 2 * around)));
        area.ensureVisible(shown.center().x(), shown.center().y(), shown.width() / 2 + around,
                           shown.height() / 2 + around);
    }

    QScrollArea& area;
    QMetaObject::Connection row;
};

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
        Fitting::keepFocusInSight(*this);
    }
    QSize sizeHint() const override {
        const int bar = verticalScrollBar()->sizeHint().width();
        return widget()->sizeHint() + QSize(bar, bar);
    }
    QSize minimumSizeHint() const override { return {160, 56}; } // two rows

  protected:
    void resizeEvent(QResizeEvent* event) override {
        makeRoomForWraps();
        QScrollArea::resizeEvent(event);
    }
    /// The wheel scrolls; it does not choose in a list on which the pointer happens to be.
    bool eventFilter(QObject* object, QEvent* event) override {
        if (object == widget() && event->type() == QEvent::LayoutRequest)
            makeRoomForWraps();
        const auto* list = dynamic_cast<QComboBox*>(object);
        if (list && event->type() == QEvent::Wheel && !list->hasFocus()) {
            event->ignore();
            return true;
        }
        return QScrollArea::eventFilter(object, event);
    }

  private:
    /// Texts that wrap take their height from the width that there is.
    void makeRoomForWraps() {
        if (const QLayout* rows = widget()->layout(); rows && rows->hasHeightForWidth())
            widget()->setMinimumHeight(
                rows->heightForWidth(std::max(viewport()->width(), rows->minimumSize().width())));
    }
};

/// The row of tools at the top of a screen; null when it has none.
QLayout* toolBarOf(const QWidget& screen) {
    QLayoutItem* first = screen.layout() ? screen.layout()->itemAt(0) : nullptr;
    QLayout* row = first ? first->layout() : nullptr;
    return row && row->objectName().compare("tbToolbar", Qt::CaseInsensitive) == 0 ? row : nullptr;
}

/// Whether an item is a row of buttons, with the lists that say what they work on, and nothing else.
bool isButtonRow(QLayoutItem* item) {
    QLayout* row = item->layout();
    bool buttons = false;
    for (int i = 0; row && i < row->count(); ++i) {
        QLayoutItem* part = row->itemAt(i);
        const QWidget* widget = part->widget();
        if (dynamic_cast<const QAbstractButton*>(widget))
            buttons = true;
        else if (!part->spacerItem() && !dynamic_cast<const QComboBox*>(widget))
            return false;
    }
    return buttons;
}

/// Where the rows of buttons at the end of a screen begin.
int firstButtonRow(QVBoxLayout& rows) {
    int first = rows.count();
    while (first > 0 && (rows.itemAt(first - 1)->spacerItem() || isButtonRow(rows.itemAt(first - 1))))
        --first;
    return first;
}

bool hasSpacer(QLayout& row) {
    for (int i = 0; i < row.count(); ++i)
        if (row.itemAt(i)->spacerItem())
            return true;
    return false;
}

/// Breaks a row of buttons that is wider than a width in pixels into several.
void breakRow(QVBoxLayout& rows, int index, int width) {
    auto* row = dynamic_cast<QHBoxLayout*>(rows.itemAt(index)->layout());
    while (row && row->count() > 1 && row->minimumSize().width() > width) {
        auto* next = new QHBoxLayout;
        next->setSpacing(row->spacing());
        rows.insertLayout(++index, next);
        while (row->count() > 1 && row->minimumSize().width() > width)
            next->insertItem(0, row->takeAt(row->count() - 1));
        if (!hasSpacer(*row))
            row->addStretch();
        if (!hasSpacer(*next)) // what followed it stays on the right
            next->insertStretch(0);
        row = next;
    }
}

/// The height of a list in a low window, in which it scrolls by itself: headings, some rows, and the bar that
/// would otherwise lie below the edge.
int leastHeight(const QTreeWidget& list) {
    constexpr int rows = 4;
    constexpr int aroundText = 6;
    return (rows + 1) * (list.fontMetrics().height() + aroundText) +
           list.horizontalScrollBar()->sizeHint().height();
}

/// Puts what is at the right end of a tool bar into a row of its own.
void breakToolBar(const QWidget& screen, QLayout& toolBar) {
    auto* rows = dynamic_cast<QVBoxLayout*>(screen.layout());
    if (!rows || !hasSpacer(toolBar))
        return;
    auto* next = new QHBoxLayout;
    next->setSpacing(toolBar.spacing());
    const QMargins margins = toolBar.contentsMargins();
    next->setContentsMargins(margins.left(), 0, margins.right(), margins.bottom());
    rows->insertLayout(1, next);
    while (!toolBar.itemAt(toolBar.count() - 1)->spacerItem())
        next->insertItem(0, toolBar.takeAt(toolBar.count() - 1));
    next->insertStretch(0);
}

void move(QVBoxLayout& from, int index, QVBoxLayout& to) {
    const int stretch = from.stretch(index);
    QLayoutItem* item = from.takeAt(index);
    if (QLayout* layout = item->layout()) {
        layout->setParent(nullptr);
        to.addLayout(layout, stretch);
    } else if (QWidget* widget = item->widget()) {
        delete item; // first, or Qt does not tell the new item when the height of a text that wraps changes
        to.addWidget(widget, stretch);
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

void Fitting::keepNarrow(QTreeWidget& list) {
    list.setProperty(narrowProperty, true);
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
    for (auto* row : screen.findChildren<QHBoxLayout*>())
        row->setSpacing(row->spacing()); // which it may have from a layout that gets less below
    for (QLayout* layout : screen.findChildren<QLayout*>()) {
        const QMargins margins = layout->contentsMargins();
        layout->setContentsMargins(margins.left(), std::min(margins.top(), 2 * gap), margins.right(),
                                   std::min(margins.bottom(), 2 * gap));
        if (auto* grid = dynamic_cast<QGridLayout*>(layout))
            grid->setVerticalSpacing(std::min(grid->verticalSpacing(), gap));
        else if (auto* column = dynamic_cast<QVBoxLayout*>(layout))
            column->setSpacing(std::min(column->spacing(), 2 * gap)); // a calendar has none
    }
    screen.layout()->activate();
}

void Fitting::fitToolBar(const QWidget& screen, int width) {
    QLayout* toolBar = toolBarOf(screen);
    if (!toolBar)
        return;
    const QMargins margins = screen.layout()->contentsMargins();
    const auto fits = [&] {
        toolBar->invalidate(); // no hidden button tells it that it has become narrower
        return toolBar->minimumSize().width() + margins.left() + margins.right() <= width;
    };
    if (fits())
        return;
    for (int i = 0; i < toolBar->count(); ++i)
        if (auto* button = dynamic_cast<QToolButton*>(toolBar->itemAt(i)->widget()))
            if (!button->icon().isNull())
                button->setToolButtonStyle(Qt::ToolButtonIconOnly);
    if (!fits())
        breakToolBar(screen, *toolBar);
}

void Fitting::letScroll(QWidget& screen, int width) {
    auto* rows = dynamic_cast<QVBoxLayout*>(screen.layout());
    if (!rows || rows->isEmpty() || screen.findChild<QScrollArea*>("middle", Qt::FindDirectChildrenOnly))
        return;
    const QPointer<QWidget> focused = screen.focusWidget(); // which moving it takes the focus from
    const bool toolBar = toolBarOf(screen);
    constexpr int aroundLists = 80; // pixels: margins and the scroll bar
    auto* middle = new Middle(&screen);
    middle->setObjectName("middle");
    auto* column = new QVBoxLayout(middle->widget());
    column->setContentsMargins(0, 0, 8, 0); // clear of the scroll bar
    column->setSpacing(rows->spacing());
    const int first = toolBar ? 1 : 0;
    for (int left = firstButtonRow(*rows) - first; left > 0; --left)
        move(*rows, first, *column);
    rows->insertWidget(first, middle, 1);
    const QMargins margins = rows->contentsMargins();
    for (int row = rows->count() - 1; row > first; --row)
        breakRow(*rows, row, width - margins.left() - margins.right());
    for (QTreeWidget* list : middle->findChildren<QTreeWidget*>()) {
        Fitting::keepNarrow(*list);
        if (list->property(widenedProperty).toBool())
            list->setMinimumWidth(std::min(list->minimumWidth(), width - aroundLists));
        list->setMinimumHeight(std::min(list->minimumHeight(), leastHeight(*list)));
    }
    for (QComboBox* list : middle->findChildren<QComboBox*>())
        list->installEventFilter(middle);
    screen.setMinimumSize(std::min(screen.minimumWidth(), width), 0); // its boxes keep their widths
    middle->show(); // else the layout shows it only later, and counts it as empty until then
    for (QLayout* layout : {static_cast<QLayout*>(column), static_cast<QLayout*>(rows)})
        layout->activate();
    if (focused && focused != screen.focusWidget())
        focused->setFocus();
}

void Fitting::keepFocusInSight(QScrollArea& area) {
    new FocusFollower(area); // which the area owns
}
