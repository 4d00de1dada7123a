#pragma once

#include "documents/report/Document.h"

/// Shows a document in the viewer, replacing the one before.
void showDocument(const Document& document);

/// Registers the viewer and the main window's export commands.
void registerViewer();
