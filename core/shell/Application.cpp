#include "core/shell/Application.h"

#include "core/shell/Screen.h"

#include <QKeyEvent>
#include <QMenuBar>

namespace {

Screen* screenOf(QWidget* widget) {
    for (; widget; widget = widget->parentWidget())
        if (auto* screen = dynamic_cast<Screen*>(widget))
            return screen;
    return nullptr;
}

/// The widget that a mouse press would give the focus to.
QWidget* clickFocusTarget(QWidget* widget) {
    while (widget && !(widget->isEnabled() && (widget->focusPolicy() & Qt::ClickFocus) == Qt::ClickFocus)) {
        if (widget->isWindow() || dynamic_cast<Screen*>(widget))
            return nullptr;
        widget = widget->parentWidget();
    }
    return widget;
}

/// Whether an event is about to take the focus, or the user, away from a field of a screen.
bool leaves(QWidget* focus, QObject* receiver, QEvent* event) {
    switch (event->type()) {
    case QEvent::MouseButtonPress: {
        auto* widget = dynamic_cast<QWidget*>(receiver);
        QWidget* target = widget ? clickFocusTarget(widget) : nullptr;
        return target && target != focus && target->window() == focus->window() &&
               screenOf(target) == screenOf(focus);
    }
    case QEvent::KeyPress: {
        const auto* key = static_cast<QKeyEvent*>(event);
        return receiver == focus && (key->key() == Qt::Key_Tab || key->key() == Qt::Key_Backtab) &&
               !(key->modifiers() & (Qt::ControlModifier | Qt::AltModifier));
    }
    case QEvent::Shortcut: // a menu that opens takes no focus from the field
        return !dynamic_cast<QMenuBar*>(receiver);
    default:
        return false;
    }
}

} // namespace

bool Application::notify(QObject* receiver, QEvent* event) {
    QWidget* focus = focusWidget();
    Screen* screen = focus ? screenOf(focus) : nullptr;
    if (screen && leaves(focus, receiver, event) && !screen->validateLeaving(focus)) {
        event->accept();
        return true;
    }
    return QApplication::notify(receiver, event);
}
