#include "documents/report/Renderer.h"

#include "core/base/Text.h"
#include "core/store/Database.h"
#include "documents/report/Picture.h"
#include "documents/report/TextFit.h"

#include <QHash>
#include <QSet>

#include <utility>

namespace {

constexpr double tolerance = .01; // points
constexpr double sizeStep = .25;  // points
constexpr double tiniest = 1;     // points; even then a text that is too long flows

class Renderer {
  public:
    explicit Renderer(const Layout& reportLayout) : layout(reportLayout) {}

    Pages render(Recordset& rows) {
        beginPage(&rows);
        const ReportSection* detail = layout.section(Section::Detail);
        const ReportSection* group = layout.section(Section::GroupHeader);
        QString groupValue;
        bool first = true;
        for (; !rows.atEnd(); rows.moveNext()) {
            if (group) {
                const QString value = rows[group->groupColumn].text();
                if (first || value != groupValue) {
                    // A group's heading never comes last on a page.
                    require(group->height + (detail ? detail->height : 0), &rows);
                    place(*group, &rows);
                    groupValue = value;
                }
            }
            first = false;
            if (!detail)
                continue;
            if (require(detail->height, &rows) && group)
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

    void beginPage(Recordset* row) {
        const bool first = pages.isEmpty();
        if (!first)
            endPage();
        pages.append(Page());
        pages.last().size = layout.paper;
        top = layout.margins.top();
        if (first)
            place(Section::ReportHeader, row);
        repeating = !first;
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
    bool require(double height, Recordset* row) {
        if (top + height <= bottom() + tolerance || top <= afterHeader + tolerance)
            return false;
        beginPage(row);
        return true;
    }

    void place(Section kind, Recordset* row) {
        if (const ReportSection* section = layout.section(kind))
            place(*section, row);
    }

    void placeAgain(const ReportSection& section, Recordset* row) {
        repeating = true;
        place(section, row);
        repeating = false;
    }

    void place(const ReportSection& section, Recordset* row) {
        const QPointF origin(layout.margins.left(), top);
        current = section.kind;
        for (const ReportControl& control : section.controls)
            if (control.visible)
                place(control, control.place.translated(origin), row);
        top += section.height;
        fieldsBefore += layout.fields;
    }

    void place(const ReportControl& control, const QRectF& at, Recordset* row) {
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

    void check(const ReportControl& control, const QRectF& at, Recordset* row) {
        constexpr double largest = 9; // points
        const double side = std::min(at.height(), largest);
        const bool checked =
            row && !row->atEnd() && !control.column.isEmpty() && (*row)[control.column].boolean();
        PageText caption = placed(control, at.adjusted(side + 4, 0, 0, 0), control.text);
        TextStyle style = caption.style;
        style.alignment |= Qt::AlignVCenter;
        caption.style = style;
        pages.last().checks.append({{at.left(), at.center().y() - side / 2, side, side}, checked, caption});
    }

    void textOf(const ReportControl& control, const QRectF& at, Recordset* row) {
        if (control.column.isEmpty())
            return text(control, at, control.text, control.number);
        if (!row || row->atEnd())
            return;
        const Recordset::Field field = (*row)[control.column];
        if (field.isNull())
            return;
        const QString& pattern = control.style.pattern;
        if (pattern.isEmpty())
            return text(control, at, field.text(), std::nullopt);
        const std::optional<double> number = numberOf(field, pattern);
        text(control, at, number ? shownNumber(*number, pattern) : field.text(), number);
    }

    /// A text shown as stored need not be a number.
    static std::optional<double> numberOf(const Recordset::Field& field, const QString& pattern) {
        return pattern.startsWith(u"General") ? parseNumber(field.text().toStdString()) : field.number();
    }

    PageText placed(const ReportControl& control, const QRectF& at, const QString& content) const {
        PageText result;
        result.place = at;
        result.text = content;
        result.style = control.style;
        result.section = current;
        result.label = control.kind == ReportControl::Kind::Label;
        result.repeated = repeating;
        result.heading = control.heading;
        result.field = control.field < 0 ? -1 : fieldsBefore + control.field;
        return result;
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
        PageText result = placed(control, at, known(content));
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

    /// Shrinks a text onto one line as far as its control allows.
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
    void continueRests(Recordset* row) {
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
    int fieldsBefore = 0;
    double top = 0;
    double afterHeader = 0;
};

} // namespace

Pages renderPages(const Layout& layout, Recordset& rows) {
    return Renderer(layout).render(rows);
}

QString shownNumber(double number, const QString& pattern) {
    constexpr QLatin1String general("General");
    if (!pattern.startsWith(general))
        return formattedNumber(number, pattern.toStdString());
    return shownNumber(number) + pattern.mid(general.size());
}
