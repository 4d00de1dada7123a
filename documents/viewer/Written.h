#pragma once

#include "documents/export/Export.h"

/// The name that exports and the printer dialog propose for a file, without an extension; every system
/// accepts it.
QString proposedName(const Document& document);

/// Writes a document to an open file and asks before each page whether to go on.
using DocumentWriter = std::function<void(QIODevice& file, const Export::GoOn& goOn)>;
/// Lets a document be written to a file, tells how far that is, and lets the user stop it: then the result is
/// false, and everything is as it was. Throws as Export::toFile.
bool writeFile(const QString& path, const DocumentWriter& write);
/// Writes a document so in one of the formats.
bool writeFile(const Export::Format& format, const Document& document, const QString& path);

/// Says in the status text where a document was written, with a button that opens the file.
void sayWritten(const QString& sentence, const QString& path);

/// The file that was written last; empty before the first.
QString lastWritten();

/// Opens that file with the desktop's program for it, or says that there is none.
void openWritten();
