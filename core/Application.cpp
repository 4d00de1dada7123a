#include "core/Application.h"

#include "core/Screen.h"

#include <QKeyEvent>
#include <QMenuBar>
#include <QPainter>
#include <QStyleFactory>

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

/// The program's mark: a standing tank.
QIcon programIcon(const QColor& color) {
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64}) {
        QPixmap pixmap(size, size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(size / 16.0, size / 16.0);
        painter.setPen(QPen(color, 1.5));
        painter.setBrush(Qt::white);
        painter.drawRoundedRect(QRectF(4, 1, 8, 11.5), 3.5, 3.5);
        painter.drawLine(QPointF(5, 12), QPointF(5, 15));
        painter.drawLine(QPointF(11, 12), QPointF(11, 15));
        painter.drawLine(QPointF(5, 7), QPointF(11, 7));
        icon.addPixmap(pixmap);
    }
    return icon;
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

Appearance::Scheme Appearance::systemScheme() {
    const QPalette palette = QApplication::palette();
    return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness()
               ? Scheme::Dark
               : Scheme::Light;
}

void Appearance::apply(Scheme scheme) {
    const bool dark = scheme == Scheme::Dark;
    const QColor text = dark ? QColor(0xE6, 0xEA, 0xEE) : QColor(0x1E, 0x27, 0x30);
    const QColor faint = dark ? QColor(0x7C, 0x87, 0x92) : QColor(0x8A, 0x94, 0x9E);
    const QColor accent = dark ? QColor(0x3D, 0x8F, 0xC9) : QColor(0x1F, 0x6F, 0xA8);
    QPalette palette;
    palette.setColor(QPalette::Window, dark ? QColor(0x25, 0x2B, 0x31) : QColor(0xF4, 0xF6, 0xF8));
    palette.setColor(QPalette::Base, dark ? QColor(0x1B, 0x20, 0x25) : QColor(0xFF, 0xFF, 0xFF));
    palette.setColor(QPalette::AlternateBase, dark ? QColor(0x20, 0x26, 0x2B) : QColor(0xF0, 0xF3, 0xF6));
    palette.setColor(QPalette::Button, dark ? QColor(0x32, 0x3A, 0x42) : QColor(0xE9, 0xED, 0xF1));
    palette.setColor(QPalette::Mid, dark ? QColor(0x17, 0x1B, 0x20) : QColor(0xD3, 0xDA, 0xE1));
    palette.setColor(QPalette::ToolTipBase, dark ? QColor(0x32, 0x3A, 0x42) : QColor(0xFF, 0xFF, 0xFF));
    for (const auto role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
        palette.setColor(role, text);
        palette.setColor(QPalette::Disabled, role, faint);
    }
    palette.setColor(QPalette::PlaceholderText, faint);
    palette.setColor(QPalette::Highlight, accent);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, accent);
    QApplication::setStyle(QStyleFactory::create("Fusion"));
    QApplication::setPalette(palette);
    QApplication::setWindowIcon(programIcon(accent));
}
