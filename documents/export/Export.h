#pragma once

#include "documents/report/Document.h"

#include <functional>
#include <span>

class QIODevice;

/// Writes finished documents to files of six formats.
namespace Export {

/// Asked before each page with how many are written and how many there are; false stops the writing. An empty
/// one is not asked.
using GoOn = std::function<bool(qsizetype written, qsizetype all)>;

/// What a writer throws when it is stopped.
struct Stopped {};

/// Asks before a page. Throws Stopped.
void ask(const GoOn& goOn, qsizetype written, qsizetype all);

/// One row of the table of formats.
struct Format {
    const char* command; // in the main window
    const char* filter;  // for the save dialog
    /// Writes the file to an open device, which records whether it took everything. Throws Fault when the
    /// format's library fails, and Stopped.
    void (*write)(const Document&, QIODevice&, const GoOn&);
};
std::span<const Format> formats();
/// The format of a command, which must be in the table.
const Format& format(const QString& command);

/// What fills a file; it may throw Stopped.
using Writer = std::function<void(QIODevice& file)>;
/// Lets a writer fill a temporary file beside the target and renames it at the end, so no half-written file
/// is left behind. An existing file keeps its permissions. False if it was stopped: then everything is as it
/// was. Throws Fault 75 when the file cannot be written or is not a plain file.
bool toFile(const QString& path, const Writer& write);
/// Writes a document so in one of the formats.
bool toFile(const Format& format, const Document& document, const QString& path, const GoOn& goOn = {});

void pdf(const Document& document, QIODevice& file, const GoOn& goOn = {});
/// Multi-page, 200 dpi, compressed.
void tiff(const Document& document, QIODevice& file, const GoOn& goOn = {});
/// One self-contained file, with its pictures embedded.
void html(const Document& document, QIODevice& file, const GoOn& goOn = {});
/// A workbook in the binary format of spreadsheets (BIFF8 in a compound file).
void excel(const Document& document, QIODevice& file, const GoOn& goOn = {});
void rtf(const Document& document, QIODevice& file, const GoOn& goOn = {});
/// UTF-8 with aligned columns and a form feed between pages.
void text(const Document& document, QIODevice& file, const GoOn& goOn = {});

} // namespace Export
