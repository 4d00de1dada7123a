#pragma once

#include <QString>

#include <functional>

class QAction;

/// The menu commands by name, such as "mnuNewJob". Each subsystem registers its own handlers; a command
/// without one is disabled.
namespace Commands {

/// Registers the handler of a command; a later one replaces it.
void set(const QString& name, const std::function<void()>& handler);
/// The handler, or an empty function.
std::function<void()> handlerOf(const QString& name);

/// Registers the main window's action for a command.
void addAction(const QString& name, QAction* action);
/// Null while there is no main window.
QAction* action(const QString& name);
/// For screens that control their own commands.
void setEnabled(const QString& name, bool enabled);
void setVisible(const QString& name, bool visible);

} // namespace Commands
