#include "core/shell/ScreenFrame.h"

#include "core/shell/Fitting.h"

#include <QApplication>
#include <QCloseEvent>
#include <QLayout>
#include <QMdiArea>

#include <algorithm>
#include <utility>

ScreenFrame::ScreenFrame(QWidget& shownScreen, QMdiArea& screenArea, Growth screenGrowth,
                         std::function<bool()> closing)
    : screen(shownScreen), area(screenArea), growth(screenGrowth), mayClose(std::move(closing)) {
    setWidget(&screen);
    setWindowTitle(screen.windowTitle());
    setWindowIcon(QApplication::windowIcon());
    setAttribute(Qt::WA_DeleteOnClose, false);
    if (growth == Growth::Keeps) {
        setWindowFlag(Qt::WindowMaximizeButtonHint, false);
        if (screen.layout()) // a larger frame must not pull the form apart
            screen.layout()->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    }
    area.addSubWindow(this);
    hide();
}

void ScreenFrame::fitAndCentre() {
    whole = whole.expandedTo(size());
    adaptToSpace();
    // On a low display shrink the screen to the space, if a list or text in it can give way.
    const QSize wanted = size();
    resize(wanted.boundedTo(space()).expandedTo(leastSize()));
    fitted = size();
    centre();
}

void ScreenFrame::centreAgain() {
    if (isMaximized() || pos() != centredAt)
        return;
    if (size() != size().boundedTo(space()))
        return fitAndCentre();
    if (size() == fitted) { // and not the user's, so that it grows again with the space
        resize(whole.boundedTo(space()).expandedTo(size()));
        fitted = size();
    }
    centre();
}

void ScreenFrame::applyState() {
    if (fills() && !isMaximized()) {
        Fitting::fitToolBar(screen, space().width());
        if (growth == Growth::FillsOrScrolls)
            adaptToSpace();
        showMaximized();
    } else if (!fills() && (isMaximized() || isMinimized()))
        showNormal();
}

QSize ScreenFrame::room() const {
    return space() - (minimumSizeHint() - screen.minimumSizeHint().expandedTo(screen.minimumSize()));
}

/// A screen that has come to show more, such as a longer figure, gets the room for it.
bool ScreenFrame::event(QEvent* event) {
    const bool handled = QMdiSubWindow::event(event);
    if (event->type() != QEvent::LayoutRequest || !isVisible() || isMaximized() || isMinimized())
        return handled;
    const QSize least = leastSize();
    if (least != least.boundedTo(size()) || least != least.boundedTo(space()))
        fitAndCentre();
    return handled;
}

void ScreenFrame::closeEvent(QCloseEvent* event) {
    event->setAccepted(mayClose());
}

/// The focus stays in the screen, even if that has nothing else to go to: outside, no key would close it.
bool ScreenFrame::focusNextPrevChild(bool next) {
    static_cast<void>(QMdiSubWindow::focusNextPrevChild(next));
    const QWidget* focus = QApplication::focusWidget();
    if (focus != &screen && !screen.isAncestorOf(focus))
        screen.setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
}

QSize ScreenFrame::space() const {
    return area.viewport()->size();
}

/// The least size of the window. A form has a least size of its own, which large letters exceed.
QSize ScreenFrame::leastSize() const {
    if (const QLayout* rows = screen.layout()) {
        const QSize needed = rows->totalMinimumSize();
        if (screen.minimumWidth() > 0)
            screen.setMinimumWidth(std::max(screen.minimumWidth(), needed.width()));
        if (screen.minimumHeight() > 0)
            screen.setMinimumHeight(std::max(screen.minimumHeight(), needed.height()));
    }
    return minimumSizeHint();
}

/// Whether the window, as small as it gets now, exceeds the space.
bool ScreenFrame::exceedsSpace() {
    QSize least = leastSize();
    adjustSize();
    if (const QLayout* rows = screen.layout(); rows && rows->hasHeightForWidth()) // its texts wrap
        least.setHeight(std::max(least.height(), rows->totalMinimumHeightForWidth(screen.width()) + height() -
                                                     screen.height()));
    return least != least.boundedTo(space());
}

/// Makes the window as small as the space asks for, if it must: first at the cost of the space between its
/// rows, then by letting it scroll.
void ScreenFrame::adaptToSpace() {
    if (!exceedsSpace())
        return;
    if (screen.layout())
        Fitting::tighten(screen);
    if (exceedsSpace()) {
        const int roomWidth = space().width() - (width() - screen.width());
        Fitting::fitToolBar(screen, roomWidth);
        Fitting::letScroll(screen, roomWidth);
        adjustSize();
    }
}

/// Places the window in the middle, or at the top or left edge if it is larger than the space.
void ScreenFrame::centre() {
    const QSize free = space() - size();
    centredAt = {std::max(0, free.width() / 2), std::max(0, free.height() / 2)};
    move(centredAt);
}
