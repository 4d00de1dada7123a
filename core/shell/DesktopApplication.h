#pragma once

#include "core/shell/Screen.h"

#include <QApplication>
#include <QPointer>

/// The application object. It sees every event first. Before the focus leaves a field by mouse, Tab or
/// shortcut it runs the field's check and drops the event if that fails; Qt's own focus events come too late
/// for a veto. It also keeps the second press of a double click, and an auto-repeating key, away from a
/// screen that has opened in the meantime.
class DesktopApplication : public QApplication {
  public:
    using QApplication::QApplication;
    bool notify(QObject* receiver, QEvent* event) override;

  private:
    /// Whether an event continues something that began on another screen.
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
