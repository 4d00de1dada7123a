#pragma once

#include <QByteArray>
#include <QList>

/// The buttons of a sheet's filters, which a workbook holds as drawn objects, one in each cell of a row.
namespace FilterButtons {

/// The records of the sheet; sheets are counted from 1.
QByteArray OfSheet(int sheet, int row, int columns);

/// The record of the workbook about the drawings of its sheets, each with buttons in so many columns,
/// or none.
QByteArray OfWorkbook(const QList<int>& columnsOfSheets);

} // namespace FilterButtons
