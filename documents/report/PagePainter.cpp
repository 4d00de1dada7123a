#include "documents/report/PagePainter.h"

#include "documents/report/PictureLabels.h"
#include "documents/report/TextFit.h"

#include <QPainter>
#include <QSvgRenderer>

#include <algorithm>
#include <optional>

namespace {

/// Sets pen, brush and font only when they change: a long list has few styles, and changing one costs the
/// painter more than a short text.
class Tools {
  public:
    explicit Tools(QPainter& target) : painter(target) {}

    void line(const QColor& color, double width) {
        const QPen pen = width > 0 ? QPen(color, width) : QPen(Qt::NoPen);
        if (painter.pen() != pen)
            painter.setPen(pen);
    }
    void fill(const QColor& color) {
        const QBrush brush = color.isValid() ? QBrush(color) : QBrush(Qt::NoBrush);
        if (painter.brush() != brush)
            painter.setBrush(brush);
    }
    void text(const SharedStyle& style) {
        if (current == style)
            return;
        if (!current || (*current)->size != style->size || (*current)->bold != style->bold ||
            (*current)->italic != style->italic) {
            painter.setFont(TextFit::font(style));
        }
        if (!current || (*current)->color != style->color)
            painter.setPen(style->color);
        current = style;
    }

    QPainter& painter;

  private:
    std::optional<SharedStyle> current;
};

/// The painter must be scaled for enlarged fonts.
void paintText(Tools& tools, const PageText& text) {
    tools.text(text.style);
    placeLines(text, [&](QStringView line, const QPointF& at, QChar) {
        tools.painter.drawText(at * TextFit::fontScale, line.toString());
    });
}

/// Paints all of a picture but its texts, and adds those to the page's labels.
void paintPicture(QPainter& painter, const PagePicture& picture, QList<PictureLabel>& labels) {
    const LabelledPicture parts = labelledPicture(picture.svg);
    QSvgRenderer renderer(parts.svg);
    const QRectF place = picturePlace(renderer.defaultSize(), picture.place);
    renderer.render(&painter, place);
    const QRectF view = renderer.viewBoxF();
    for (const PictureLabel& label : parts.labels)
        labels.append(onPage(label, view, place));
}

void paintLabel(Tools& tools, const PictureLabel& label) {
    tools.text(label.style);
    tools.painter.drawText(startOf(label) * TextFit::fontScale, label.text);
}

void paintCheck(Tools& tools, const PageCheck& check) {
    tools.line(Qt::black, checkWidth);
    tools.fill({});
    tools.painter.drawRect(check.place);
    if (!check.checked)
        return;
    const auto corners = tickIn(check.place);
    tools.line(Qt::black, tickWidth);
    tools.painter.drawPolyline(corners.data(), int(corners.size()));
}

} // namespace

void placeLines(const PageText& text,
                const std::function<void(QStringView line, const QPointF& at, QChar separator)>& place) {
    const QString& whole = text.text;
    const TextStyle& style = text.style;
    const double height = TextFit::lineHeight(style);
    const auto separates = [](QChar c) {
        return c == u'\n' || c == PageText::BlankBreak || c == PageText::WordBreak;
    };
    double y = text.place.top() + TextFit::ascent(style);
    if (style.alignment & Qt::AlignVCenter)
        y += (text.place.height() -
              height * double(1 + std::count_if(whole.begin(), whole.end(), separates))) /
             2;
    for (qsizetype from = 0; from <= whole.size();) {
        const auto* end = std::find_if(whole.begin() + from, whole.end(), separates);
        const QStringView line = QStringView(whole).mid(from, end - whole.begin() - from);
        double x = text.place.left();
        if (style.alignment & (Qt::AlignRight | Qt::AlignHCenter)) {
            const double free = text.place.width() - TextFit::width(line, style);
            x += style.alignment & Qt::AlignRight ? free : free / 2;
        }
        place(line, {x, y}, end == whole.end() ? QChar() : *end);
        from += line.size() + 1;
        y += height;
    }
}

QPointF startOf(const PictureLabel& label) {
    if (!(label.style.alignment & (Qt::AlignRight | Qt::AlignHCenter)))
        return label.at;
    const double width = TextFit::width(label.text, label.style);
    return label.at - QPointF(label.style.alignment & Qt::AlignRight ? width : width / 2, 0);
}

PictureLabel onPage(PictureLabel label, const QRectF& view, const QRectF& place) {
    const double scale = place.width() / view.width();
    label.at = place.topLeft() + (label.at - view.topLeft()) * scale;
    label.style.size *= scale;
    return label;
}

std::array<QPointF, 3> tickIn(const QRectF& box) {
    const auto at = [&box](double x, double y) {
        return box.topLeft() + QPointF(box.width() * x, box.height() * y);
    };
    return {at(.2, .55), at(.42, .78), at(.82, .22)};
}

QRectF picturePlace(const QSizeF& picture, const QRectF& place) {
    QSizeF size = picture;
    size.scale(place.size(), Qt::KeepAspectRatio);
    return {place.center() - QPointF(size.width() / 2, size.height() / 2), size};
}

void paintPage(QPainter& painter, const Page& page) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setLayoutDirection(Qt::LayoutDirectionAuto); // a text runs as its first letter does, as in a PDF
    Tools tools(painter);
    for (const PageBox& box : page.boxes) {
        tools.line(Qt::black, box.width);
        tools.fill(box.fill);
        painter.drawRect(box.place);
    }
    for (const PageLine& line : page.lines) {
        tools.line(Qt::black, line.width);
        painter.drawLine(line.from, line.to);
    }
    QList<PictureLabel> labels; // on the page
    for (const PagePicture& picture : page.pictures)
        paintPicture(painter, picture, labels);
    for (const PageCheck& check : page.checks)
        paintCheck(tools, check);
    painter.save();
    painter.scale(1.0 / TextFit::fontScale, 1.0 / TextFit::fontScale);
    for (const PageText& text : page.texts)
        paintText(tools, text);
    for (const PageCheck& check : page.checks)
        paintText(tools, check.caption);
    for (const PictureLabel& label : labels)
        paintLabel(tools, label);
    painter.restore();
}
