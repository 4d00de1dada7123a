#include "documents/viewer/ReportView.h"

#include "core/shell/Dialogs.h"
#include "documents/report/PagePainter.h"

#include <QKeyEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>

#include <algorithm>
#include <cmath>

namespace {

constexpr double gap = 14; // screen units around a page
constexpr double wheelStep = 1.15;
const QColor foundColor(255, 232, 130);
const QColor currentColor(255, 176, 66);
const QColor selectionColor(160, 200, 255);

} // namespace

ReportView::ReportView(QWidget* parent) : QAbstractScrollArea(parent) {
    viewport()->setMouseTracking(true);
    verticalScrollBar()->setSingleStep(40);
    horizontalScrollBar()->setSingleStep(40);
}

/// A page may lie across the paper, as the schedule in a package.
void ReportView::takePages(const Pages& newPages) {
    shownPages = newPages;
    paper = newPages.isEmpty() ? Page().size : QSizeF();
    for (const Page& page : newPages)
        paper = paper.expandedTo(page.size);
}

double ReportView::pageHeight() const {
    return paper.height() * shownScale + gap;
}

double ReportView::left() const {
    return std::max(gap, (viewport()->width() - paper.width() * shownScale) / 2) -
           horizontalScrollBar()->value();
}

double ReportView::left(int page) const {
    return left() + (paper.width() - shownPages[page].size.width()) / 2 * shownScale;
}

std::pair<int, QPointF> ReportView::onPage(const QPointF& point) const {
    const double y = point.y() + verticalScrollBar()->value() - gap;
    const int page = std::clamp(int(y / pageHeight()), 0, std::max(0, int(shownPages.size()) - 1));
    return {page, QPointF(point.x() - left(page), y - page * pageHeight()) / shownScale};
}

void ReportView::setPages(const Pages& newPages) {
    takePages(newPages);
    searchedText.clear();
    found.clear();
    current = -1;
    selectionStart = selectionEnd = {};
    layOut({}, shownScale);
    verticalScrollBar()->setValue(0);
    changed();
}

void ReportView::setMorePages(const Pages& newPages) {
    takePages(newPages);
    layOut(QPointF(viewport()->width() / 2.0, 0), shownScale);
}

/// Keeps what is at a point of the window where it is.
void ReportView::layOut(const QPointF& anchor, double scale) {
    const double pagesAbove = (verticalScrollBar()->value() + anchor.y() - gap) / pageHeight();
    const double across = (anchor.x() - left()) / shownScale;
    const QSize window = viewport()->size();
    const double pageWidth = (window.width() - 2 * gap) / paper.width();
    shownScale = scale;
    if (zoom == Zoom::PageWidth)
        shownScale = pageWidth;
    else if (zoom == Zoom::WholePage)
        shownScale = std::min(pageWidth, (window.height() - 2 * gap) / paper.height());
    shownScale = std::clamp(shownScale, .1, 12.0);
    const double height = gap + pageHeight() * double(shownPages.size());
    // When a whole page is in view, Page Down moves by one page of the report.
    verticalScrollBar()->setPageStep(std::min(window.height(), int(pageHeight())));
    verticalScrollBar()->setRange(0, std::max(0, int(std::ceil(height)) - window.height()));
    const double width = paper.width() * shownScale + 2 * gap;
    horizontalScrollBar()->setPageStep(window.width());
    horizontalScrollBar()->setRange(0, std::max(0, int(std::ceil(width)) - window.width()));
    verticalScrollBar()->setValue(int(std::lround(gap + pagesAbove * pageHeight() - anchor.y())));
    horizontalScrollBar()->setValue(int(std::lround(gap + across * shownScale - anchor.x())));
    viewport()->update();
    changed();
}

int ReportView::currentPage() const {
    const double middle = verticalScrollBar()->value() + viewport()->height() / 3.0;
    return std::clamp(int(middle / pageHeight()), 0, std::max(0, int(shownPages.size()) - 1));
}

void ReportView::goTo(int page) {
    const int last = std::max(0, int(shownPages.size()) - 1);
    verticalScrollBar()->setValue(int(std::ceil(pageHeight() * std::clamp(page, 0, last))));
    changed();
}

void ReportView::goTo(const TextPlace& place) {
    const double above = shownPages[place.page].texts[place.text].place.top() * shownScale;
    verticalScrollBar()->setValue(int(pageHeight() * place.page + above));
    changed();
}

void ReportView::setZoom(Zoom newZoom) {
    zoom = newZoom;
    layOut(QRectF(viewport()->rect()).center(), shownScale);
}

double ReportView::percent() const {
    return shownScale * 72 / logicalDpiX() * 100;
}

void ReportView::setPercent(double percent) {
    zoomAbout(percent, QRectF(viewport()->rect()).center());
}

void ReportView::zoomAbout(double percent, const QPointF& anchor) {
    zoom = Zoom::Free;
    layOut(anchor, percent / 100 * logicalDpiX() / 72);
}

void ReportView::search(const QString& text) {
    searchedText = text;
    found = findAll(shownPages, text);
    const TextPlace here{currentPage(), -1, 0};
    const auto next =
        std::find_if(found.begin(), found.end(), [&](const TextRange& range) { return range.from > here; });
    current = found.isEmpty() ? -1 : next == found.end() ? 0 : int(next - found.begin());
    if (current >= 0)
        reveal(found[current]);
    viewport()->update();
}

void ReportView::goToFound(int step) {
    if (found.isEmpty())
        return;
    const int count = int(found.size());
    current = ((current + step) % count + count) % count;
    reveal(found[current]);
    viewport()->update();
}

/// Scrolls a place into view, and does nothing if it already is.
void ReportView::reveal(const TextRange& range) {
    const auto places =
        placesOf(shownPages[range.from.page].texts[range.from.text], range.from.letter, range.to);
    if (places.isEmpty())
        return;
    const QRectF place = places.first();
    const double top = gap + pageHeight() * range.from.page + place.top() * shownScale;
    const double shown = verticalScrollBar()->value();
    if (top < shown || top + place.height() * shownScale > shown + viewport()->height())
        verticalScrollBar()->setValue(int(top - viewport()->height() / 3.0));
    const double shownLeft = horizontalScrollBar()->value();
    const double start = left(range.from.page) + shownLeft + place.left() * shownScale;
    if (start < shownLeft || start + place.width() * shownScale > shownLeft + viewport()->width())
        horizontalScrollBar()->setValue(int(start - viewport()->width() / 3.0));
}

QString ReportView::selectedText() const {
    if (selectionStart == selectionEnd)
        return {};
    return textBetween(shownPages, std::min(selectionStart, selectionEnd),
                       std::max(selectionStart, selectionEnd));
}

void ReportView::selectAll() {
    if (shownPages.isEmpty() || shownPages.last().texts.isEmpty())
        return;
    selectionStart = {0, 0, 0};
    selectionEnd = {int(shownPages.size()) - 1, int(shownPages.last().texts.size()) - 1,
                    int(shownPages.last().texts.last().text.size())};
    viewport()->update();
}

void ReportView::paintEvent(QPaintEvent*) {
    QPainter painter(viewport());
    painter.fillRect(viewport()->rect(), palette().brush(QPalette::Mid));
    const int first = std::max(0, int((verticalScrollBar()->value() - gap) / pageHeight()));
    for (int i = first; i < shownPages.size(); ++i) {
        const double top = gap + pageHeight() * i - verticalScrollBar()->value();
        if (top > viewport()->height())
            break;
        const QRectF sheet(QPointF(left(i), top), shownPages[i].size * shownScale);
        painter.fillRect(sheet.translated(2, 2), QColor(0, 0, 0, 40));
        painter.fillRect(sheet, Qt::white);
        painter.save();
        painter.setClipRect(sheet);
        painter.translate(sheet.topLeft());
        painter.scale(shownScale, shownScale);
        paintPage(painter, shownPages[i]);
        paintMarks(painter, i);
        painter.restore();
    }
}

/// Painted over the page with a multiplying brush: letters stay black, and marks show on filled headings too.
void ReportView::paintMarks(QPainter& painter, int page) const {
    painter.setCompositionMode(QPainter::CompositionMode_Multiply);
    const auto& texts = shownPages[page].texts;
    const auto mark = [&](int text, int from, int to, const QColor& color) {
        for (const QRectF& place : placesOf(texts[text], from, to))
            painter.fillRect(place, color);
    };
    const auto before = [](const TextRange& range, int number) { return range.from.page < number; };
    for (auto one = std::lower_bound(found.begin(), found.end(), page, before);
         one != found.end() && one->from.page == page; ++one)
        mark(one->from.text, one->from.letter, one->to,
             one - found.begin() == current ? currentColor : foundColor);
    const auto [start, end] = std::minmax(selectionStart, selectionEnd);
    if (start == end || page < start.page || page > end.page)
        return;
    const int last = page == end.page ? end.text : int(texts.size()) - 1;
    for (int i = page == start.page ? std::max(0, start.text) : 0; i <= last; ++i)
        mark(i, page == start.page && i == start.text ? start.letter : 0,
             page == end.page && i == end.text ? end.letter : int(texts[i].text.size()), selectionColor);
}

/// Anchors at the top: the centre of an enlarged window is not what was in view before.
void ReportView::resizeEvent(QResizeEvent*) {
    const QScopedValueRollback resize(resizing, true);
    layOut(QPointF(viewport()->width() / 2.0, 0), shownScale);
}

void ReportView::wheelEvent(QWheelEvent* event) {
    if (!(event->modifiers() & Qt::ControlModifier))
        return QAbstractScrollArea::wheelEvent(event);
    constexpr double notch = 120; // per wheel step; a touch pad turns by less
    zoomAbout(percent() * std::pow(wheelStep, event->angleDelta().y() / notch), event->position());
}

bool ReportView::event(QEvent* event) {
    // While the pages have the focus, About's shortcut selects all here.
    if (event->type() == QEvent::ShortcutOverride &&
        static_cast<QKeyEvent*>(event)->matches(QKeySequence::SelectAll))
        event->accept();
    return QAbstractScrollArea::event(event);
}

void ReportView::keyPressEvent(QKeyEvent* event) {
    using Action = QAbstractSlider::SliderAction;
    if (event->matches(QKeySequence::Copy)) {
        if (const QString text = selectedText(); !text.isEmpty())
            Dialogs::current().copy(text);
        return;
    }
    const bool needsAll = event->matches(QKeySequence::SelectAll) || event->key() == Qt::Key_End;
    if (needsAll && !makeWhole())
        return;
    if (event->matches(QKeySequence::SelectAll))
        return selectAll();
    const bool turns = event->modifiers() & Qt::ControlModifier;
    switch (event->key()) {
    case Qt::Key_Home:
        return turns ? goTo(0) : verticalScrollBar()->triggerAction(Action::SliderToMinimum);
    case Qt::Key_End:
        return turns ? goTo(int(shownPages.size()) - 1)
                     : verticalScrollBar()->triggerAction(Action::SliderToMaximum);
    case Qt::Key_PageDown:
        return turns ? goTo(currentPage() + 1)
                     : verticalScrollBar()->triggerAction(Action::SliderPageStepAdd);
    case Qt::Key_PageUp:
        return turns ? goTo(currentPage() - 1)
                     : verticalScrollBar()->triggerAction(Action::SliderPageStepSub);
    default:
        QAbstractScrollArea::keyPressEvent(event);
    }
}

void ReportView::mousePressEvent(QMouseEvent* event) {
    if (shownPages.isEmpty() || (event->button() != Qt::LeftButton && event->button() != Qt::MiddleButton))
        return;
    dragged = event->pos();
    const auto [page, point] = onPage(event->position());
    if (event->button() == Qt::LeftButton && isOnText(shownPages[page], point)) {
        drag = Drag::Selection;
        selectionStart = selectionEnd = placeAt(shownPages, page, point);
    } else {
        drag = Drag::Hand;
        selectionStart = selectionEnd = {};
        viewport()->setCursor(Qt::ClosedHandCursor);
    }
    viewport()->update();
}

void ReportView::mouseMoveEvent(QMouseEvent* event) {
    if (shownPages.isEmpty())
        return;
    const auto [page, point] = onPage(event->position());
    if (drag == Drag::Hand) {
        const QPoint moved = event->pos() - dragged;
        dragged = event->pos();
        horizontalScrollBar()->setValue(horizontalScrollBar()->value() - moved.x());
        verticalScrollBar()->setValue(verticalScrollBar()->value() - moved.y());
    } else if (drag == Drag::Selection) {
        selectionEnd = placeAt(shownPages, page, point);
        viewport()->update();
    } else {
        viewport()->setCursor(isOnText(shownPages[page], point) ? Qt::IBeamCursor : Qt::OpenHandCursor);
    }
}

void ReportView::mouseReleaseEvent(QMouseEvent*) {
    drag = Drag::None;
    viewport()->setCursor(Qt::OpenHandCursor);
}

void ReportView::scrollContentsBy(int, int) {
    viewport()->update();
    changed();
}
