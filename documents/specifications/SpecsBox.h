#pragma once

#include <QString>

class QPlainTextEdit;

/// Shows a specification and its last line in a text box, all selected.
void ShowSpecification(QPlainTextEdit* box, const QString& text, const QString& lastLine);

/// Empties the box.
void ClearSpecification(QPlainTextEdit* box);

/// What the box holds, for the clipboard.
QString SpecificationText(const QPlainTextEdit* box);

/// At the closing of a screen that has copied: asks whether the text stays on the clipboard.
void AskForClipboard(bool copied);
