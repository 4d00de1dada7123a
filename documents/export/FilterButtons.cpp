#include "documents/export/FilterButtons.h"

#include "documents/export/Biff.h"

using namespace Biff;

namespace FilterButtons {

namespace {

constexpr int shapesOfASheet = 1024; // shape numbers reserved for each sheet

/// One atom of a drawing: version, instance number, type and contents.
QByteArray atom(unsigned version, unsigned instance, std::uint16_t kind, const QByteArray& body,
                qsizetype length) {
    QByteArray bytes;
    put(bytes, std::uint16_t(version | instance << 4));
    put(bytes, kind);
    put(bytes, std::uint32_t(length));
    return bytes + body;
}

QByteArray atom(unsigned version, unsigned instance, std::uint16_t kind, const QByteArray& body) {
    return atom(version, instance, kind, body, body.size());
}

constexpr unsigned container = 0xF; // the version of an atom that holds other atoms

QByteArray words(std::initializer_list<std::uint32_t> values) {
    QByteArray bytes;
    for (const std::uint32_t value : values)
        put(bytes, value);
    return bytes;
}

/// Properties by number.
QByteArray properties(std::initializer_list<std::pair<std::uint16_t, std::uint32_t>> values) {
    QByteArray bytes;
    for (const auto& [property, value] : values) {
        put(bytes, property);
        put(bytes, value);
    }
    return atom(3, unsigned(values.size()), 0xF00B, bytes);
}

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
    const QByteArray group = atom(container, 0, 0xF004,
                                  atom(1, 0, 0xF009, QByteArray(16, 0)) +
                                      atom(2, 0, 0xF00A, words({std::uint32_t(firstShape), 0x0005})));
    QList<QByteArray> buttons;
    qsizetype length = group.size();
    for (int column = 0; column < columns; ++column) {
        buttons.append(button(firstShape + 1 + column, row, column));
        length += buttons.last().size();
    }
    const QByteArray head = atom(0, unsigned(sheet), 0xF008,
                                 words({std::uint32_t(columns + 1), std::uint32_t(firstShape + columns)}));
    constexpr qsizetype headOfAtom = 8;
    // The containers begin in the record of the first button and continue in those of the others.
    QByteArray drawing = atom(container, 0, 0xF002, head, head.size() + headOfAtom + length) +
                         atom(container, 0, 0xF003, group, length);
    QByteArray stream;
    for (int column = 0; column < columns; ++column) {
        record(stream, 0x00EC, drawing + buttons[column]);
        record(stream, 0x005D, object(column + 1));
        drawing.clear();
    }
    return stream;
}

QByteArray ofWorkbook(const QList<int>& columnsOfSheets) {
    std::uint32_t shapes = 0;
    QByteArray clusters;
    for (qsizetype i = 0; i < columnsOfSheets.size(); ++i) {
        if (columnsOfSheets[i] == 0)
            continue;
        const auto inSheet = std::uint32_t(columnsOfSheets[i] + 1);
        clusters += words({std::uint32_t(i + 1), inSheet});
        shapes += inSheet;
    }
    const auto sheets = std::uint32_t(columnsOfSheets.size());
    const QByteArray drawings = atom(
        container, 0, 0xF000,
        atom(0, 0, 0xF006, words({(sheets + 1) * shapesOfASheet, sheets + 1, shapes, sheets}) + clusters) +
            properties({{0x00BF, 0x00080008}, {0x0181, 0x08000041}, {0x01C0, 0x08000040}}) +
            atom(0, 4, 0xF11E, words({0x0800000D, 0x0800000C, 0x08000017, 0x100000F7})));
    QByteArray stream;
    record(stream, 0x00EB, drawings);
    return stream;
}

} // namespace FilterButtons
