#pragma once

#include "documents/report/Page.h"

/// Writing finished pages to files of six formats.
namespace Export {

enum class Format { Pdf, Tiff, Html, Excel, Rtf, Text };

/// The pages in a format, as the bytes of its file. The title goes into the file's own description where the
/// format has one. Throws Fault when the format's library refuses.
QByteArray toBytes(Format format, const Pages& pages, const QString& title);

/// Writes the pages to a file: beside it first and renamed at the end, so that no half file is left.
/// Throws Fault 75 when the file cannot be written.
void toFile(Format format, const Pages& pages, const QString& title, const QString& path);

QByteArray pdf(const Pages& pages, const QString& title);
/// Multi-page, 200 dpi, compressed.
QByteArray tiff(const Pages& pages, const QString& title);
/// One file that needs no other: pictures are inside.
QByteArray html(const Pages& pages, const QString& title);
/// A workbook in the binary format of spreadsheets (BIFF8 in a compound file), a sheet a page or more.
QByteArray excel(const Pages& pages, const QString& title);
QByteArray rtf(const Pages& pages, const QString& title);
/// UTF-8 with aligned columns and a form feed between pages.
QByteArray text(const Pages& pages);

} // namespace Export
