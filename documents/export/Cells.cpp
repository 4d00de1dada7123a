#include "documents/export/Cells.h"

#include "documents/report/Renderer.h"

#include <QRegularExpression>

#include <cmath>

namespace {

/// Translates one of the program's display patterns into a spreadsheet's: anything but a digit place is
/// quoted.
QString spreadsheetFormat(const QString& pattern, double number) {
    constexpr QLatin1String general("General");
    if (pattern.isEmpty() || pattern.startsWith(general)) {
        // Keep the decimals of the stored number: a spreadsheet's own general format rounds to the column
        // width.
        const QString shown = shownNumber(number, general);
        const qsizetype point = shown.indexOf(u'.');
        QString format = point < 0 ? "0" : "0." + QString(shown.size() - point - 1, u'0');
        if (pattern.size() > general.size())
            format += u'"' + pattern.mid(general.size()) + u'"';
        return shown.contains(u'E') ? QString() : format;
    }
    QString format;
    QString words;
    const auto flush = [&] {
        if (!words.isEmpty())
            format += u'"' + words + u'"';
        words.clear();
    };
    bool quoted = false;
    bool inNumber = false;
    for (const QChar c : pattern) {
        if (c == u'"') {
            quoted = !quoted;
            continue;
        }
        const bool digitPlace = !quoted && (c == u'#' || c == u'0' || c == u'%' ||
                                            (inNumber && words.isEmpty() && (c == u',' || c == u'.')));
        if (digitPlace) {
            flush();
            format += c;
            inNumber = true;
        } else {
            words += c;
        }
    }
    flush();
    return format;
}

} // namespace

Workbook::CellStyle cellStyleOf(const PageText& text) {
    Workbook::CellStyle style;
    style.size = int(std::lround(text.style->size));
    style.bold = text.style->bold;
    style.italic = text.style->italic;
    style.align = text.style->alignment & Qt::AlignRight     ? Workbook::CellStyle::Align::Right
                  : text.style->alignment & Qt::AlignHCenter ? Workbook::CellStyle::Align::Center
                                                             : Workbook::CellStyle::Align::Left;
    style.wrap = text.lines().size() > 1;
    return style;
}

void addCell(Workbook& book, int row, int column, const PageText& text, const CellPlace& place) {
    Workbook::CellStyle style = cellStyleOf(text);
    style.indented = place.indented;
    style.top = place.top;
    style.frame = place.frame;
    if (!text.isNumber()) // text that looks like a number is a name or a code, and stays text
        return book.text(row, column, text.plain(), style);
    style.numberFormat = spreadsheetFormat(text.style->pattern, text.number);
    book.number(row, column, text.number, style);
}

QString sheetName(const Document& document, int number) {
    static const QRegularExpression refused(R"([\[\]:*?/\\])");
    const QString name = QString(document.title).remove(refused).section(u',', 0, 0);
    return number == 1 ? name : QStringLiteral("%1 %2").arg(name.left(24)).arg(number);
}
