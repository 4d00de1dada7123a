#pragma once

#include "documents/report/Document.h"

/// Shows a document in the viewer, in place of what it showed before.
void ShowDocument(const Document& document);

/// Makes the viewer known, and the export commands of the main window.
void registerViewer();
