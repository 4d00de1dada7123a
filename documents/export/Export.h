#pragma once

#include "documents/report/Document.h"

#include <span>

class QIODevice;

/// Writing finished documents to files of six formats.
namespace Export {

/// A format: a row of the table of formats.
struct Format {
    const char* command; // of the main window
    const char* filter;  // of the save dialog
    /// Writes the file to an open device, which tells whether it took all. Throws Fault when the format's
    /// library refuses.
    void (*write)(const Document&, QIODevice&);
};
std::span<const Format> formats();
/// The format of a command, which must be one of the table's.
const Format& format(const QString& command);

/// Writes a document to a file: beside it first and renamed at the end, so that no half file is left; a file
/// that is there keeps its permissions. Throws Fault 75 when the file cannot be written or is no plain file.
void toFile(const Format& format, const Document& document, const QString& path);

void pdf(const Document& document, QIODevice& file);
/// Multi-page, 200 dpi, compressed.
void tiff(const Document& document, QIODevice& file);
/// One file that needs no other: pictures are inside.
void html(const Document& document, QIODevice& file);
/// A workbook in the binary format of spreadsheets (BIFF8 in a compound file).
void excel(const Document& document, QIODevice& file);
void rtf(const Document& document, QIODevice& file);
/// UTF-8 with aligned columns and a form feed between pages.
void text(const Document& document, QIODevice& file);

} // namespace Export
