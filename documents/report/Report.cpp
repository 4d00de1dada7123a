#include "documents/report/Report.h"

#include "core/base/Fault.h"
#include "core/shell/DisplayFields.h"
#include "core/store/Gateway.h"
#include "documents/report/TextFit.h"

#include <QMarginsF>

#include <climits>

namespace {

using Kind = ReportSection::Kind;

/// Places the sections of a layout on pages, row after row.
class Renderer {
  public:
    explicit Renderer(const Layout& reportLayout) : layout(reportLayout) {}

    Pages render(Recordset& rows) {
        beginPage(&rows);
        place(Kind::ReportHeader, &rows);
        const ReportSection* detail = layout.section(Kind::Detail);
        const ReportSection* group = layout.section(Kind::GroupHeader);
        QString groupValue;
        bool first = true;
        for (; !rows.AtEnd(); rows.MoveNext()) {
            if (group) {
                const QString value = rows[group->groupColumn].text();
                if (first || value != groupValue) {
                    // A group's heading never stands alone at the foot of a page.
                    require(group->height + (detail ? detail->height : 0), &rows);
                    place(*group, &rows);
                    groupValue = value;
                }
            }
            first = false;
            if (!detail)
                continue;
            if (require(detail->height, &rows) && group)
                place(*group, &rows);
            place(*detail, &rows);
            continueRests(&rows);
        }
        if (const ReportSection* footer = layout.section(Kind::ReportFooter)) {
            require(footer->height, nullptr);
            place(*footer, nullptr);
        }
        return std::move(pages);
    }

  private:
    double bottom() const {
        const ReportSection* footer = layout.section(Kind::PageFooter);
        return layout.paper.height() - layout.margins.bottom() - (footer ? footer->height : 0);
    }

    void beginPage(Recordset* row) {
        pages.append(Page());
        pages.last().size = layout.paper;
        top = layout.margins.top();
        place(Kind::PageHeader, row);
        if (const ReportSection* footer = layout.section(Kind::PageFooter)) {
            const double here = std::exchange(top, bottom());
            place(*footer, row);
            top = here;
        }
    }

    /// Begins a page when a height in points no longer fits on this one; true when it did.
    bool require(double height, Recordset* row) {
        constexpr double tolerance = .01;
        const double start = layout.margins.top();
        if (top + height <= bottom() + tolerance || top <= start + tolerance)
            return false;
        beginPage(row);
        return true;
    }

    void place(Kind kind, Recordset* row) {
        if (const ReportSection* section = layout.section(kind))
            place(*section, row);
    }

    void place(const ReportSection& section, Recordset* row) {
        const QPointF origin(layout.margins.left(), top);
        for (const ReportControl& control : section.controls)
            if (control.visible)
                place(control, control.place.translated(origin), row);
        top += section.height;
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
            if (!control.picture.isEmpty())
                page.pictures.append({at, control.picture});
            return;
        case ReportControl::Kind::Check: {
            const double side = std::min(at.height(), 9.0);
            const bool checked =
                row && !row->AtEnd() && !control.column.isEmpty() && (*row)[control.column].boolean();
            page.checks.append({{at.left(), at.center().y() - side / 2, side, side}, checked});
            if (!control.text.isEmpty())
                text(control, at.adjusted(side + 4, 0, 0, 0), control.text, control.number);
            return;
        }
        default:
            textOf(control, at, row);
        }
    }

    void textOf(const ReportControl& control, const QRectF& at, Recordset* row) {
        if (control.column.isEmpty())
            return text(control, at, control.text, control.number);
        if (!row || row->AtEnd())
            return;
        const Recordset::Field field = (*row)[control.column];
        if (field.isNull())
            return;
        if (control.format.isEmpty())
            return text(control, at, field.text(), std::nullopt);
        text(control, at, FormattedField(field, control.format.toUtf8().constData()), field.number());
    }

    void text(const ReportControl& control, const QRectF& at, const QString& content,
              std::optional<double> number) {
        if (content.isEmpty())
            return;
        PageText placed{at, content, control.style, number, control.format};
        const double smallest = control.smallest > 0 ? control.smallest : control.style.size;
        if (control.wrap) {
            TextFit::Fitted fitted = TextFit::fit(content, control.style, at.size(), smallest);
            placed.text = fitted.text;
            placed.style = fitted.style;
            if (!fitted.rest.isEmpty())
                overflow(control, placed, fitted.rest);
        } else {
            // One line shrinks as far as it must; what is too long even then keeps its end for all to see.
            constexpr double step = .25;
            while (placed.style.size - step >= std::min(smallest, 5.0) &&
                   TextFit::width(content, placed.style) > at.width())
                placed.style.size -= step;
        }
        pages.last().texts.append(placed);
    }

    void overflow(const ReportControl& control, PageText& placed, const QString& rest) {
        if (control.flow)
            rests.append({control, rest});
        else // all of it, beyond the place rather than cut
            placed.text += PageText::blankBreak +
                           TextFit::wrapped(rest, placed.style, placed.place.width(), INT_MAX).text;
    }

    /// Gives the rest of each text that flows pages of its own.
    void continueRests(Recordset* row) {
        while (!rests.isEmpty()) {
            const Rest rest = rests.takeFirst();
            beginPage(row);
            const QRectF at(layout.margins.left(), top,
                            layout.paper.width() - layout.margins.left() - layout.margins.right(),
                            bottom() - top);
            text(rest.control, at, rest.text, std::nullopt);
            top = bottom();
        }
    }

    struct Rest {
        ReportControl control;
        QString text;
    };

    const Layout& layout;
    Pages pages;
    QList<Rest> rests;
    double top = 0;
};

} // namespace

Pages RenderPages(const Layout& layout, Recordset& rows) {
    return Renderer(layout).render(rows);
}

Report::Report(const ReportKind& reportKind)
    : kind(reportKind), reportLayout(Layout::load(reportKind.layout)) {
    title = reportLayout.title;
    fileName = title;
}

ReportControl& Report::control(const QString& controlName) {
    ReportControl* found = reportLayout.control(controlName);
    if (!found)
        throw Fault(Fault::ObjectNotSet, kind.name + (" has no " + controlName).toStdString());
    return *found;
}

Document Report::Run() {
    kind.start(*this);
    Connection connection = UtilityFunctions::openDatabase(kind.database);
    Recordset rows;
    rows.Open(source, connection);
    return {title, author, fileName, RenderPages(reportLayout, rows)};
}
