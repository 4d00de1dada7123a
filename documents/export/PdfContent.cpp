#include "documents/export/PdfContent.h"

#include "core/base/PdfText.h"
#include "documents/report/TextFit.h"

#include <array>
#include <cmath>

using PdfWords::number;
using PdfWords::numbers;

namespace {

constexpr double perEm = 1000;

void code(QByteArray& target, int value) {
    static constexpr std::array digits = {'0', '1', '2', '3', '4', '5', '6', '7',
                                          '8', '9', 'a', 'b', 'c', 'd', 'e', 'f'};
    for (int shift = 12; shift >= 0; shift -= 4)
        target += digits[std::size_t(value >> shift) & 15U];
}

} // namespace

void PdfContent::box(const QRectF& place, double width, const QColor& fill) {
    if (width > 0)
        lineWidth(width);
    if (fill.isValid())
        fillColor(fill);
    if (width <= 0 && !fill.isValid())
        return;
    numbers(bytes, {place.left(), up(place.bottom()), place.width(), place.height()});
    bytes += width <= 0 ? "re f\n" : fill.isValid() ? "re B\n" : "re S\n";
}

void PdfContent::line(const QPointF& from, const QPointF& to, double width) {
    polyline({from, to}, width);
}

void PdfContent::polyline(const QList<QPointF>& points, double width) {
    lineWidth(width);
    for (qsizetype i = 0; i < points.size(); ++i) {
        numbers(bytes, {points[i].x(), up(points[i].y())});
        bytes += i == 0 ? "m " : "l ";
    }
    bytes += "S\n";
}

void PdfContent::text(QStringView line, const TextStyle& style, const QPointF& at) {
    fonts.shape(line, style, shape);
    if (shape.letters.empty())
        return;
    fillColor(style.color);
    bytes += "BT ";
    numbers(bytes, {at.x(), up(at.y())});
    bytes += "Td ";
    letters(style);
    bytes += "ET\n";
}

void PdfContent::unseenText(QStringView line, const TextStyle& style, const QPointF& at) {
    bytes += "3 Tr ";
    text(line, style, at);
    bytes += "0 Tr\n";
}

/// Shows the letters; where one is not where the widths put it, it is moved by thousandths of an em.
void PdfContent::letters(const TextStyle& style) {
    constexpr double smallest = .5;
    const double size =
        double(TextFit::font(style).pixelSize()) / TextFit::fontScale; // as the viewer rounds it
    double pen = 0;
    double rise = 0;
    int instead = -1;
    bool open = false;
    bool heavier = false;
    const auto close = [&] {
        if (open)
            bytes += ">]TJ ";
        open = false;
    };
    for (const PdfShape::Letter& letter : shape.letters) {
        if (letter.instead != instead) {
            close();
            if (instead >= 0)
                bytes += "EMC ";
            instead = letter.instead;
            if (instead >= 0)
                bytes += "/Span<</ActualText" + pdfText(shape.instead[instead]) + ">>BDC ";
        }
        if (letter.font != currentFont || size != currentSize) {
            close();
            bytes += "/F";
            PdfWords::integer(bytes, letter.font);
            bytes += ' ';
            numbers(bytes, {size});
            bytes += "Tf ";
            currentFont = letter.font;
            currentSize = size;
        }
        if (fonts.needsWeight(letter.font, style) != heavier) {
            close();
            heavier = !heavier;
            weight(heavier, size, style.color);
        }
        if (letter.y != rise) {
            close();
            rise = letter.y;
            numbers(bytes, {-rise * size});
            bytes += "Ts ";
        }
        const double shift = (letter.x - pen) * perEm;
        const bool shifted = std::abs(shift) >= smallest;
        if (shifted && open)
            bytes += '>';
        if (!open)
            bytes += '[';
        if (shifted)
            number(bytes, std::round(-shift * 10) / 10);
        if (shifted || !open)
            bytes += '<';
        open = true;
        code(bytes, letter.code);
        pen = (shifted ? letter.x : pen) + fonts.width(letter.font, letter.code);
    }
    close();
    if (heavier)
        weight(false, size, style.color);
    if (rise != 0)
        bytes += "0 Ts ";
    if (instead >= 0)
        bytes += "EMC ";
}

/// Makes letters bold by drawing their outlines as well.
void PdfContent::weight(bool added, double size, const QColor& color) {
    constexpr double share = 1.0 / 24;                     // of the size, by which outlines are made bold
    const QColor line = added ? color : QColor(Qt::black); // which all other lines are
    numbers(bytes, {line.redF(), line.greenF(), line.blueF()});
    bytes += "RG ";
    if (added)
        lineWidth(size * share);
    bytes += added ? "2 Tr " : "0 Tr ";
}

void PdfContent::picture(const QByteArray& name, const QPointF& at, double scale) {
    bytes += "q ";
    numbers(bytes, {scale, 0, 0, scale, at.x(), up(at.y())});
    bytes += "cm /" + name + " Do Q\n";
}

void PdfContent::beginMarked(const char* kind, int number) {
    bytes += '/';
    bytes += kind;
    bytes += "<</MCID ";
    PdfWords::integer(bytes, number);
    bytes += ">>BDC\n";
}

void PdfContent::beginArtifact() {
    bytes += "/Artifact<</Type/Layout>>BDC\n";
}

void PdfContent::beginFurniture() {
    bytes += "/Artifact<</Type/Pagination>>BDC\n";
}

void PdfContent::lineWidth(double width) {
    if (width == currentWidth)
        return;
    currentWidth = width;
    numbers(bytes, {width});
    bytes += "w\n";
}

void PdfContent::fillColor(const QColor& color) {
    if (color.rgb() == currentFill)
        return;
    currentFill = color.rgb();
    numbers(bytes, {color.redF(), color.greenF(), color.blueF()});
    bytes += "rg\n";
}
