#include "core/shell/ElidedLabel.h"

#include <QHelpEvent>
#include <QStyle>
#include <QStylePainter>
#include <QToolTip>

QSize ElidedLabel::minimumSizeHint() const {
    const QSize whole = QLabel::minimumSizeHint();
    return {qMin(whole.width(), fontMetrics().horizontalAdvance(u'…')), whole.height()};
}

bool ElidedLabel::isElided() const {
    return fontMetrics().horizontalAdvance(text()) > contentsRect().width();
}

bool ElidedLabel::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip || !isElided())
        return QLabel::event(event);
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), text(), this);
    return true;
}

void ElidedLabel::paintEvent(QPaintEvent* /*event*/) {
    QStylePainter painter(this);
    const QRect area = contentsRect();
    painter.drawItemText(area, int(Qt::AlignLeft | Qt::AlignVCenter), palette(), isEnabled(),
                         fontMetrics().elidedText(text(), Qt::ElideRight, area.width()), foregroundRole());
}
