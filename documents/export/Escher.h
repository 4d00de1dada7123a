#pragma once

#include "documents/export/Biff.h"

#include <QList>

#include <utility>

/// The parts of drawings in binary spreadsheets.
namespace Escher {

constexpr int shapesOfASheet = 1024; // shape numbers reserved for each sheet
constexpr unsigned container = 0xF;  // the version of an atom that holds other atoms
constexpr qsizetype headOfAtom = 8;  // bytes

/// One atom of a drawing: version, instance number, type and contents, which may go on beyond what is given.
inline QByteArray atom(unsigned version, unsigned instance, std::uint16_t kind, const QByteArray& body,
                       qsizetype length) {
    QByteArray bytes;
    Biff::put(bytes, std::uint16_t(version | instance << 4));
    Biff::put(bytes, kind);
    Biff::put(bytes, std::uint32_t(length));
    return bytes + body;
}

inline QByteArray atom(unsigned version, unsigned instance, std::uint16_t kind, const QByteArray& body) {
    return atom(version, instance, kind, body, body.size());
}

inline QByteArray words(std::initializer_list<std::uint32_t> values) {
    QByteArray bytes;
    for (const std::uint32_t value : values)
        Biff::put(bytes, value);
    return bytes;
}

/// Properties by number; what the last one refers to follows them.
inline QByteArray properties(std::initializer_list<std::pair<std::uint16_t, std::uint32_t>> values,
                             const QByteArray& referred = {}) {
    QByteArray bytes;
    for (const auto& [property, value] : values) {
        Biff::put(bytes, property);
        Biff::put(bytes, value);
    }
    return atom(3, unsigned(values.size()), 0xF00B, bytes + referred);
}

/// The beginning of a sheet's drawing, whose shapes follow: their number, the number of the last, and how
/// many bytes they take.
inline QByteArray drawing(int sheet, int shapes, qsizetype bytes) {
    const auto first = std::uint32_t(sheet * shapesOfASheet);
    const QByteArray group =
        atom(container, 0, 0xF004,
             atom(1, 0, 0xF009, QByteArray(16, 0)) + atom(2, 0, 0xF00A, words({first, 0x0005})));
    const qsizetype length = group.size() + bytes;
    const QByteArray head =
        atom(0, unsigned(sheet), 0xF008, words({std::uint32_t(shapes + 1), first + std::uint32_t(shapes)}));
    return atom(container, 0, 0xF002, head, head.size() + headOfAtom + length) +
           atom(container, 0, 0xF003, group, length);
}

/// The drawings of a workbook, by the number of shapes of each sheet, with what they share.
inline QByteArray drawings(const QList<int>& shapesOfSheets, const QByteArray& shared = {}) {
    std::uint32_t shapes = 0;
    QByteArray clusters;
    for (qsizetype i = 0; i < shapesOfSheets.size(); ++i) {
        if (shapesOfSheets[i] == 0)
            continue;
        const auto inSheet = std::uint32_t(shapesOfSheets[i] + 1);
        clusters += words({std::uint32_t(i + 1), inSheet});
        shapes += inSheet;
    }
    const auto sheets = std::uint32_t(shapesOfSheets.size());
    return atom(
        container, 0, 0xF000,
        atom(0, 0, 0xF006, words({(sheets + 1) * shapesOfASheet, sheets + 1, shapes, sheets}) + clusters) +
            shared + properties({{0x00BF, 0x00080008}, {0x0181, 0x08000041}, {0x01C0, 0x08000040}}) +
            atom(0, 4, 0xF11E, words({0x0800000D, 0x0800000C, 0x08000017, 0x100000F7})));
}

} // namespace Escher
