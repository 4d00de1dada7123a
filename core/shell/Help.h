#pragma once

#include <QString>

class QWidget;

/// The way to the help. A topic is named by the number of a help context or by a screen's name.
namespace Help {

/// The topic of what a user points at: a menu's command, else the application or the screen of a field, else
/// the screen in front, else the contents.
QString topicAt(QWidget* widget);
/// Opens the topic of a widget in the help window.
void show(QWidget* widget);
/// Presses F1 where the focus is, else at a window, once the menu that asked for it has gone.
void pressKey(QWidget* window);

} // namespace Help
