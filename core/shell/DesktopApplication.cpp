#include "core/shell/DesktopApplication.h"

#include "core/shell/Help.h"
#include "core/shell/Screen.h"
#include "core/shell/Trap.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QStyleHints>

namespace {

/// The receiver as a widget; null if it is not one. dynamic_cast fails on the web engine's own objects.
QWidget* widgetOf(QObject* receiver) {
    return receiver->isWidgetType() ? static_cast<QWidget*>(receiver) : nullptr;
}

Screen* screenOf(QWidget* widget) {
    for (; widget; widget = widget->parentWidget())
        if (auto* screen = dynamic_cast<Screen*>(widget))
            return screen;
    return nullptr;
}

/// The widget that a mouse press would focus.
QWidget* clickFocusTarget(QWidget* widget) {
    while (widget && !(widget->isEnabled() && (widget->focusPolicy() & Qt::ClickFocus) == Qt::ClickFocus)) {
        if (widget->isWindow() || dynamic_cast<Screen*>(widget))
            return nullptr;
        widget = widget->parentWidget();
    }
    return widget;
}

/// Whether an event is about to move the focus, or the user, away from a field of a screen. Menu commands,
/// the main window's toolbar and Cancel buttons may do so without a check.
bool leaves(const Screen& screen, QWidget* focus, QObject* receiver, QEvent* event) {
    switch (event->type()) {
    case QEvent::MouseButtonPress: {
        QWidget* widget = widgetOf(receiver);
        QWidget* target = widget ? clickFocusTarget(widget) : nullptr;
        return target && target != focus && screenOf(target) == &screen && !screen.leavesUnchecked(target);
    }
    case QEvent::KeyPress: {
        const auto* key = static_cast<QKeyEvent*>(event);
        return receiver == focus && (key->key() == Qt::Key_Tab || key->key() == Qt::Key_Backtab) &&
               !(key->modifiers() & (Qt::ControlModifier | Qt::AltModifier));
    }
    case QEvent::Shortcut: { // one of the screen's own mnemonics
        QWidget* widget = widgetOf(receiver);
        return widget && screenOf(widget) == &screen && !screen.leavesUnchecked(widget);
    }
    default:
        return false;
    }
}

/// Whether a menu shortcut is also a text box key: cut, select all and undo.
bool belongsToText(QObject* receiver, const QKeyEvent& key) {
    QWidget* widget = widgetOf(receiver);
    const bool known = key.matches(QKeySequence::Cut) || key.matches(QKeySequence::SelectAll) ||
                       key.matches(QKeySequence::Undo);
    return known && widget &&
           (dynamic_cast<QLineEdit*>(widget) || dynamic_cast<QPlainTextEdit*>(widget) ||
            (dynamic_cast<QComboBox*>(widget) && static_cast<QComboBox*>(widget)->isEditable()));
}

bool isPressingKey(int key) {
    return key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space;
}

/// Whether a letter pressed with Alt reaches a box or list, which would type it or look it up. The screen has
/// no such mnemonic then, or its button would have taken the key.
bool isLostMnemonic(QObject* receiver, QEvent& event) {
    if (event.type() != QEvent::KeyPress)
        return false;
    const auto& key = static_cast<QKeyEvent&>(event);
    const QWidget* widget = widgetOf(receiver);
    return (key.modifiers() & (Qt::AltModifier | Qt::ControlModifier)) == Qt::AltModifier &&
           !key.text().isEmpty() && key.text()[0].isPrint() &&
           (dynamic_cast<const QLineEdit*>(widget) || dynamic_cast<const QPlainTextEdit*>(widget) ||
            dynamic_cast<const QComboBox*>(widget) || dynamic_cast<const QAbstractItemView*>(widget));
}

/// Whether this is F1. A message box takes precedence: it has to be answered first.
bool isHelpKey(QObject* receiver, QEvent& event) {
    if (event.type() != QEvent::KeyPress || !widgetOf(receiver) || QApplication::activeModalWidget())
        return false;
    const auto& key = static_cast<QKeyEvent&>(event);
    return key.key() == Qt::Key_F1 && key.modifiers() == Qt::NoModifier;
}

} // namespace

bool DesktopApplication::strays(QObject* receiver, QEvent* event) {
    QWidget* widget = widgetOf(receiver);
    if (!widget)
        return false;
    if (event->type() == QEvent::KeyPress && isPressingKey(static_cast<QKeyEvent*>(event)->key())) {
        Screen* screen = screenOf(widget);
        if (static_cast<QKeyEvent*>(event)->isAutoRepeat())
            return !stroke.isAt(screen);
        stroke = {screen, screen != nullptr};
        return false;
    }
    if (event->type() != QEvent::MouseButtonPress && event->type() != QEvent::MouseButtonDblClick)
        return false;
    const auto* mouse = static_cast<QMouseEvent*>(event);
    const QPoint place = mouse->globalPosition().toPoint();
    const int interval = styleHints()->mouseDoubleClickInterval();
    const bool again = event->type() == QEvent::MouseButtonDblClick ||
                       (pressTime > 0 && mouse->timestamp() > pressTime &&
                        mouse->timestamp() - pressTime < quint64(interval) &&
                        (place - pressPlace).manhattanLength() < startDragDistance());
    Screen* screen = screenOf(widget);
    if (again && !press.isAt(screen))
        return true;
    press = {screen, screen != nullptr};
    pressPlace = place;
    pressTime = mouse->timestamp();
    return false;
}

bool DesktopApplication::notify(QObject* receiver, QEvent* event) {
    if (strays(receiver, event)) {
        event->accept();
        return true;
    }
    if (event->type() == QEvent::ShortcutOverride &&
        belongsToText(receiver, *static_cast<QKeyEvent*>(event))) {
        event->accept();
        return true;
    }
    if (isLostMnemonic(receiver, *event)) {
        event->ignore();
        return false;
    }
    if (isHelpKey(receiver, *event)) {
        Faults::runTrapped("Help", [receiver] { Help::show(static_cast<QWidget*>(receiver)); });
        event->accept();
        return true;
    }
    QWidget* focus = focusWidget();
    Screen* screen = focus ? screenOf(focus) : nullptr;
    if (screen && leaves(*screen, focus, receiver, event) && !screen->validateLeaving(focus)) {
        event->accept();
        return true;
    }
    return QApplication::notify(receiver, event);
}
