#pragma once

#include "core/shell/Commands.h"
#include "core/shell/Screens.h"
#include "core/store/Gateway.h"
#include "tests/support/ScriptedDialogs.h"
#include "tests/support/TemporaryHome.h"

#include <QAction>
#include <QtTest/QTest>

/// Drives the whole program through its screens, on data of its own.
namespace Driver {

/// Makes the screens known and brings up the main window, without the splash; message boxes are declined.
ScriptedDialogs& start();
/// Closes all screens and the main window.
void stop();

/// Lets everything happen that is waiting to.
void settle();
void command(const QString& name);
bool isOpen(const QString& screen);

/// A control, or null when it or its screen is not there.
template<typename Control = QWidget>
Control* control(const QString& screen, const QString& name) {
    Screen* found = Screens::find(screen);
    return found ? found->control<Control>(name) : nullptr;
}

/// Presses at a point of a widget as the window system would: whatever stands on top gets it. An empty text,
/// or why it cannot be pressed there.
QString pressAt(QWidget* target, const QPoint& point, bool twice = false);
/// Where a widget takes a click.
QPoint pressPoint(const QWidget* widget);
/// Presses a button, if it is there to be pressed.
void press(const QString& screen, const QString& name);

/// Replaces the text of a box as an input method does: through the handlers of typing, all at once.
void enter(const QString& screen, const QString& name, const QString& text);
/// The conditions of an expansion tank that fits the catalogue.
void enterConditions(const QString& volume = "500");

/// The text of what the error dialog shows; an empty one when it is not open.
QString report();

} // namespace Driver
