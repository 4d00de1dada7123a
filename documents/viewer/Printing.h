#pragma once

#include "documents/report/Document.h"

/// Prints a document, after the printer dialog, whose pages and copies count. Throws Fault 482 when printing
/// cannot start or does not end well, and Fault 75 when it goes to a file that cannot be written.
void PrintDocument(const Document& document);
