#pragma once

#include "documents/report/Document.h"

/// A list as a workbook that can be sorted and filtered: one row of headings, below it each detail in a row
/// of its own, with what the heading of its group says in columns behind it.
QByteArray TableWorkbook(const Document& document);
