#pragma once

#include <QString>

class QLabel;

namespace StatusBar {

/// Sets the text of the status bar's first panel; does nothing while there is no main window.
void setStatusText(const QString& text);
/// Resets it to the program's name and version.
void SetStatusBarText();
/// The panel's current text.
QString statusText();
/// The label used as the first panel, set by the main window; null when that is destroyed.
void setStatusPanel(QLabel* panel);

} // namespace StatusBar
