#include "documents/viewer/ReportView.h"

#include "documents/report/PagePainter.h"

#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>
#include <cmath>

namespace {
constexpr double gap = 14; // screen units around a page
}

QSizeF ReportView::paper() const {
    return shownPages.isEmpty() ? QSizeF(612, 792) : shownPages.first().size;
}

double ReportView::pageHeight() const {
    return paper().height() * shownScale + gap;
}

void ReportView::setPages(const Pages& newPages) {
    shownPages = newPages;
    foundPlace = {};
    layOut();
    verticalScrollBar()->setValue(0);
    pageChanged();
}

void ReportView::layOut() {
    const int page = currentPage();
    const QSize window = viewport()->size();
    if (zoom == Zoom::PageWidth)
        shownScale = (window.width() - 2 * gap) / paper().width();
    else if (zoom == Zoom::WholePage)
        shownScale = std::min((window.width() - 2 * gap) / paper().width(),
                              (window.height() - 2 * gap) / paper().height());
    shownScale = std::clamp(shownScale, .1, 12.0);
    const double height = gap + pageHeight() * double(shownPages.size());
    verticalScrollBar()->setPageStep(window.height());
    verticalScrollBar()->setSingleStep(40);
    verticalScrollBar()->setRange(0, std::max(0, int(std::ceil(height)) - window.height()));
    const double width = paper().width() * shownScale + 2 * gap;
    horizontalScrollBar()->setPageStep(window.width());
    horizontalScrollBar()->setRange(0, std::max(0, int(std::ceil(width)) - window.width()));
    goTo(page);
    viewport()->update();
}

int ReportView::currentPage() const {
    const double middle = verticalScrollBar()->value() + viewport()->height() / 3.0;
    return std::clamp(int(middle / pageHeight()), 0, std::max(0, int(shownPages.size()) - 1));
}

void ReportView::goTo(int page) {
    verticalScrollBar()->setValue(
        int(pageHeight() * std::clamp(page, 0, std::max(0, int(shownPages.size()) - 1))));
}

void ReportView::setZoom(Zoom newZoom) {
    zoom = newZoom;
    layOut();
}

void ReportView::zoomBy(double factor) {
    zoom = Zoom::Free;
    shownScale *= factor;
    layOut();
}

bool ReportView::find(const QString& text) {
    if (text.isEmpty() || shownPages.isEmpty())
        return false;
    Found at = foundPlace;
    const int pages = int(shownPages.size());
    for (int turned = 0; turned <= pages; ++turned) {
        const int page = at.page < 0 ? 0 : at.page;
        const auto& texts = shownPages[page].texts;
        for (int i = at.text + 1; i < texts.size(); ++i)
            if (texts[i].plain().contains(text, Qt::CaseInsensitive)) {
                foundPlace = {page, i};
                const double top = gap + pageHeight() * page + texts[i].place.top() * shownScale;
                verticalScrollBar()->setValue(int(top - viewport()->height() / 3.0));
                viewport()->update();
                return true;
            }
        at = {(page + 1) % pages, -1};
    }
    foundPlace = {};
    viewport()->update();
    return false;
}

void ReportView::paintEvent(QPaintEvent*) {
    QPainter painter(viewport());
    painter.fillRect(viewport()->rect(), palette().brush(QPalette::Mid));
    const double left = std::max(gap, (viewport()->width() - paper().width() * shownScale) / 2) -
                        horizontalScrollBar()->value();
    const int first = std::max(0, int((verticalScrollBar()->value() - gap) / pageHeight()));
    for (int i = first; i < shownPages.size(); ++i) {
        const double top = gap + pageHeight() * i - verticalScrollBar()->value();
        if (top > viewport()->height())
            break;
        const QRectF sheet(left, top, shownPages[i].size.width() * shownScale,
                           shownPages[i].size.height() * shownScale);
        painter.fillRect(sheet.translated(2, 2), QColor(0, 0, 0, 40));
        painter.fillRect(sheet, Qt::white);
        painter.save();
        painter.setClipRect(sheet);
        painter.translate(sheet.topLeft());
        painter.scale(shownScale, shownScale);
        if (foundPlace.page == i)
            painter.fillRect(shownPages[i].texts[foundPlace.text].place, QColor(255, 226, 110));
        PaintPage(painter, shownPages[i]);
        painter.restore();
    }
}

void ReportView::resizeEvent(QResizeEvent*) {
    layOut();
}

void ReportView::wheelEvent(QWheelEvent* event) {
    if (!(event->modifiers() & Qt::ControlModifier))
        return QAbstractScrollArea::wheelEvent(event);
    zoomBy(event->angleDelta().y() > 0 ? 1.15 : 1 / 1.15);
}

void ReportView::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Home:
        return goTo(0);
    case Qt::Key_End:
        return goTo(int(shownPages.size()) - 1);
    case Qt::Key_PageDown:
        return goTo(currentPage() + 1);
    case Qt::Key_PageUp:
        return goTo(currentPage() - 1);
    default:
        QAbstractScrollArea::keyPressEvent(event);
    }
}

void ReportView::scrollContentsBy(int, int) {
    viewport()->update();
    pageChanged();
}
