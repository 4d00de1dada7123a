#include "jobs/TaskButton.h"

#include <QPainter>

#include <algorithm>

namespace {

constexpr int margin = 12; // pixels on every side
constexpr int iconHeight = 34;

} // namespace

QSize TaskButton::sizeHint() const {
    const QFontMetrics metrics = fontMetrics();
    const QSize name = metrics.size(0, text());
    const int width = std::max(name.width(), metrics.horizontalAdvance(shortcutText));
    const int textLines = 3; // two of them for the name
    return {std::max(width + 2 * margin, 150), iconHeight + textLines * metrics.lineSpacing() + 4 * margin};
}

void TaskButton::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const bool lively = isEnabled() && (underMouse() || hasFocus());
    const QPalette& colors = palette();
    painter.setPen(QPen(colors.color(lively ? QPalette::Highlight : QPalette::Dark), hasFocus() ? 2 : 1));
    painter.setBrush(colors.color(isDown() ? QPalette::Midlight : QPalette::Base));
    constexpr double corner = 6;
    painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), corner, corner);

    const QRect inside = rect().adjusted(margin, margin, -margin, -margin);
    icon().paint(&painter, QRect(inside.center().x() - iconHeight / 2, inside.top(), iconHeight, iconHeight));
    const int line = fontMetrics().lineSpacing();
    const QRect names(inside.left(), inside.top() + iconHeight + margin, inside.width(), 2 * line);
    painter.setPen(colors.color(QPalette::WindowText));
    painter.drawText(names, Qt::AlignHCenter | (text().contains('\n') ? Qt::AlignTop : Qt::AlignVCenter),
                     text());
    painter.setPen(colors.color(QPalette::PlaceholderText));
    painter.drawText(QRect(inside.left(), inside.bottom() - line, inside.width(), line + 1), Qt::AlignCenter,
                     shortcutText);
}

void TaskButton::enterEvent(QEnterEvent* event) {
    update();
    QAbstractButton::enterEvent(event);
}

void TaskButton::leaveEvent(QEvent* event) {
    update();
    QAbstractButton::leaveEvent(event);
}
