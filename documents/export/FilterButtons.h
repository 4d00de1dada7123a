#pragma once

#include <QByteArray>
#include <QList>

/// The buttons of a sheet's filters. A workbook stores them as drawing objects, one in each cell of a row.
namespace FilterButtons {

/// The records for one sheet; sheets are counted from 1.
QByteArray ofSheet(int sheet, int row, int columns);

/// The workbook's record of its sheets' drawings. Gives the number of button columns for each sheet, or 0.
QByteArray ofWorkbook(const QList<int>& columnsOfSheets);

} // namespace FilterButtons
