#include "documents/export/PdfFonts.h"

#include "core/base/PdfText.h"
#include "documents/report/TextFit.h"

#include <QTextBoundaryFinder>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace {

constexpr double perEm = 1000; // units of a PDF's widths

QFont largeFont(const TextStyle& style) {
    QFont font = TextFit::font(style);
    font.setPixelSize(PdfTrueType::em);
    return font;
}

/// Whether each character is one letter, placed behind the one before it.
bool isPlain(QChar c) {
    const char16_t code = c.unicode();
    return (code >= u' ' && code < 0x7f) || (code > 0xa0 && code < 0x100 && code != 0xad);
}

/// What the font says of itself, whatever it was asked for.
bool isBold(const QRawFont& raw) {
    constexpr qsizetype weightAt = 4; // in its table, as a number of two bytes
    constexpr int demiBold = 600;
    const QByteArray table = raw.fontTable("OS/2");
    return table.size() > weightAt + 1 &&
           std::uint8_t(table[weightAt]) * 256 + std::uint8_t(table[weightAt + 1]) >= demiBold;
}

/// The name that is written into the font's objects.
QByteArray postScriptName(const QRawFont& raw, int number) {
    QByteArray name = "AAAAA";
    name += char('A' + number % 26);
    name += '+';
    for (const QChar c : QString(raw.familyName() + '-' + raw.styleName()))
        if (c.unicode() < 0x80 && (c.isLetterOrNumber() || c == u'-'))
            name += c.toLatin1();
    return name;
}

} // namespace

PdfFonts::Face& PdfFonts::face(const TextStyle& style) {
    std::optional<Face>& found = faces[(style.bold ? 2U : 0U) + (style.italic ? 1U : 0U)];
    if (!found)
        found = Face{.font = fontOf(QRawFont::fromFont(largeFont(style)))};
    return *found;
}

int PdfFonts::fontOf(const QRawFont& raw) {
    const QString name = raw.familyName() + '/' + raw.styleName();
    const auto known = byName.constFind(name);
    if (known != byName.cend())
        return *known;
    const int number = int(fonts.size());
    fonts.push_back({raw, isBold(raw), {}, {}, {}, {}});
    fonts.back().raw.setPixelSize(PdfTrueType::em);
    byName.insert(name, number);
    codeOf(number, 0, {}); // the sign for a missing letter comes first
    return number;
}

int PdfFonts::codeOf(int number, quint32 glyph, const QString& text) {
    Font& font = fonts[std::size_t(number)];
    const auto known = font.codes.constFind({glyph, text});
    if (known != font.codes.cend())
        return *known;
    const int code = int(font.outlines.size());
    const double advance = font.raw.advancesForGlyphIndexes(QList<quint32>{glyph}).value(0).x();
    font.codes.insert({glyph, text}, code);
    font.outlines.push_back({font.raw.pathForGlyph(glyph), advance});
    font.widths.push_back(std::round(advance / PdfTrueType::em * perEm * 100) / 100 / perEm);
    font.texts.push_back(text);
    return code;
}

void PdfFonts::shape(QStringView line, const TextStyle& style, PdfShape& result) {
    result.letters.clear();
    result.instead.clear();
    if (!std::all_of(line.begin(), line.end(), isPlain))
        return shapeOther(line.toString(), style, result);
    Face& latin = face(style);
    double x = 0;
    for (qsizetype i = 0; i < line.size(); ++i) {
        const QChar c = line[i];
        int& code = latin.codes[c.unicode()];
        if (code == 0) {
            const auto glyphs = fonts[std::size_t(latin.font)].raw.glyphIndexesForString(QString(c));
            code = codeOf(latin.font, glyphs.value(0), QString(c));
        }
        if (i > 0)
            x += TextFit::kerning(line[i - 1], c, style);
        result.letters.push_back({latin.font, code, x});
        x += width(latin.font, code);
    }
}

/// Lets Qt choose fonts and letters, one cluster of characters after the other, to know what each letter
/// stands for.
void PdfFonts::shapeOther(const QString& line, const TextStyle& style, PdfShape& result) {
    QTextLayout layout(line, largeFont(style));
    QTextOption option;
    option.setWrapMode(QTextOption::NoWrap);
    constexpr double tab = 80; // as Qt sets it elsewhere, whatever the size of the letters
    option.setTabStopDistance(tab * PdfTrueType::em / TextFit::font(style).pixelSize());
    layout.setTextOption(option);
    layout.beginLayout();
    const QTextLine whole = layout.createLine();
    layout.endLayout();
    QTextBoundaryFinder clusters(QTextBoundaryFinder::Grapheme, line);
    for (qsizetype from = 0, to = clusters.toNextBoundary(); to > from;
         from = to, to = clusters.toNextBoundary()) {
        QString text = line.mid(from, to - from);
        if (text == u"\t") { // a gap without a letter: figures beside it must not become one
            const int font = face(style).font;
            const auto blank = fonts[std::size_t(font)].raw.glyphIndexesForString(QStringLiteral(" "));
            result.letters.push_back({font, codeOf(font, blank.value(0), QStringLiteral(" ")),
                                      whole.cursorToX(int(from)) / PdfTrueType::em});
            continue;
        }
        const std::size_t before = result.letters.size();
        for (const QGlyphRun& run : whole.glyphRuns(int(from), int(to - from))) {
            // Where no font can shape a script, Qt's is none but a drawer of boxes, without even a name.
            const bool canShape = !run.rawFont().fontTable("head").isEmpty();
            const int font = canShape ? fontOf(run.rawFont()) : face(style).font;
            const QList<quint32> glyphs =
                canShape ? run.glyphIndexes() : QList<quint32>(run.positions().size(), 0);
            const QList<QPointF> places = run.positions();
            for (qsizetype i = 0; i < glyphs.size(); ++i) {
                const QPointF place = (places[i] - QPointF(0, whole.ascent())) / PdfTrueType::em;
                result.letters.push_back({font,
                                          codeOf(font, glyphs[i], glyphs.size() == 1 ? text : QString()),
                                          place.x(), std::abs(place.y()) < 1 / perEm ? 0 : place.y()});
            }
        }
        const std::size_t added = result.letters.size() - before;
        if (added == 0)
            continue;
        const PdfShape::Letter& first = result.letters[before];
        if (added == 1 && fonts[std::size_t(first.font)].texts[std::size_t(first.code)] == text)
            continue;
        for (std::size_t i = before; i < result.letters.size(); ++i)
            result.letters[i].instead = int(result.instead.size());
        result.instead.append(text);
    }
}

/// Tells which texts the letters stand for, so that they can be searched and copied.
QByteArray PdfFonts::toUnicode(const Font& font) {
    constexpr std::size_t section = 100; // entries, as the format has it
    QByteArray map = "/CIDInit /ProcSet findresource begin\n12 dict begin\nbegincmap\n/CMapName /Texts def\n"
                     "/CMapType 2 def\n1 begincodespacerange\n<0000> <ffff>\nendcodespacerange\n";
    std::vector<std::size_t> codes;
    for (std::size_t code = 1; code < font.texts.size(); ++code)
        if (!font.texts[code].isEmpty())
            codes.push_back(code);
    for (std::size_t from = 0; from < codes.size(); from += section) {
        const std::size_t to = std::min(codes.size(), from + section);
        map += QByteArray::number(quint64(to - from)) + " beginbfchar\n";
        for (std::size_t i = from; i < to; ++i) {
            const QByteArray text = pdfText(font.texts[codes[i]]);
            map += '<' + QByteArray::number(quint64(codes[i]), 16).rightJustified(4, '0') + "> <" +
                   text.mid(text.indexOf("feff") + 4) + '\n';
        }
        map += "endbfchar\n";
    }
    return map + "endcmap\nCMapName currentdict /CMap defineresource pop\nend\nend\n";
}

int PdfFonts::writeFont(PdfFile& file, const Font& font, int number) {
    using PdfWords::reference;
    const QByteArray program = PdfTrueType::font(font.outlines);
    const QByteArray name = postScriptName(font.raw, number);
    const double scale = perEm / PdfTrueType::em;
    const bool slanted = font.raw.style() != QFont::StyleNormal;
    QByteArray metrics = "/FontBBox[-1000 -500 2000 1250]/ItalicAngle ";
    metrics += slanted ? "-12" : "0";
    metrics += "/Ascent ";
    PdfWords::number(metrics, font.raw.ascent() * scale);
    metrics += "/Descent ";
    PdfWords::number(metrics, -font.raw.descent() * scale);
    metrics += "/CapHeight ";
    PdfWords::number(metrics, font.raw.capHeight() * scale);
    constexpr int symbolic = 4;
    constexpr int italic = 64;
    const int descriptor =
        file.add("<</Type/FontDescriptor/FontName/" + name + "/Flags " +
                 QByteArray::number(symbolic + (slanted ? italic : 0)) + metrics + "/StemV 80/FontFile2 " +
                 reference(file.addStream("/Length1 " + QByteArray::number(program.size()), program)) + ">>");
    QByteArray widths;
    for (const double width : font.widths)
        PdfWords::numbers(widths, {width * perEm});
    const int letters =
        file.add("<</Type/Font/Subtype/CIDFontType2/BaseFont/" + name +
                 "/CIDSystemInfo<</Registry(Adobe)/Ordering(Identity)/Supplement 0>>/CIDToGIDMap/Identity"
                 "/FontDescriptor " +
                 reference(descriptor) + "/W[0[" + widths + "]]>>");
    return file.add("<</Type/Font/Subtype/Type0/BaseFont/" + name + "/Encoding/Identity-H/DescendantFonts[" +
                    reference(letters) + "]/ToUnicode " + reference(file.addStream({}, toUnicode(font))) +
                    ">>");
}

QByteArray PdfFonts::write(PdfFile& file) const {
    QByteArray names;
    for (std::size_t i = 0; i < fonts.size(); ++i)
        names += "/F" + QByteArray::number(quint64(i)) + ' ' +
                 PdfWords::reference(writeFont(file, fonts[i], int(i)));
    return names;
}
