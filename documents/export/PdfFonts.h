#pragma once

#include "documents/export/PdfFile.h"
#include "documents/report/Page.h"

#include <QHash>
#include <QRawFont>

#include <array>
#include <deque>
#include <optional>
#include <vector>

/// A line of text as letters of fonts of a PDF. All lengths are in ems.
struct PdfShape {
    struct Letter {
        int font = 0;
        int code = 0;
        double x = 0;
        double y = 0;     // down
        int instead = -1; // the word that it belongs to, if the letters do not tell
    };
    std::vector<Letter> letters;
    QStringList instead;
};

/// Units of an em, in which letters are measured.
constexpr int pdfUnitsPerEm = 2048;

/// The fonts of a PDF: chooses the letters for texts and embeds those that were used.
class PdfFonts {
  public:
    /// Shapes one line.
    void shape(QStringView line, const TextStyle& style, PdfShape& result);
    /// The width of a letter in ems, as the file has it.
    double width(int font, int code) const { return fonts[std::size_t(font)].widths[std::size_t(code)]; }
    /// Whether a letter of a bold text comes from a font that has no bold face.
    bool needsWeight(int font, const TextStyle& style) const {
        return style.bold && !fonts[std::size_t(font)].bold;
    }
    /// Writes the fonts and returns their names and objects for the resources of the pages.
    QByteArray write(PdfFile& file) const;

  private:
    /// The letters of a font have the numbers of its glyphs.
    struct Font {
        QRawFont raw; // as large as pdfUnitsPerEm
        bool bold = false;
        std::vector<double> widths;          // negative for a glyph that is not used
        std::vector<QString> texts;          // that the glyphs stand for
        std::vector<quint32> glyphs() const; // that are used, in ascending order
    };
    /// The letters of Latin-1 in one of the four faces, which nearly all texts consist of.
    struct Face {
        int font = 0;
        std::array<int, 256>
            codes{}; // 0 for those not used yet, negative for those that need more than a code
    };

    Face& face(const TextStyle& style);
    int fontOf(const QRawFont& raw);
    quint32 glyphOf(int font, const QString& letter) const;
    bool use(int font, quint32 glyph, const QString& text);
    void shapeOther(const QString& line, const TextStyle& style, PdfShape& result);
    static QByteArray toUnicode(const Font& font);
    static int writeFont(PdfFile& file, const Font& font, int number);

    std::deque<Font> fonts;
    QHash<QString, int> byName;
    std::array<std::optional<Face>, 4> faces;
};
