#pragma once

#include "core/shell/Commands.h"
#include "core/shell/Screens.h"
#include "core/store/Gateway.h"
#include "tests/support/ScriptedDialogs.h"
#include "tests/support/TemporaryHome.h"

#include <QAction>
#include <QtTest/QTest>

/// Drives the whole program through its screens, on its own data.
namespace Driver {

/// Registers the screens and opens the main window without the splash; message boxes are declined.
ScriptedDialogs& start();
/// Closes all screens and the main window.
void stop();

/// Lets everything pending happen.
void settle();
void command(const QString& name);
bool isOpen(const QString& screen);

/// A control, or null if it or its screen does not exist.
template<typename Control = QWidget>
Control* control(const QString& screen, const QString& name) {
    Screen* found = Screens::find(screen);
    return found ? found->control<Control>(name) : nullptr;
}

/// Presses a point of a widget as the window system would: whatever is on top receives it. Returns an empty
/// text, or why the point cannot be pressed.
QString pressAt(QWidget* target, const QPoint& point, bool twice = false);
/// Where a widget takes a click.
QPoint pressPoint(const QWidget* widget);
/// Presses a button if it can be pressed.
void press(const QString& screen, const QString& name);

/// Replaces the text of a box in one go, as an input method does, running the handlers of typing.
void enter(const QString& screen, const QString& name, const QString& text);
/// The conditions of an expansion tank that fits the catalogue.
void enterConditions(const QString& volume = "500");

/// The text shown in the error dialog; empty if it is not open.
QString report();

} // namespace Driver
