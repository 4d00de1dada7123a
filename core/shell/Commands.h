#pragma once

#include <QString>

#include <functional>

class QAction;

/// The menu commands by their names, such as "mnuNewJob". Each subsystem gives its own handlers; a command
/// without one is disabled.
namespace Commands {

void set(const QString& name, const std::function<void()>& handler);
/// The handler, or an empty function.
std::function<void()> handlerOf(const QString& name);

/// Tells of the main window's action for a command.
void addAction(const QString& name, QAction* action);
/// Null when the main window does not stand.
QAction* action(const QString& name);
/// What the screens do with the commands that belong to them.
void setEnabled(const QString& name, bool enabled);
void setVisible(const QString& name, bool visible);

} // namespace Commands
