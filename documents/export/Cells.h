#pragma once

#include "documents/export/Workbook.h"
#include "documents/report/Document.h"

/// The cell style that matches a text of a page.
Workbook::CellStyle cellStyleOf(const PageText& text);

/// How a text is placed in its cell, as in Workbook::CellStyle.
struct CellPlace {
    bool indented = false;
    bool top = false;
    Workbook::Frame frame{};
};
/// Writes a text into a cell: numbers with their format, anything else as text.
void addCell(Workbook& book, int row, int column, const PageText& text, const CellPlace& place = {});

/// The name of a document's sheet, counted from 1.
QString sheetName(const Document& document, int number);
