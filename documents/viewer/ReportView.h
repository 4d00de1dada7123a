#pragma once

#include "documents/viewer/TextPlaces.h"

#include <QAbstractScrollArea>

#include <functional>

/// Shows the pages of a report one below the other. Only the pages in sight are painted. A hand drags the
/// pages, and a drag that begins on a text selects.
class ReportView : public QAbstractScrollArea {
  public:
    explicit ReportView(QWidget* parent = nullptr);

    void setPages(const Pages& newPages);
    const Pages& pages() const { return shownPages; }

    /// The page that takes most of the window, from 0.
    int currentPage() const;
    /// Shows a page from its top; the nearest page when that number does not exist.
    void goTo(int page);
    /// Shows the pages from the row of a text on.
    void goTo(const TextPlace& place);

    enum class Zoom { Free, PageWidth, WholePage };
    void setZoom(Zoom newZoom);
    /// Shows the pages in a part of their size on paper; what stands in the middle of the window stays there.
    void setPercent(double percent);
    double percent() const;
    /// Makes everything larger or smaller by a factor.
    void zoomBy(double factor) { setPercent(percent() * factor); }

    /// Marks all places that hold a text and goes to the first one from the page in sight on.
    void search(const QString& text);
    const QString& searched() const { return searchedText; }
    /// Goes to the next place, or the one before, from the last to the first and back.
    void goToFound(int step);
    int foundCount() const { return int(found.size()); }
    /// The place gone to, from 1; 0 when there is none.
    int foundNumber() const { return current + 1; }

    QString selectedText() const;
    void selectAll();

    /// Runs whenever another part of the pages comes into sight or their size changes.
    std::function<void()> changed = [] {};

  protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;

  private:
    QSizeF paper() const;
    double pageHeight() const; // with the gap below, in screen units
    double left() const;       // of the pages in the window
    /// A point of the window as page and point on it.
    std::pair<int, QPointF> onPage(const QPointF& point) const;
    void layOut(const QPointF& anchor, double scale);
    void zoomAbout(double percent, const QPointF& anchor);
    void reveal(const TextRange& range);
    void paintMarks(QPainter& painter, int page) const;

    Pages shownPages;
    Zoom zoom = Zoom::WholePage;
    double shownScale = 1; // screen units a point
    QString searchedText;
    QList<TextRange> found;
    int current = -1; // among found
    TextPlace selectionStart;
    TextPlace selectionEnd;
    enum class Drag { None, Hand, Selection } drag = Drag::None;
    QPoint dragged; // where the pointer was
};
