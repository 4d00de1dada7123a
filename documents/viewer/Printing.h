#pragma once

#include "documents/report/Document.h"

/// Prints a document after the printer dialog, with the pages and copies chosen there. Throws Fault 482 when
/// printing cannot start or fails, and Fault 75 when it goes to a file that cannot be written.
void printDocument(const Document& document);
