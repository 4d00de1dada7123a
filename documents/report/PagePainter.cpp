#include "documents/report/PagePainter.h"

#include "documents/report/PictureLabels.h"
#include "documents/report/TextFit.h"

#include <QPainter>
#include <QPainterPath>
#include <QSvgRenderer>

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
            lineHeight = TextFit::lineHeight(style);
            ascent = TextFit::ascent(style);
        }
        if (!current || (*current)->color != style->color)
            painter.setPen(style->color);
        current = style;
    }

    QPainter& painter;
    double lineHeight = 0; // of the text style
    double ascent = 0;

  private:
    std::optional<SharedStyle> current;
};

void paintLine(Tools& tools, const PageText& text, QStringView line, double y) {
    double x = text.place.left();
    if (text.style->alignment & (Qt::AlignRight | Qt::AlignHCenter)) {
        const double free = text.place.width() - TextFit::width(line, text.style);
        x += text.style->alignment & Qt::AlignRight ? free : free / 2;
    }
    tools.painter.drawText(QPointF(x, y + tools.ascent) * TextFit::fontScale, line.toString());
}

/// The painter must be scaled for enlarged fonts.
void paintText(Tools& tools, const PageText& text) {
    tools.text(text.style);
    const QStringList lines = text.breaks() ? text.lines() : QStringList{text.text};
    double y = text.place.top();
    if (text.style->alignment & Qt::AlignVCenter)
        y = text.place.center().y() - tools.lineHeight * double(lines.size()) / 2;
    for (const QString& line : lines) {
        paintLine(tools, text, line, y);
        y += tools.lineHeight;
    }
}

/// Paints all of a picture but its texts, and adds those to the page's labels.
void paintPicture(QPainter& painter, const PagePicture& picture, QList<PictureLabel>& labels) {
    const LabelledPicture parts = labelledPicture(picture.svg);
    QSvgRenderer renderer(parts.svg);
    const QRectF place = picturePlace(renderer.defaultSize(), picture.place);
    renderer.render(&painter, place);
    const QRectF view = renderer.viewBoxF();
    const double scale = place.width() / view.width();
    for (PictureLabel label : parts.labels) {
        label.at = place.topLeft() + (label.at - view.topLeft()) * scale;
        label.style.size *= scale;
        labels.append(label);
    }
}

void paintLabel(Tools& tools, const PictureLabel& label) {
    tools.text(label.style);
    double x = label.at.x();
    if (label.style.alignment & (Qt::AlignRight | Qt::AlignHCenter)) {
        const double width = TextFit::width(label.text, label.style);
        x -= label.style.alignment & Qt::AlignRight ? width : width / 2;
    }
    tools.painter.drawText(QPointF(x, label.at.y()) * TextFit::fontScale, label.text);
}

void paintCheck(Tools& tools, const PageCheck& check) {
    tools.line(Qt::black, .6);
    tools.fill({});
    tools.painter.drawRect(check.place);
    if (!check.checked)
        return;
    QPainterPath tick(check.place.topLeft() + QPointF(check.place.width() * .2, check.place.height() * .55));
    tick.lineTo(check.place.topLeft() + QPointF(check.place.width() * .42, check.place.height() * .78));
    tick.lineTo(check.place.topLeft() + QPointF(check.place.width() * .82, check.place.height() * .22));
    tools.line(Qt::black, 1.1);
    tools.painter.drawPath(tick);
}

} // namespace

QRectF picturePlace(const QSizeF& picture, const QRectF& place) {
    QSizeF size = picture;
    size.scale(place.size(), Qt::KeepAspectRatio);
    return {place.center() - QPointF(size.width() / 2, size.height() / 2), size};
}

void paintPage(QPainter& painter, const Page& page) {
    painter.setRenderHint(QPainter::Antialiasing);
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
