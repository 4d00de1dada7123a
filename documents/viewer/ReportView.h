#pragma once

#include "documents/report/Page.h"

#include <QAbstractScrollArea>

#include <functional>

/// Shows the pages of a report one below the other. Only the pages in sight are painted.
class ReportView : public QAbstractScrollArea {
  public:
    using QAbstractScrollArea::QAbstractScrollArea;

    void setPages(const Pages& newPages);
    const Pages& pages() const { return shownPages; }

    /// The page that takes most of the window, from 0.
    int currentPage() const;
    void goTo(int page);

    enum class Zoom { Free, PageWidth, WholePage };
    void setZoom(Zoom newZoom);
    /// Makes everything larger or smaller by a factor.
    void zoomBy(double factor);
    /// In screen units a point.
    double scale() const { return shownScale; }

    /// Marks the next place, from the one before, that holds a text; false when no page holds it.
    bool find(const QString& text);
    /// The place that find marked.
    struct Found {
        int page = -1;
        int text = -1;
    };
    Found found() const { return foundPlace; }

    /// Runs whenever another part of the pages comes into sight.
    std::function<void()> pageChanged = [] {};

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;

  private:
    QSizeF paper() const;
    double pageHeight() const; // with the gap below, in screen units
    void layOut();

    Pages shownPages;
    Zoom zoom = Zoom::WholePage;
    double shownScale = 1;
    Found foundPlace;
};
