#pragma once

#include "documents/report/DocumentMaker.h"

#include <memory>

/// Shows a document in the viewer, replacing the one before.
void showDocument(const Document& document);
/// Shows the pages of a document that are made, and makes the others while the user reads.
void showDocument(std::unique_ptr<DocumentMaker> maker);

/// Registers the viewer and the main window's export commands.
void registerViewer();
