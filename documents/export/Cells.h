#pragma once

#include "documents/export/Workbook.h"
#include "documents/report/Document.h"

/// How a text of a page is set in a cell.
Workbook::CellStyle CellStyleOf(const PageText& text);

/// Writes a text into a cell: a number with its format, all else as a text.
void AddCell(Workbook& book, int row, int column, const PageText& text, bool indented = false);

/// The name of a document's sheet, from 1.
QString SheetName(const Document& document, int number);
