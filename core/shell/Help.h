#pragma once

#include <QString>

class QWidget;

/// Access to the help. A topic is identified by a help context number or a screen's name.
namespace Help {

/// The topic for whatever the user points at: a menu command, otherwise the application or screen of a field,
/// otherwise the front screen, otherwise the contents page.
QString topicAt(QWidget* widget);
/// Opens a widget's topic in the help window.
void show(QWidget* widget);
/// Sends F1 to the focus, or otherwise to a window, once the menu that triggered this has closed.
void pressKey(QWidget* window);

} // namespace Help
