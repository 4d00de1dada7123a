#pragma once

#include "documents/export/Export.h"

/// Writes a list as a workbook that can be sorted and filtered: one row of headings, then one row per detail,
/// with the texts of its group's heading in extra columns. Throws
/// Export::Stopped.
QByteArray tableWorkbook(const Document& document, const Export::GoOn& goOn);
