#pragma once

#include <QString>

class QPlainTextEdit;

/// Shows a specification and its last line in a text box, with everything selected.
void showSpecification(QPlainTextEdit* box, const QString& text, const QString& lastLine);

/// Empties the box.
void clearSpecification(QPlainTextEdit* box);

/// The contents of the box, for the clipboard.
QString specificationText(const QPlainTextEdit* box);

/// Asks, when a screen that has copied closes, whether the text should stay on the clipboard.
void askForClipboard(bool copied);
