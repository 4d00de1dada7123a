#pragma once

#include "documents/report/Document.h"

#include <span>

class QIODevice;

/// Writes finished documents to files of six formats.
namespace Export {

/// One row of the table of formats.
struct Format {
    const char* command; // in the main window
    const char* filter;  // for the save dialog
    /// Writes the file to an open device, which records whether it took everything. Throws Fault when the
    /// format's library fails.
    void (*write)(const Document&, QIODevice&);
};
std::span<const Format> formats();
/// The format of a command, which must be in the table.
const Format& format(const QString& command);

/// Writes a document to a temporary file beside the target and renames it at the end, so no half-written file
/// is left behind. An existing file keeps its permissions. Throws Fault 75 when the file cannot be written or
/// is not a plain file.
void toFile(const Format& format, const Document& document, const QString& path);

void pdf(const Document& document, QIODevice& file);
/// Multi-page, 200 dpi, compressed.
void tiff(const Document& document, QIODevice& file);
/// One self-contained file, with its pictures embedded.
void html(const Document& document, QIODevice& file);
/// A workbook in the binary format of spreadsheets (BIFF8 in a compound file).
void excel(const Document& document, QIODevice& file);
void rtf(const Document& document, QIODevice& file);
/// UTF-8 with aligned columns and a form feed between pages.
void text(const Document& document, QIODevice& file);

} // namespace Export
