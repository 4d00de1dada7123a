#include "documents/export/FilterButtons.h"

#include "documents/export/Escher.h"

using namespace Biff;
using namespace Escher;

namespace FilterButtons {

namespace {

/// The shape of a button that fills a cell.
QByteArray button(int shape, int row, int column) {
    QByteArray place;
    putWords(place, {1, column, 0, row, 0, column + 1, 0, row + 1, 0});
    constexpr unsigned hostControl = 201;
    return atom(container, 0, 0xF004,
                atom(2, hostControl, 0xF00A, words({std::uint32_t(shape), 0x0A00})) +
                    properties({{0x007F, 0x01040104}, // no grouping
                                {0x00BF, 0x00080008},
                                {0x01BF, 0x00010000},
                                {0x01FF, 0x00080000},    // no line
                                {0x03BF, 0x000A0000}}) + // do not print
                    atom(0, 0, 0xF010, place) +
                    atom(0, 0, 0xF011, {}));
}

/// Makes the button the drop-down list of a filter.
QByteArray object(int number) {
    QByteArray body;
    putWords(body, {0x0015, 0x0012, 0x0014, number, 0x2101}); // a combo box
    body += QByteArray(12, 0);
    putWords(body, {0x000C, 20}); // its scroll bar, at the defaults
    body += QByteArray(20, 0);
    putWords(body, {0x0013, 16, 0, 0, 0, 0x0301, 0, 2, 20, 130}); // a filter's list
    putWords(body, {0, 0});
    return body;
}

} // namespace

QByteArray ofSheet(int sheet, int row, int columns) {
    const int firstShape = sheet * shapesOfASheet;
    QList<QByteArray> buttons;
    qsizetype length = 0;
    for (int column = 0; column < columns; ++column) {
        buttons.append(button(firstShape + 1 + column, row, column));
        length += buttons.last().size();
    }
    // The containers begin in the record of the first button and continue in those of the others.
    QByteArray begun = drawing(sheet, columns, length);
    QByteArray stream;
    for (int column = 0; column < columns; ++column) {
        record(stream, 0x00EC, begun + buttons[column]);
        record(stream, 0x005D, object(column + 1));
        begun.clear();
    }
    return stream;
}

QByteArray ofWorkbook(const QList<int>& columnsOfSheets) {
    QByteArray stream;
    record(stream, 0x00EB, drawings(columnsOfSheets));
    return stream;
}

} // namespace FilterButtons
