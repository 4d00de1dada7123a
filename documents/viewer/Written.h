#pragma once

#include "documents/report/Document.h"

/// The name that exports and the printer dialog propose for a file, without an extension; every system
/// accepts it.
QString proposedName(const Document& document);

/// Says in the status text where a document was written, with a button that opens the file.
void sayWritten(const QString& sentence, const QString& path);

/// The file that was written last; empty before the first.
QString lastWritten();

/// Opens that file with the desktop's program for it, or says that there is none.
void openWritten();
