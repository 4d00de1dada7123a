#pragma once

#include "documents/report/Document.h"

/// Shows a document in the viewer, in place of what it showed before.
void ShowDocument(const Document& document);

/// Prints a document, after the printer dialog, whose pages and copies count. Throws Fault 482 when printing
/// cannot start or does not end well, and Fault 75 when it goes to a file that cannot be written.
void PrintDocument(const Document& document);

/// The commands Print, Preview and Export of the main window.
void registerReportCommands();
