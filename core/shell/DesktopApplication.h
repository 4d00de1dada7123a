#pragma once

#include "core/shell/Screen.h"

#include <QApplication>
#include <QPointer>

/// The application object. It sees every event first: before the focus leaves a field by mouse, Tab or
/// shortcut it runs the field's check, and drops the event when the check fails (Qt's own focus events come
/// too late for a veto); and it keeps the second press of a double click, and a key that is held, off the
/// screens that came up meanwhile.
class DesktopApplication : public QApplication {
  public:
    using QApplication::QApplication;
    bool notify(QObject* receiver, QEvent* event) override;

  private:
    /// Whether an event goes on with what began on another screen.
    bool strays(QObject* receiver, QEvent* event);

    struct Beginning {
        QPointer<Screen> screen;
        bool onScreen = false;
        bool isAt(Screen* other) const { return onScreen ? screen == other && other : !other; }
    };
    Beginning press;
    QPoint pressPlace;
    unsigned long long pressTime = 0;
    Beginning stroke;
};
