#include "documents/export/Workbook.h"

#include "documents/export/Biff.h"
#include "documents/export/CompoundFile.h"
#include "documents/export/FilterButtons.h"

#include <algorithm>
#include <cmath>

using namespace Biff;

namespace {

constexpr qsizetype mostRecordBytes = 8224;
constexpr int fontsOfTheDefault = 5;   // font 4 does not exist; our own begin at 5
constexpr int stylesOfTheDefault = 16; // the 15 built-in styles and the default cell's
constexpr int firstOwnFormat = 164;

bool isNarrow(const QString& text) {
    return std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 0x100; });
}

QByteArray characters(const QString& text, bool narrow) {
    QByteArray bytes;
    for (const QChar c : text) {
        if (narrow)
            bytes += char(c.unicode());
        else
            put<std::uint16_t>(bytes, c.unicode());
    }
    return bytes;
}

/// A text preceded by its length in one or two bytes and a flag for its width.
template<typename Length>
QByteArray counted(const QString& text) {
    QByteArray bytes;
    const bool narrow = isNarrow(text);
    put(bytes, Length(text.size()));
    put<std::uint8_t>(bytes, narrow ? 0 : 1);
    return bytes + characters(text, narrow);
}

void beginSubstream(QByteArray& stream, std::uint16_t kind) {
    QByteArray body;
    put<std::uint16_t>(body, 0x0600); // BIFF8
    put<std::uint16_t>(body, kind);
    put<std::uint16_t>(body, 0x0DBB);
    put<std::uint16_t>(body, 0x07CC);
    put<std::uint32_t>(body, 0x00000041);
    put<std::uint32_t>(body, 0x00000006);
    record(stream, 0x0809, body);
}

void fontRecord(QByteArray& stream, int size, bool bold, bool italic) {
    QByteArray body;
    put<std::uint16_t>(body, std::uint16_t(size * 20));
    put<std::uint16_t>(body, italic ? 2 : 0);
    put<std::uint16_t>(body, 0x7FFF); // the system's text colour
    put<std::uint16_t>(body, bold ? 700 : 400);
    put<std::uint16_t>(body, 0);
    put<std::uint32_t>(body, 0); // no underline, any family and character set
    record(stream, 0x0031, body + counted<std::uint8_t>(QStringLiteral("Arial")));
}

void styleRecord(QByteArray& stream, int font, int format, bool cell, const Workbook::CellStyle& style) {
    QByteArray body;
    put<std::uint16_t>(body, std::uint16_t(font));
    put<std::uint16_t>(body, std::uint16_t(format));
    put<std::uint16_t>(body, cell ? 0x0001 : 0xFFF5); // a locked cell, or a style
    const unsigned align = cell ? unsigned(style.align) : 0;
    put<std::uint8_t>(
        body, std::uint8_t(align | (style.wrap ? 0x08U : 0U) | (style.wrap || style.top ? 0x00U : 0x20U)));
    put<std::uint8_t>(body, 0);
    put<std::uint8_t>(body, style.indented ? 1 : 0);
    put<std::uint8_t>(body, cell ? 0xFC : 0xF4);
    const auto& frame = style.frame;
    constexpr std::uint32_t systemColor = 0x40;
    const std::uint32_t lines = (frame.left ? 0x1U : 0U) | (frame.right ? 0x10U : 0U) |
                                (frame.top ? 0x100U : 0U) | (frame.bottom ? 0x1000U : 0U);
    put<std::uint32_t>(body, lines | (lines ? systemColor << 16 | systemColor << 23 : 0U));
    constexpr std::uint32_t solid = 1U << 26;
    put<std::uint32_t>(body, (lines ? systemColor | systemColor << 7 : 0U) | (frame.filled ? solid : 0U));
    constexpr std::uint16_t grey = 0x2096; // a quarter
    put<std::uint16_t>(body, frame.filled ? grey : 0x20C0);
    record(stream, 0x00E0, body);
}

/// The paper of a sheet, and the rows that begin a page. It prints one page wide and as many pages high as
/// needed.
void printRecords(QByteArray& stream, const QSizeF& paper, const QList<int>& breaks) {
    QByteArray fits;
    put<std::uint16_t>(fits, 0x05C1); // fit to page; the rest at the defaults
    record(stream, 0x0081, fits);
    if (!breaks.isEmpty()) {
        QByteArray rows;
        putWords(rows, {int(breaks.size())});
        for (const int row : breaks)
            putWords(rows, {row, 0, Workbook::MostColumns - 1});
        record(stream, 0x001B, rows);
    }
    constexpr double margin = .4; // in
    for (const int side : {0x0026, 0x0027, 0x0028, 0x0029}) {
        QByteArray body;
        put(body, margin);
        record(stream, std::uint16_t(side), body);
    }
    const bool landscape = paper.width() > paper.height();
    const double height = std::max(paper.width(), paper.height());
    const int kind = height > 1000 ? 5 : height > 800 ? 9 : 1; // legal, A4, letter
    QByteArray body;
    for (const int part : {kind, 100, 1, 1, 0, landscape ? 0 : 2, 600, 600})
        put(body, std::uint16_t(part));
    put(body, margin / 2);
    put(body, margin / 2);
    put<std::uint16_t>(body, 1); // copy
    record(stream, 0x00A1, body);
}

/// How the sheet is displayed; its top rows stay in view.
void windowRecords(QByteArray& stream, bool selected, int rowsInSight) {
    constexpr int frozen = 0x0108;
    QByteArray window;
    putWords(window, {(selected ? 0x06B6 : 0x00B6) | (rowsInSight > 0 ? frozen : 0)});
    for (int i = 0; i < 4; ++i)
        put<std::uint32_t>(window, i == 1 ? 0x40U : 0U);
    record(stream, 0x023E, window);
    if (rowsInSight == 0)
        return;
    QByteArray pane;
    constexpr int lower = 2;
    putWords(pane, {0, rowsInSight, rowsInSight, 0, lower});
    record(stream, 0x0041, pane);
}

} // namespace

void Workbook::addSheet(const QString& name, const QList<double>& columnWidths, const QSizeF& paper) {
    sheets.append({name.left(31), columnWidths, paper, {}, {}, {}, {}, {}});
}

int Workbook::styleIndex(const CellStyle& style) {
    const auto found = styles.indexOf(style);
    if (found >= 0)
        return int(found);
    styles.append(style);
    return int(styles.size()) - 1;
}

void Workbook::text(int row, int column, const QString& text, const CellStyle& style) {
    constexpr int longest = 32767;
    const QString kept = text.left(longest);
    const auto known = stringPlaces.constFind(kept);
    int place = 0;
    if (known != stringPlaces.cend()) {
        place = *known;
    } else {
        place = int(strings.size());
        strings.append(kept);
        stringPlaces.insert(kept, place);
    }
    ++stringUses;
    sheets.last().cells.append({row, column, styleIndex(style), place, 0});
}

void Workbook::number(int row, int column, double value, const CellStyle& style) {
    sheets.last().cells.append({row, column, styleIndex(style), NumberCell, value});
}

void Workbook::blank(int row, int column, const CellStyle& style) {
    sheets.last().cells.append({row, column, styleIndex(style), BlankCell, 0});
}

void Workbook::picture(const QByteArray& png, const QString& description,
                       const SheetPictures::Corner& upperLeft, const SheetPictures::Corner& lowerRight) {
    pictures.add(int(sheets.size()) - 1, png, description, upperLeft, lowerRight);
}

void Workbook::pageBreak(int row) {
    constexpr qsizetype most = 1026; // that the format allows
    if (sheets.last().breaks.size() < most)
        sheets.last().breaks.append(row);
}

void Workbook::merge(int row, int firstColumn, int lastColumn) {
    sheets.last().merged.append({row, firstColumn, lastColumn});
}

void Workbook::rowHeight(int row, double points) {
    sheets.last().heights.insert(row, points);
}

void Workbook::filter(int headingRow, int lastRow, int columns) {
    sheets.last().filter = {headingRow, lastRow, columns};
}

/// The range of each sheet's filters, and the row that is printed on every page, need names that every
/// workbook has built in, and the buttons must be drawn.
QByteArray Workbook::filterNames() const {
    QByteArray names;
    QByteArray ranges;
    QList<int> buttons;
    putWords(ranges, {int(sheets.size())});
    for (int i = 0; i < sheets.size(); ++i) {
        const Filter& filter = sheets[i].filter;
        buttons.append(filter.columns);
        putWords(ranges, {0, i, i});
        if (filter.columns == 0)
            continue;
        const auto name = [&](int flags, const char* nameAndArea, int firstRow, int lastRow, int lastColumn) {
            QByteArray body;
            putWords(body, {flags, 0x0100, 11, 0, i + 1, 0, 0}); // one character, of the sheet
            body += QByteArray::fromHex(nameAndArea);
            putWords(body, {i, firstRow, lastRow, 0, lastColumn});
            record(names, 0x0018, body);
        };
        name(0x0021, "000d3b", filter.headingRow, filter.lastRow, filter.columns - 1); // filters; hidden
        name(0x0020, "00073b", filter.headingRow, filter.headingRow, MostColumns - 1); // on each printed page
    }
    if (names.isEmpty())
        return pictures.isEmpty() ? QByteArray() : pictures.ofWorkbook(int(sheets.size()));
    QByteArray stream;
    QByteArray book;
    putWords(book, {int(sheets.size()), 0x0401}); // the workbook itself
    record(stream, 0x01AE, book);
    record(stream, 0x0017, ranges);
    return stream + names + FilterButtons::ofWorkbook(buttons);
}

/// Every text once. A text that crosses the end of a record continues in the next, which repeats its width
/// flag.
QByteArray Workbook::stringTable() const {
    QByteArray stream;
    QByteArray body;
    std::uint16_t kind = 0x00FC;
    put<std::uint32_t>(body, std::uint32_t(stringUses));
    put<std::uint32_t>(body, std::uint32_t(strings.size()));
    const auto flush = [&] {
        record(stream, kind, body);
        kind = 0x003C;
        body.clear();
    };
    for (const QString& text : strings) {
        const bool narrow = isNarrow(text);
        const qsizetype width = narrow ? 1 : 2;
        constexpr qsizetype head = 3;
        if (body.size() + head + width > mostRecordBytes)
            flush();
        put<std::uint16_t>(body, std::uint16_t(text.size()));
        put<std::uint8_t>(body, narrow ? 0 : 1);
        for (qsizetype at = 0; at < text.size();) {
            if (body.size() + width > mostRecordBytes) {
                flush();
                put<std::uint8_t>(body, narrow ? 0 : 1);
            }
            const qsizetype fits = std::min(text.size() - at, (mostRecordBytes - body.size()) / width);
            body += characters(text.mid(at, fits), narrow);
            at += fits;
        }
    }
    flush();
    return stream;
}

QByteArray Workbook::globals(const QList<qsizetype>& sheetOffsets) const {
    QByteArray stream;
    beginSubstream(stream, 0x0005);
    QByteArray codePage;
    put<std::uint16_t>(codePage, 0x04B0);
    record(stream, 0x0042, codePage);
    QByteArray window;
    for (const int part : {0, 0, 16000, 12000, 0x0038, 0, 0, 1, 600})
        put(window, std::uint16_t(part));
    record(stream, 0x003D, window);
    for (int i = 0; i < fontsOfTheDefault - 1; ++i)
        fontRecord(stream, 10, false, false);
    for (const CellStyle& style : styles)
        fontRecord(stream, style.size, style.bold, style.italic);
    QStringList formats;
    for (const CellStyle& style : styles) {
        if (style.numberFormat.isEmpty() || formats.contains(style.numberFormat))
            continue;
        QByteArray body;
        put<std::uint16_t>(body, std::uint16_t(firstOwnFormat + formats.size()));
        record(stream, 0x041E, body + counted<std::uint16_t>(style.numberFormat));
        formats.append(style.numberFormat);
    }
    for (int i = 0; i < stylesOfTheDefault; ++i)
        styleRecord(stream, 0, 0, i == stylesOfTheDefault - 1, {});
    for (qsizetype i = 0; i < styles.size(); ++i) {
        const auto format = formats.indexOf(styles[i].numberFormat);
        styleRecord(stream, fontsOfTheDefault + int(i), format < 0 ? 0 : firstOwnFormat + int(format), true,
                    styles[i]);
    }
    record(stream, 0x0293, QByteArray::fromHex("008000ff")); // the style "Normal"
    for (qsizetype i = 0; i < sheets.size(); ++i) {
        QByteArray body;
        put<std::uint32_t>(body, std::uint32_t(sheetOffsets.value(i)));
        put<std::uint16_t>(body, 0);
        record(stream, 0x0085, body + counted<std::uint8_t>(sheets[i].name));
    }
    stream += filterNames() + stringTable();
    record(stream, 0x000A);
    return stream;
}

QByteArray Workbook::sheetRecords(int number) const {
    const Sheet& sheet = sheets[number];
    QByteArray stream;
    beginSubstream(stream, 0x0010);
    int lastRow = 0;
    int lastColumn = 0;
    for (const Cell& cell : sheet.cells) {
        lastRow = std::max(lastRow, cell.row);
        lastColumn = std::max(lastColumn, cell.column);
    }
    printRecords(stream, sheet.paper, sheet.breaks);
    for (qsizetype i = 0; i < sheet.columnWidths.size() && i < MostColumns; ++i) {
        constexpr double widthOfZero = 5.25; // points, in the default font
        QByteArray body;
        put<std::uint16_t>(body, std::uint16_t(i));
        put<std::uint16_t>(body, std::uint16_t(i));
        put<std::uint16_t>(body, std::uint16_t(std::lround(sheet.columnWidths[i] / widthOfZero * 256)));
        put<std::uint16_t>(body, stylesOfTheDefault - 1);
        put<std::uint32_t>(body, 0);
        record(stream, 0x007D, body);
    }
    const Filter& filter = sheet.filter;
    if (filter.columns > 0) {
        QByteArray body;
        putWords(body, {filter.columns});
        record(stream, 0x009D, body);
    }
    QByteArray dimensions;
    put<std::uint32_t>(dimensions, 0);
    put<std::uint32_t>(dimensions, std::uint32_t(lastRow + 1));
    put<std::uint16_t>(dimensions, 0);
    put<std::uint16_t>(dimensions, std::uint16_t(lastColumn + 1));
    put<std::uint16_t>(dimensions, 0);
    record(stream, 0x0200, dimensions);
    for (int row = 0; row <= lastRow; ++row) {
        const auto height = sheet.heights.constFind(row);
        if (height == sheet.heights.cend())
            continue;
        QByteArray body;
        put<std::uint16_t>(body, std::uint16_t(row));
        put<std::uint16_t>(body, 0);
        put<std::uint16_t>(body, std::uint16_t(lastColumn + 1));
        put<std::uint16_t>(body, std::uint16_t(std::min(std::lround(*height * 20), 8180L)));
        put<std::uint32_t>(body, 0);
        put<std::uint32_t>(body, 0x000F0140); // the row has its own height
        record(stream, 0x0208, body);
    }
    for (const Cell& cell : sheet.cells) {
        QByteArray body;
        put<std::uint16_t>(body, std::uint16_t(cell.row));
        put<std::uint16_t>(body, std::uint16_t(cell.column));
        put<std::uint16_t>(body, std::uint16_t(stylesOfTheDefault + cell.style));
        if (cell.string >= 0)
            put<std::uint32_t>(body, std::uint32_t(cell.string));
        else if (cell.string == NumberCell)
            put(body, cell.value);
        record(stream, cell.string >= 0 ? 0x00FD : cell.string == NumberCell ? 0x0203 : 0x0201, body);
    }
    if (filter.columns > 0)
        stream += FilterButtons::ofSheet(number + 1, filter.headingRow, filter.columns);
    else
        stream += pictures.ofSheet(number);
    windowRecords(stream, number == 0, filter.columns > 0 ? filter.headingRow + 1 : 0);
    constexpr qsizetype mostMerged = 1000; // per record
    for (qsizetype from = 0; from < sheet.merged.size(); from += mostMerged) {
        const auto part = sheet.merged.mid(from, mostMerged);
        QByteArray body;
        put<std::uint16_t>(body, std::uint16_t(part.size()));
        for (const Merged& merged : part) {
            put<std::uint16_t>(body, std::uint16_t(merged.row));
            put<std::uint16_t>(body, std::uint16_t(merged.row));
            put<std::uint16_t>(body, std::uint16_t(merged.first));
            put<std::uint16_t>(body, std::uint16_t(merged.last));
        }
        record(stream, 0x00E5, body);
    }
    record(stream, 0x000A);
    return stream;
}

QByteArray Workbook::file() const {
    QList<QByteArray> bodies;
    for (int i = 0; i < sheets.size(); ++i)
        bodies.append(sheetRecords(i));
    // The values of the offsets do not change the length of the record that holds them.
    qsizetype at = globals({}).size();
    QList<qsizetype> offsets;
    for (const QByteArray& body : bodies) {
        offsets.append(at);
        at += body.size();
    }
    return compoundFileOf(QStringLiteral("Workbook"), globals(offsets) + bodies.join());
}
