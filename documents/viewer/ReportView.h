#pragma once

#include "documents/viewer/TextPlaces.h"

#include <QAbstractScrollArea>

#include <functional>

/// Shows the pages of a report one below the other. Only the pages in view are painted. A hand drags the
/// pages; a drag that starts on a text selects.
class ReportView : public QAbstractScrollArea {
  public:
    explicit ReportView(QWidget* parent = nullptr);

    /// Replaces the pages and begins at the first; selection and search are dropped.
    void setPages(const Pages& newPages);
    /// Shows more pages behind those that are there, and what these say of them. The user stays where they
    /// are.
    void setMorePages(const Pages& newPages);
    const Pages& pages() const { return shownPages; }

    /// The page that fills most of the window, counted from 0.
    int currentPage() const;
    /// Shows a page from its top; the nearest page if there is none of that number.
    void goTo(int page);
    /// Scrolls to the row of a text.
    void goTo(const TextPlace& place);

    enum class Zoom { Free, PageWidth, WholePage };
    /// Fits the pages to the window now and whenever its size changes; Free keeps the present scale.
    void setZoom(Zoom newZoom);
    /// Sets the zoom in percent of the size on paper; the centre of the window stays in place.
    void setPercent(double percent);
    double percent() const;
    /// Zooms by a factor.
    void zoomBy(double factor) { setPercent(percent() * factor); }

    /// Marks every occurrence of a text and goes to the first one at or after the current page.
    void search(const QString& text);
    const QString& searched() const { return searchedText; }
    /// Goes to the next or the previous occurrence, and wraps around.
    void goToFound(int step);
    int foundCount() const { return int(found.size()); }
    /// The number of the current occurrence, from 1; 0 when there is none.
    int foundNumber() const { return current + 1; }

    /// The selected text of the pages; empty if nothing is selected.
    QString selectedText() const;
    void forgetSelection() { selectionStart = selectionEnd = {}; }
    /// Selects the text of all pages.
    void selectAll();

    /// Called when the view scrolls or zooms.
    std::function<void()> changed = [] {};
    /// Whether it does so for a new size of its own.
    bool isResizing() const { return resizing; }
    /// Called for what needs all pages, which may still be missing; false if it cannot have them.
    std::function<bool()> makeWhole = [] { return true; };

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
    void takePages(const Pages& newPages);
    double pageHeight() const;   // with the gap below it, in screen units
    double left() const;         // of the widest page, in the window
    double left(int page) const; // the others are centred above and below that
    /// Turns a point of the window into a page and a point on it.
    std::pair<int, QPointF> onPage(const QPointF& point) const;
    void layOut(const QPointF& anchor, double scale);
    void zoomAbout(double percent, const QPointF& anchor);
    void reveal(const TextRange& range);
    void paintMarks(QPainter& painter, int page) const;

    Pages shownPages;
    QSizeF paper = Page().size; // room for any of the pages
    Zoom zoom = Zoom::PageWidth;
    double shownScale = 1; // screen units per point
    bool resizing = false;
    QString searchedText;
    QList<TextRange> found;
    int current = -1; // index into found
    TextPlace selectionStart;
    TextPlace selectionEnd;
    enum class Drag { None, Hand, Selection } drag = Drag::None;
    QPoint dragged; // where the pointer was
};
