#include "documents/report/Renderer.h"

#include "core/base/Text.h"
#include "documents/report/Formula.h"
#include "documents/report/Picture.h"
#include "documents/report/ReportRows.h"
#include "documents/report/TextFit.h"

#include <QDate>
#include <QHash>
#include <QSet>

#include <algorithm>
#include <utility>

namespace {

constexpr double tolerance = .01; // points
constexpr double sizeStep = .25;  // points
constexpr double tiniest = 1;     // points; even then a text that is too long flows
constexpr int mostLines = 200;    // of a text that grows

class Renderer {
  public:
    explicit Renderer(const Layout& reportLayout) : layout(reportLayout) {}

    Pages render(ReportRows& rows) {
        beginPage(&rows);
        const ReportSection* group = layout.section(Section::GroupHeader);
        QString groupValue;
        bool first = true;
        for (; !rows.atEnd(); rows.moveNext()) {
            const ReportSection* detail = detailOf(rows);
            const double height = detail ? detail->height + growth(*detail, rows) : 0;
            if (group) {
                const QString value = rows.text(group->column).value_or(QString());
                if (first || value != groupValue) {
                    // A group's heading never comes last on a page.
                    require(group->height + height, &rows);
                    place(*group, &rows);
                    groupValue = value;
                }
            }
            first = false;
            if (!detail)
                continue;
            if (require(height, &rows) && group)
                placeAgain(*group, &rows);
            place(*detail, &rows);
            continueRests(&rows);
        }
        if (const ReportSection* footer = layout.section(Section::ReportFooter)) {
            require(footer->height, nullptr);
            place(*footer, nullptr);
        }
        endPage();
        numberPages();
        return std::move(pages);
    }

  private:
    double bottom() const {
        const ReportSection* footer = layout.section(Section::PageFooter);
        return layout.paper.height() - layout.margins.bottom() - (footer ? footer->height : 0);
    }

    void beginPage(ReportRows* row) {
        const bool first = pages.isEmpty();
        if (!first)
            endPage();
        pages.append(Page());
        pages.last().size = layout.paper;
        top = layout.margins.top();
        repeating = !first;
        place(first ? Section::ReportHeader : Section::RunningHeader, row);
        place(Section::PageHeader, row);
        afterHeader = top;
        top = bottom();
        place(Section::PageFooter, row);
        repeating = false;
        top = afterHeader;
    }

    /// Releases the spare memory reserved for more texts.
    void endPage() {
        pages.last().texts.squeeze();
        pages.last().lines.squeeze();
    }

    /// Begins a new page if a height in points no longer fits on this one; true if it did.
    bool require(double height, ReportRows* row) {
        if (top + height <= bottom() + tolerance || top <= afterHeader + tolerance)
            return false;
        beginPage(row);
        return true;
    }

    void place(Section kind, ReportRows* row) {
        if (const ReportSection* section = layout.section(kind))
            place(*section, row);
    }

    void placeAgain(const ReportSection& section, ReportRows* row) {
        repeating = true;
        place(section, row);
        repeating = false;
    }

    /// The detail section for a row: the one of its band, or the only one. Null if there is none.
    const ReportSection* detailOf(ReportRows& row) const {
        const QString* column = nullptr;
        for (const ReportSection& section : layout.sections) {
            if (section.kind != Section::Detail)
                continue;
            if (section.band.isEmpty())
                return &section;
            column = &section.column;
            if (row.text(*column) == section.band)
                return &section;
        }
        return nullptr;
    }

    /// By how many points the controls of a section that may grow exceed their places.
    double growth(const ReportSection& section, ReportRows& row) const {
        double most = 0;
        for (const ReportControl& control : section.controls) {
            if (!control.grows || !control.visible || control.column.isEmpty())
                continue;
            const QString content = row.text(control.column).value_or(QString());
            const double height =
                control.kind == ReportControl::Kind::Formula
                    ? formula(control, content).size.height()
                    : TextFit::wrapped(content, control.style, control.place.width(), mostLines).lines *
                          TextFit::lineHeight(control.style);
            most = std::max(most, height - control.place.height());
        }
        return most;
    }

    static Formula::Picture formula(const ReportControl& control, const QString& content) {
        return content.isEmpty() ? Formula::Picture()
                                 : Formula::picture(content, control.style.size, control.place.width());
    }

    void place(const ReportSection& section, ReportRows* row) {
        const QPointF origin(layout.margins.left(), top);
        current = section.kind;
        tabular = isTabular(section);
        starting = true;
        const double growing = row && !row->atEnd() ? growth(section, *row) : 0;
        for (const ReportControl& control : section.controls) {
            if (!control.visible)
                continue;
            QRectF at = control.place.translated(origin);
            if (control.grows)
                at.setHeight(at.height() + growing);
            place(control, at, row);
        }
        top += section.height + growing;
        fieldsBefore += layout.fields;
    }

    /// Whether a section is part of a table: a picture takes rows of its own.
    bool isTabular(const ReportSection& section) const {
        return layout.table && (section.kind == Section::PageHeader || section.kind == Section::GroupHeader ||
                                (section.kind == Section::Detail &&
                                 std::none_of(section.controls.begin(), section.controls.end(),
                                              [](const ReportControl& control) {
                                                  return control.kind == ReportControl::Kind::Picture;
                                              })));
    }

    void place(const ReportControl& control, const QRectF& at, ReportRows* row) {
        Page& page = pages.last();
        switch (control.kind) {
        case ReportControl::Kind::Line:
            page.lines.append({at.topLeft(), at.bottomRight(), control.lineWidth});
            return;
        case ReportControl::Kind::Box:
            page.boxes.append({at, control.lineWidth, control.fill});
            return;
        case ReportControl::Kind::Picture:
            if (const QByteArray svg = pictureOf(control); !svg.isEmpty())
                page.pictures.append({at, svg, control.description, control.mark});
            return;
        case ReportControl::Kind::Formula:
            return placeFormula(control, at, row);
        case ReportControl::Kind::Check:
            return check(control, at, row);
        case ReportControl::Kind::Label:
        case ReportControl::Kind::Text:
            textOf(control, at, row);
        }
    }

    QByteArray pictureOf(const ReportControl& control) {
        if (!control.svg.isEmpty() || control.picture.isEmpty())
            return control.svg;
        QByteArray& svg = pictures[control.picture];
        if (svg.isEmpty())
            svg = readPicture(control.picture);
        return svg;
    }

    void placeFormula(const ReportControl& control, const QRectF& at, ReportRows* row) {
        if (!row || row->atEnd())
            return;
        const QString content = row->text(control.column).value_or(QString());
        if (content.isEmpty())
            return;
        const Formula::Picture picture = formula(control, content);
        PagePicture placed{QRectF(at.topLeft(), picture.size), picture.svg,
                           Formula::linesInWords(content, control.style.size, at.width()).join(u'\n'), true};
        placed.isText = true;
        pages.last().pictures.append(placed);
    }

    void check(const ReportControl& control, const QRectF& at, ReportRows* row) {
        constexpr double largest = 9; // points
        const double side = std::min(at.height(), largest);
        const bool checked = row && !row->atEnd() && !control.column.isEmpty() && row->flag(control.column);
        PageText caption = placed(control, at.adjusted(side + 4, 0, 0, 0), control.text);
        TextStyle style = caption.style;
        style.alignment |= Qt::AlignVCenter;
        caption.style = style;
        pages.last().checks.append({{at.left(), at.center().y() - side / 2, side, side}, checked, caption});
    }

    void textOf(const ReportControl& control, const QRectF& at, ReportRows* row) {
        if (control.column.isEmpty())
            return text(control, at, dated(control), control.number);
        if (!row || row->atEnd())
            return;
        const QString& pattern = control.style.pattern;
        if (pattern.isEmpty() ||
            pattern.startsWith(u"General")) { // a text shown as stored need not be a number
            const auto content = row->text(control.column);
            if (!content)
                return;
            if (pattern.isEmpty())
                return text(control, at, *content, std::nullopt);
            const auto number = parseNumber(content->toStdString());
            return text(control, at, number ? shownNumber(*number, pattern) : *content, number);
        }
        if (const auto number = row->number(control.column))
            text(control, at, shownNumber(*number, pattern), number);
    }

    /// A control's own text, a label's with the day on which the document is made.
    static QString dated(const ReportControl& control) {
        static const QLatin1String day("{date}");
        if (control.kind != ReportControl::Kind::Label || !control.text.contains(day))
            return control.text;
        return QString(control.text).replace(day, shownDate(QDate::currentDate()));
    }

    PageText placed(const ReportControl& control, const QRectF& at, const QString& content) const {
        PageText result;
        result.place = at;
        result.text = content;
        result.style = control.style;
        result.section = current;
        result.label = control.kind == ReportControl::Kind::Label;
        result.repeated = repeating;
        result.cell = tabular;
        result.heading = control.heading;
        result.field = control.field < 0 ? -1 : fieldsBefore + control.field;
        return result;
    }

    /// A text without what is no letter: a soft hyphen would show in some places only, and the separators of
    /// paragraphs and pages that word processors leave behind end a line like any other.
    static QString readable(QString content) {
        constexpr QChar softHyphen(0xAD);
        const auto isSeparator = [](QChar c) { return c == QChar(0x2029) || c == u'\f' || c == u'\v'; };
        if (std::none_of(content.cbegin(), content.cend(),
                         [&](QChar c) { return c == softHyphen || isSeparator(c); }))
            return content;
        content.remove(softHyphen);
        std::replace_if(content.begin(), content.end(), isSeparator, QChar(u'\n'));
        return content;
    }

    /// Reuses a text already in memory: lists repeat the same few texts over and over.
    const QString& known(const QString& content) {
        constexpr qsizetype most = 2000; // texts remembered
        if (texts.size() >= most)
            texts.clear();
        return *texts.insert(content);
    }

    void text(const ReportControl& control, const QRectF& at, const QString& content,
              std::optional<double> number) {
        if (content.isEmpty())
            return;
        PageText result = placed(control, at, known(readable(content)));
        if (number)
            result.number = *number;
        if (!control.style.mark.isEmpty())
            alignMark(control, result);
        if (control.wrap || !fitsOneLine(control, result))
            wrap(control, result);
        if (control.kind == ReportControl::Kind::Label && content.contains("{page")) {
            result.pageNumber = true;
            numbered.append({pages.size() - 1, pages.last().texts.size()});
        }
        result.starts = std::exchange(starting, false);
        pages.last().texts.append(result);
    }

    /// Moves the end of a text so that its mark lines up with the column's, if there is room.
    static void alignMark(const ReportControl& control, PageText& line) {
        const double right = line.place.left() + control.markAt +
                             TextFit::width(QStringView(line.text).mid(line.markAt()), line.style);
        const double left = right - TextFit::width(line.text, line.style);
        if (right <= line.place.right() + tolerance && left >= line.place.left() - tolerance)
            line.place.setRight(right);
    }

    /// Shrinks a text onto one line as far as its control allows; several lines come first where they keep it
    /// larger without parting a word.
    static bool fitsOneLine(const ReportControl& control, PageText& line) {
        const double width = TextFit::width(line.text, line.style);
        if (line.text.contains(u'\n'))
            return false;
        if (width <= line.place.width() + tolerance)
            return true;
        const double smallest = control.smallest > 0 ? control.smallest : line.style->size;
        const double fitting = line.style->size * line.place.width() / width;
        const double size = std::floor(fitting / sizeStep) * sizeStep;
        if (size < smallest)
            return false;
        if (line.place.height() > 2 * size) {
            const TextFit::Fitted fitted =
                TextFit::fit(line.text, line.style, line.place.size(), size + sizeStep);
            if (fitted.rest.isEmpty() && !fitted.text.contains(PageText::WordBreak)) {
                line.text = fitted.text;
                line.style = fitted.style;
                return true;
            }
        }
        TextStyle style = line.style;
        style.size = size;
        line.style = style;
        return true;
    }

    void wrap(const ReportControl& control, PageText& block) {
        const double smallest = control.smallest > 0 ? control.smallest : control.style.size;
        TextFit::Fitted fitted = TextFit::fit(block.text, block.style, block.place.size(), smallest);
        if (!fitted.rest.isEmpty() && control.flow.isEmpty()) // better small than across its neighbour
            fitted = TextFit::fit(block.text, fitted.style, block.place.size(), tiniest);
        if (!fitted.rest.isEmpty())
            rests.append({control, fitted.rest});
        block.text = fitted.text;
        block.style = fitted.style;
    }

    /// Puts the rest of each flowing text onto pages of its own.
    void continueRests(ReportRows* row) {
        while (!rests.isEmpty()) {
            Rest rest = rests.takeFirst();
            beginPage(row);
            place(Section::Continuation, row);
            continueHeading(rest.control.flow);
            const QRectF at(layout.margins.left(), top,
                            layout.paper.width() - layout.margins.left() - layout.margins.right(),
                            bottom() - top);
            rest.control.smallest = 0; // there is room here
            rest.control.wrap = true;
            text(rest.control, at, rest.text, std::nullopt);
            top = bottom();
        }
    }

    /// The heading of a continued text, with the bar behind it.
    void continueHeading(const QString& name) {
        constexpr double gap = 4; // points
        Layout copy = layout;
        ReportControl* label = copy.control(name);
        if (!label)
            return;
        const double height = label->place.height();
        if (ReportControl* bar = copy.control("box" + name.mid(3))) {
            bar->place.moveTop(0);
            place(*bar, bar->place.translated(layout.margins.left(), top), nullptr);
        }
        label->text += " (continued)";
        label->place.moveTop(0);
        place(*label, label->place.translated(layout.margins.left(), top), nullptr);
        top += height + gap;
    }

    /// Fills in {page} and {pages} once the number of pages is known.
    void numberPages() {
        for (const auto& [page, index] : numbered)
            pages[page]
                .texts[index]
                .text.replace("{pages}", QString::number(pages.size()))
                .replace("{page}", QString::number(page + 1));
    }

    struct Rest {
        ReportControl control;
        QString text;
    };

    const Layout& layout;
    Pages pages;
    QList<Rest> rests;
    QList<std::pair<qsizetype, qsizetype>> numbered; // page and text
    QHash<QString, QByteArray> pictures;
    QSet<QString> texts;
    Section current = Section::Detail;
    bool repeating = false;
    bool tabular = false;  // the section is part of a table
    bool starting = false; // none of its texts is placed yet
    int fieldsBefore = 0;
    double top = 0;
    double afterHeader = 0;
};

} // namespace

Pages renderPages(const Layout& layout, ReportRows& rows) {
    return Renderer(layout).render(rows);
}

Pages renderPages(const Layout& layout, Recordset& rows) {
    StatementRows read(rows);
    return renderPages(layout, read);
}

QString shownNumber(double number, const QString& pattern) {
    constexpr QLatin1String general("General");
    if (!pattern.startsWith(general))
        return formattedNumber(number, pattern.toStdString());
    return shownNumber(number) + pattern.mid(general.size());
}
