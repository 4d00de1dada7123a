#include "documents/report/Formula.h"

#include "documents/report/TextFit.h"

#include <algorithm>
#include <optional>
#include <stdexcept>
#include <vector>

namespace {

constexpr double indexScale = .7;  // of indices and powers, to their base
constexpr double indexDrop = .18;  // ems
constexpr double powerRise = .38;  // ems
constexpr double barHeight = .3;   // ems above the baseline, where fraction bars and minus signs are
constexpr double barGap = .12;     // ems between a fraction bar and its terms
constexpr double barOverhang = .1; // ems on each side
constexpr double lineGap = .35;    // ems between the lines of a broken formula
constexpr double smallest = 5;     // points

struct Run {
    QString text;
    QPointF at; // its baseline
    TextStyle style;
};

struct Stroke {
    QList<QPointF> points;
    double width;
};

/// A part of a formula, set with its baseline at 0.
struct Block {
    double width = 0;
    double ascent = 0;
    double descent = 0;
    std::vector<Run> runs;
    std::vector<Stroke> strokes;

    double height() const { return ascent + descent; }

    /// Adds another block with its left end and baseline at a point.
    void place(const Block& part, const QPointF& at) {
        for (Run run : part.runs) {
            run.at += at;
            runs.push_back(run);
        }
        for (Stroke stroke : part.strokes) {
            for (QPointF& point : stroke.points)
                point += at;
            strokes.push_back(stroke);
        }
        width = std::max(width, at.x() + part.width);
        ascent = std::max(ascent, part.ascent - at.y());
        descent = std::max(descent, part.descent + at.y());
    }
    void append(const Block& part, double gap = 0) { place(part, {width + gap, 0}); }
};

Block textBlock(const QString& text, double size, bool italic = false) {
    TextStyle style;
    style.size = size;
    style.italic = italic;
    Block block;
    block.width = TextFit::width(text, style);
    block.ascent = TextFit::ascent(style) * .86; // letters are lower than the font's ascent
    block.descent = size * .2;
    block.runs.push_back({text, {}, style});
    return block;
}

Block fraction(const Block& above, const Block& below, double size) {
    Block block;
    const double width = std::max(above.width, below.width) + 2 * barOverhang * size;
    const double bar = -barHeight * size;
    block.place(above, {(width - above.width) / 2, bar - barGap * size - above.descent});
    block.place(below, {(width - below.width) / 2, bar + barGap * size + below.ascent});
    block.strokes.push_back({{{0, bar}, {width, bar}}, size * .06});
    block.width = width;
    return block;
}

Block root(const Block& inside, double size) {
    const double top = -inside.ascent - .1 * size;
    const double sign = .55 * size; // width of the root sign
    Block block;
    block.place(inside, {sign + .05 * size, 0});
    block.strokes.push_back({{{.05 * size, -.35 * size},
                              {.2 * size, -.4 * size},
                              {.35 * size, inside.descent},
                              {sign, top},
                              {sign + inside.width + .1 * size, top}},
                             size * .06});
    block.width += .1 * size;
    block.ascent = -top + .05 * size;
    return block;
}

/// Reads a formula and sets it at the same time, one level of precedence a function.
class Reader {
  public:
    Reader(const QString& formula, double fontSize) : text(formula), size(fontSize) {}

    /// The parts between the equal signs, each but the first with the sign before it.
    std::vector<Block> parts() {
        std::vector<Block> all = {sum(size)};
        while (skip(), at < text.size()) {
            const QChar sign = text[at++];
            if (!QStringLiteral("=<>≥≤≈").contains(sign))
                fail();
            Block part = textBlock(sign, size);
            part.append(sum(size), gap(size));
            all.push_back(part);
        }
        return all;
    }

  private:
    static double gap(double fontSize) { return .28 * fontSize; }

    [[noreturn]] void fail() const {
        throw std::runtime_error("The formula \"" + text.toStdString() + "\" cannot be read from \"" +
                                 text.mid(at).toStdString() + "\" on");
    }

    void skip() {
        while (at < text.size() && text[at] == u' ')
            ++at;
    }

    bool accept(QChar wanted) {
        skip();
        if (at >= text.size() || text[at] != wanted)
            return false;
        ++at;
        return true;
    }

    void expect(QChar wanted) {
        if (!accept(wanted))
            fail();
    }

    Block sum(double fontSize) {
        Block all = product(fontSize);
        while (true) {
            const QChar sign = accept(u'+') ? u'+' : accept(u'-') ? u'−' : QChar();
            if (sign.isNull())
                return all;
            all.append(textBlock(sign, fontSize), gap(fontSize));
            all.append(product(fontSize), gap(fontSize));
        }
    }

    Block product(double fontSize) {
        Block all = power(fontSize);
        while (true) {
            const Block bare = withoutBrackets(all);
            if (accept(u'*')) {
                all.append(textBlock("×", fontSize), gap(fontSize));
                all.append(power(fontSize), gap(fontSize));
                bracketed = {};
            } else if (accept(u'/')) {
                const Block below = power(fontSize);
                all = fraction(bare, withoutBrackets(below), fontSize);
                bracketed = {};
            } else {
                skip();
                if (at >= text.size() || text[at] != u'"')
                    return all;
                all.append(quoted(fontSize), gap(fontSize)); // a unit behind its number
            }
        }
    }

    Block power(double fontSize) {
        if (accept(u'-')) {
            Block all = textBlock("−", fontSize);
            all.append(power(fontSize));
            bracketed = {};
            return all;
        }
        Block base = primary(fontSize);
        if (!accept(u'^'))
            return base;
        bracketed = {};
        const Block raised = power(fontSize * indexScale);
        base.place(raised, {base.width + .03 * fontSize,
                            -std::max(powerRise * fontSize, base.ascent - fontSize * .45)});
        return base;
    }

    Block primary(double fontSize) {
        skip();
        if (at >= text.size())
            fail();
        if (accept(u'('))
            return bracket(fontSize);
        if (text[at] == u'"')
            return quoted(fontSize);
        if (text[at].isDigit())
            return textBlock(number(), fontSize);
        if (text[at].isLetter())
            return name(fontSize);
        fail();
    }

    Block quoted(double fontSize) {
        const qsizetype end = text.indexOf(u'"', at + 1);
        if (end < 0)
            fail();
        const QString words = text.mid(at + 1, end - at - 1);
        at = end + 1;
        return textBlock(words, fontSize);
    }

    QString number() {
        const qsizetype start = at;
        while (at < text.size() &&
               (text[at].isDigit() || text[at] == u'.' || text[at] == u'E' ||
                (text[at] == u'+' && text[at - 1] == u'E') || (text[at] == u'-' && text[at - 1] == u'E')))
            ++at;
        return text.mid(start, at - start).replace(u'-', u'−');
    }

    QString word() {
        const qsizetype start = at;
        while (at < text.size() && (text[at].isLetterOrNumber() || text[at] == u'\''))
            ++at;
        return text.mid(start, at - start);
    }

    Block name(double fontSize) {
        const QString letters = word();
        if (accept(u'('))
            return function(letters, fontSize);
        Block base = textBlock(letters, fontSize, letters.size() == 1);
        if (at < text.size() && text[at] == u'_') {
            ++at;
            base.place(textBlock(word(), fontSize * indexScale),
                       {base.width + .03 * fontSize, indexDrop * fontSize});
        }
        return base;
    }

    /// What is in brackets; as the term of a fraction it needs none.
    Block bracket(double fontSize) {
        const Block inside = sum(fontSize);
        expect(u')');
        skip();
        bracketed = inside;
        bracketEnd = at;
        return inBrackets(inside, fontSize);
    }

    /// A block without the brackets around all of it.
    Block withoutBrackets(const Block& block) const {
        return bracketed && bracketEnd == at ? *bracketed : block;
    }

    Block function(const QString& name, double fontSize) {
        if (name == "sqrt") {
            const Block inside = sum(fontSize);
            expect(u')');
            return root(inside, fontSize);
        }
        Block inside = sum(fontSize);
        while (accept(u',')) {
            inside.append(textBlock(",", fontSize));
            inside.append(sum(fontSize), gap(fontSize));
        }
        expect(u')');
        Block all = textBlock(name, fontSize);
        all.append(inBrackets(inside, fontSize));
        return all;
    }

    /// Brackets as high as what is in them.
    static Block inBrackets(const Block& inside, double fontSize) {
        const double width = .3 * fontSize;
        Block all;
        all.place(inside, {width, 0});
        const double top = -std::max(inside.ascent, .72 * fontSize) - .02 * fontSize;
        const double bottom = std::max(inside.descent, .2 * fontSize) + .02 * fontSize;
        const double bend = .14 * fontSize;
        const double end = width + inside.width;
        for (const auto& [outer, inner] :
             {std::pair(.08 * fontSize, .08 * fontSize + bend),
              {end + width - .08 * fontSize, end + width - .08 * fontSize - bend}})
            all.strokes.push_back({{{inner, top},
                                    {outer + (inner - outer) * .3, top + bend},
                                    {outer, top + 2 * bend},
                                    {outer, bottom - 2 * bend},
                                    {outer + (inner - outer) * .3, bottom - bend},
                                    {inner, bottom}},
                                   fontSize * .06});
        all.width = end + width;
        all.ascent = -top;
        all.descent = bottom;
        return all;
    }

    const QString& text;
    double size;
    qsizetype at = 0;
    std::optional<Block> bracketed; // the inside of the bracket that ends at bracketEnd
    qsizetype bracketEnd = -1;
};

/// Puts the parts side by side, and below the first equal sign once they reach the width.
Block arranged(const std::vector<Block>& parts, double size, double width) {
    const double between = .28 * size;
    std::vector<Block> lines = {parts.front()};
    const double indent = parts.size() > 1 ? parts.front().width + between : 0;
    for (std::size_t i = 1; i < parts.size(); ++i) {
        const bool first = i == 1;
        if (!first && lines.back().width + between + parts[i].width > width) {
            Block line;
            line.place(parts[i], {indent, 0});
            lines.push_back(line);
        } else {
            lines.back().append(parts[i], between);
        }
    }
    Block all;
    double baseline = 0;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (i > 0)
            baseline += lines[i - 1].descent + lineGap * size + lines[i].ascent;
        all.place(lines[i], {0, baseline});
    }
    return all;
}

QString figure(double value) {
    return QString::number(value, 'f', 3);
}

QByteArray svgOf(const Block& block) {
    const QString size = "width=\"" + figure(block.width) + "\" height=\"" + figure(block.height()) + "\"";
    QString svg = "<svg xmlns=\"http://www.w3.org/2000/svg\" " + size + " viewBox=\"0 0 " +
                  figure(block.width) + ' ' + figure(block.height()) + "\">";
    for (const Stroke& stroke : block.strokes) {
        QString path;
        for (const QPointF& point : stroke.points)
            path += (path.isEmpty() ? "M" : "L") + figure(point.x()) + ' ' + figure(point.y() + block.ascent);
        svg += "<path fill=\"none\" stroke=\"#000\" stroke-width=\"" + figure(stroke.width) + "\" d=\"" +
               path + "\"/>";
    }
    for (const Run& run : block.runs)
        svg += "<text font-family=\"Liberation Sans\" font-size=\"" + figure(run.style.size) + '"' +
               (run.style.italic ? " font-style=\"italic\"" : "") + " x=\"" + figure(run.at.x()) + "\" y=\"" +
               figure(run.at.y() + block.ascent) + "\">" + run.text.toHtmlEscaped() + "</text>";
    return (svg + "</svg>").toUtf8();
}

} // namespace

QString Formula::inWords(const QString& formula) {
    QString words;
    for (qsizetype i = 0; i < formula.size(); ++i) {
        const QChar c = formula[i];
        if (c == u'"')
            continue;
        words += c == u'*' ? QChar(u'×') : c == u'-' ? QChar(u'−') : c;
    }
    return words;
}

QStringList Formula::linesInWords(const QString& formula, double size, double width) {
    TextStyle style;
    style.size = size;
    QStringList lines;
    for (const QString& part : inWords(formula).split(" = ")) {
        const QString next = lines.isEmpty() ? part : lines.last() + " = " + part;
        if (lines.isEmpty() || TextFit::width(next, style) <= width)
            lines = lines.isEmpty() ? QStringList{next} : lines.mid(0, lines.size() - 1) + QStringList{next};
        else
            lines.append("= " + part);
    }
    return lines;
}

Formula::Picture Formula::picture(const QString& formula, double size, double width) {
    for (double fitting = size;; fitting -= .5) {
        const Block block = arranged(Reader(formula, fitting).parts(), fitting, width);
        if (block.width <= width || fitting <= smallest)
            return {svgOf(block), {block.width, block.height()}};
    }
}
