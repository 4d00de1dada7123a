#pragma once

#include <QString>

class QLabel;

namespace StatusBar {

/// Writes the first panel of the status bar; nothing happens while there is no main window.
void SetStatusText(const QString& text);
/// Puts the program's name and version back into it.
void SetStatusBarText();
/// What the panel shows.
QString StatusText();
/// The label that is the first panel, from the main window; null when that goes.
void SetStatusPanel(QLabel* panel);

} // namespace StatusBar
