#pragma once

#include <QString>

#include <functional>

class QLabel;
class QToolButton;

namespace StatusBar {

/// Sets the text of the status bar's first panel; does nothing while there is no main window.
void setStatusText(const QString& text);
/// Asks for something in the text, which `stopAsking` puts back as it was.
void ask(const QString& text);
/// Takes back what was asked for last, unless another text has come since.
void stopAsking();
/// Shows "Error" until `errorIsOver`.
void sayError();
/// Takes "Error" back, unless another text has come since. Called when something has succeeded.
void errorIsOver();
/// Puts a button beside the text that stays until the text changes, for what a user may want next.
void offer(const QString& caption, const std::function<void()>& run);
/// Resets it to the program's name and version.
void SetStatusBarText();
/// The panel's current text.
QString statusText();
/// The label used as the first panel and the button beside it, set by the main window; null when that is
/// destroyed.
void setStatusPanel(QLabel* panel, QToolButton* button);

} // namespace StatusBar
