#include "documents/export/PdfFonts.h"

#include "core/base/PdfText.h"
#include "documents/export/FontSubset.h"
#include "documents/report/TextFit.h"

#include <QTextBoundaryFinder>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace {

constexpr double perEm = 1000; // units of a PDF's widths

QFont largeFont(const TextStyle& style) {
    QFont font = TextFit::font(style);
    font.setPixelSize(pdfUnitsPerEm);
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

/// The number of a font; -1 for one that has no outlines.
int PdfFonts::fontOf(const QRawFont& raw) {
    // Where no font can shape a script, Qt's is none but a drawer of boxes, and asking for its name crashes.
    if (raw.fontTable("head").isEmpty())
        return -1;
    const QString name = raw.familyName() + '/' + raw.styleName();
    const auto known = byName.constFind(name);
    if (known != byName.cend())
        return *known;
    const int number = FontSubsets::hasOutlines(raw) ? int(fonts.size()) : -1;
    byName.insert(name, number);
    if (number < 0)
        return number;
    fonts.push_back({raw, isBold(raw), {}, {}});
    fonts.back().raw.setPixelSize(pdfUnitsPerEm);
    use(number, 0, {}); // the sign for a missing letter
    return number;
}

quint32 PdfFonts::glyphOf(int font, const QString& letter) const {
    return fonts[std::size_t(font)].raw.glyphIndexesForString(letter).value(0);
}

/// Takes a glyph into the file. Says whether it stands for this text there: a glyph has one meaning, which is
/// its first.
bool PdfFonts::use(int number, quint32 glyph, const QString& text) {
    Font& font = fonts[std::size_t(number)];
    if (glyph >= font.widths.size()) {
        font.widths.resize(std::size_t(glyph) + 1, -1);
        font.texts.resize(std::size_t(glyph) + 1);
    }
    double& width = font.widths[glyph];
    if (width < 0) {
        const double advance = font.raw.advancesForGlyphIndexes(QList<quint32>{glyph}).value(0).x();
        width = std::round(advance / pdfUnitsPerEm * perEm * 100) / 100 / perEm;
    }
    QString& meaning = font.texts[glyph];
    if (meaning.isEmpty() && glyph != 0)
        meaning = text;
    return !text.isEmpty() && meaning == text;
}

std::vector<quint32> PdfFonts::Font::glyphs() const {
    std::vector<quint32> used;
    for (std::size_t glyph = 0; glyph < widths.size(); ++glyph)
        if (widths[glyph] >= 0)
            used.push_back(quint32(glyph));
    return used;
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
            const quint32 glyph = glyphOf(latin.font, QString(c));
            code = use(latin.font, glyph, QString(c)) ? int(glyph) : -1;
        }
        if (code < 0) {
            result.letters.clear();
            return shapeOther(line.toString(), style, result);
        }
        if (i > 0)
            x += TextFit::kerning(line[i - 1], c, style);
        result.letters.push_back({latin.font, code, x});
        x += width(latin.font, code);
    }
}

namespace {

/// A word whose letters do not tell it gets its text beside it, as a whole: searched and read aloud letter by
/// letter it would fall apart, the more so where letters join or run from right to left.
class WordAtWork {
  public:
    explicit WordAtWork(PdfShape& result) : shape(result), from(result.letters.size()) {}

    void add(const QString& text, bool told) {
        word += text;
        unclear = unclear || !told;
    }
    void finish() {
        if (unclear && shape.letters.size() > from) {
            for (std::size_t i = from; i < shape.letters.size(); ++i)
                shape.letters[i].instead = int(shape.instead.size());
            shape.instead.append(word);
        }
        from = shape.letters.size();
        word.clear();
        unclear = false;
    }

  private:
    PdfShape& shape;
    std::size_t from;
    QString word;
    bool unclear = false;
};

} // namespace

/// Lets Qt choose fonts and letters, one cluster of characters after the other, to know what each letter
/// stands for.
void PdfFonts::shapeOther(const QString& line, const TextStyle& style, PdfShape& result) {
    QTextLayout layout(line, largeFont(style));
    QTextOption option;
    option.setWrapMode(QTextOption::NoWrap);
    constexpr double tab = 80; // as Qt sets it elsewhere, whatever the size of the letters
    option.setTabStopDistance(tab * pdfUnitsPerEm / TextFit::font(style).pixelSize());
    layout.setTextOption(option);
    layout.beginLayout();
    const QTextLine whole = layout.createLine();
    layout.endLayout();
    WordAtWork word(result);
    QTextBoundaryFinder clusters(QTextBoundaryFinder::Grapheme, line);
    for (qsizetype from = 0, to = clusters.toNextBoundary(); to > from;
         from = to, to = clusters.toNextBoundary()) {
        const QString text = line.mid(from, to - from);
        const bool blank = text.front().isSpace();
        if (blank)
            word.finish();
        if (text == u"\t") { // a gap without a letter: figures beside it must not become one
            const int font = face(style).font;
            const quint32 glyph = glyphOf(font, QStringLiteral(" "));
            use(font, glyph, QStringLiteral(" "));
            result.letters.push_back({font, int(glyph), whole.cursorToX(int(from)) / pdfUnitsPerEm});
            word.finish();
            continue;
        }
        int letters = 0;
        bool told = false;
        for (const QGlyphRun& run : whole.glyphRuns(int(from), int(to - from))) {
            const int own = fontOf(run.rawFont());
            const QList<QPointF> places = run.positions();
            const QList<quint32> glyphs = run.glyphIndexes();
            for (qsizetype i = 0; i < places.size(); ++i) {
                // Not every reader shows the sign that a font has for missing letters.
                const bool missing = own < 0 || glyphs.value(i) == 0;
                const int font = missing ? face(style).font : own;
                const quint32 glyph = missing ? glyphOf(font, QStringLiteral("□")) : glyphs[i];
                const QPointF place = (places[i] - QPointF(0, whole.ascent())) / pdfUnitsPerEm;
                told = use(font, glyph, places.size() == 1 && !missing ? text : QString());
                result.letters.push_back(
                    {font, int(glyph), place.x(), std::abs(place.y()) < 1 / perEm ? 0 : place.y()});
                ++letters;
            }
        }
        word.add(text, told && letters == 1);
        if (blank)
            word.finish();
    }
    word.finish();
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
    const std::vector<quint32> glyphs = font.glyphs();
    const FontSubset subset = FontSubsets::subset(font.raw, glyphs);
    const QByteArray name = postScriptName(font.raw, number);
    const double scale = perEm / pdfUnitsPerEm;
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
    const QByteArray kind = subset.postScript ? QByteArray("/Subtype/CIDFontType0C")
                                              : "/Length1 " + QByteArray::number(subset.program.size());
    const int descriptor = file.add("<</Type/FontDescriptor/FontName/" + name + "/Flags " +
                                    QByteArray::number(symbolic + (slanted ? italic : 0)) + metrics +
                                    "/StemV 80" + (subset.postScript ? "/FontFile3 " : "/FontFile2 ") +
                                    reference(file.addStream(kind, subset.program)) + ">>");
    QByteArray widths; // of glyphs with neighbouring numbers together
    for (std::size_t i = 0; i < glyphs.size(); ++i) {
        if (i == 0 || glyphs[i] != glyphs[i - 1] + 1)
            widths += (i == 0 ? "" : "]") + QByteArray::number(glyphs[i]) + '[';
        PdfWords::numbers(widths, {font.widths[glyphs[i]] * perEm});
    }
    const int letters =
        file.add("<</Type/Font/Subtype/CIDFontType" + QByteArray(subset.postScript ? "0" : "2") +
                 "/BaseFont/" + name + "/CIDSystemInfo<</Registry(Adobe)/Ordering(Identity)/Supplement 0>>" +
                 (subset.postScript ? "" : "/CIDToGIDMap/Identity") + "/FontDescriptor " +
                 reference(descriptor) + "/W[" + widths + "]]>>");
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
