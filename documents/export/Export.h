#pragma once

#include "documents/report/Document.h"

#include <span>

/// Writing finished documents to files of six formats.
namespace Export {

/// A format: a row of the table of formats.
struct Format {
    const char* command; // of the main window
    const char* filter;  // of the save dialog
    /// The bytes of the file. Throws Fault when the format's library refuses.
    QByteArray (*write)(const Document&);
};
std::span<const Format> formats();
/// The format of a command, which must be one of the table's.
const Format& format(const QString& command);

/// Writes a document to a file: beside it first and renamed at the end, so that no half file is left; a file
/// that is there keeps its permissions. Throws Fault 75 when the file cannot be written or is no plain file.
void toFile(const Format& format, const Document& document, const QString& path);

QByteArray pdf(const Document& document);
/// Multi-page, 200 dpi, compressed.
QByteArray tiff(const Document& document);
/// One file that needs no other: pictures are inside.
QByteArray html(const Document& document);
/// A workbook in the binary format of spreadsheets (BIFF8 in a compound file).
QByteArray excel(const Document& document);
QByteArray rtf(const Document& document);
/// UTF-8 with aligned columns and a form feed between pages.
QByteArray text(const Document& document);

} // namespace Export
