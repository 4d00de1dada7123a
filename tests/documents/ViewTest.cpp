#include "documents/viewer/ReportView.h"

#include <gtest/gtest.h>

#include <QScrollBar>
#include <QWheelEvent>
#include <QtTest/QTest>

namespace {

PageText textAt(double x, double y, const QString& words) {
    PageText text;
    text.place = QRectF(x, y, 200, 12);
    text.text = words;
    return text;
}

class View : public testing::Test {
  protected:
    View() {
        Page page;
        page.texts = {textAt(72, 72, "First words"),
                      textAt(72, 100, "Second" + QString(PageText::BlankBreak) + "words")};
        view.resize(400, 300);
        view.show();
        view.setPages(Pages(5, page));
        view.setPercent(100);
        view.horizontalScrollBar()->setValue(0);
        view.verticalScrollBar()->setValue(0);
    }

    /// The position in the window, at 100 %, of a point on the first page.
    static QPoint inWindow(double x, double y) { return {14 + int(x * 96 / 72), 14 + int(y * 96 / 72)}; }

    void drag(const QPoint& from, const QPoint& to) {
        QTest::mousePress(view.viewport(), Qt::LeftButton, {}, from);
        QTest::mouseMove(view.viewport(), to);
        QTest::mouseRelease(view.viewport(), Qt::LeftButton, {}, to);
    }

    ReportView view;
};

} // namespace

TEST_F(View, DragsTheHandAndSelectsText) {
    drag(inWindow(73, 78), inWindow(300, 120));
    EXPECT_EQ(view.selectedText(), "First words\nSecond words");
    drag(inWindow(200, 30), inWindow(150, 10));
    EXPECT_EQ(view.selectedText(), "") << "a press beside the texts lets go of them";
    EXPECT_GT(view.verticalScrollBar()->value(), 0);
    EXPECT_GT(view.horizontalScrollBar()->value(), 0);
}

TEST_F(View, ZoomsAboutThePointer) {
    view.goTo(2);
    const double before = view.verticalScrollBar()->value() + 50.0;
    QWheelEvent wheel({10, 50}, view.mapToGlobal(QPointF(10, 50)), {}, {0, 120}, {}, Qt::ControlModifier,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(view.viewport(), &wheel);
    EXPECT_NEAR(view.percent(), 115, .1);
    const double pageBefore = 792.0 * 96 / 72 + 14;
    const double pageAfter = 792.0 * 96 / 72 * 1.15 + 14;
    EXPECT_NEAR((view.verticalScrollBar()->value() + 50.0 - 14) / pageAfter, (before - 14) / pageBefore,
                .002);
}

TEST_F(View, FindsAcrossLineBreaks) {
    view.search("second WORDS");
    EXPECT_EQ(view.foundCount(), 5);
    EXPECT_EQ(view.foundNumber(), 1);
    view.goToFound(-1);
    EXPECT_EQ(view.foundNumber(), 5);
    EXPECT_EQ(view.currentPage(), 4);
    view.search("third");
    EXPECT_EQ(view.foundCount(), 0);
}

TEST_F(View, ShowsAllOfAPageThatLiesAcrossThePaper) {
    Pages pages = view.pages();
    pages[1].size.transpose();
    pages[1].texts = {textAt(720, 72, "The last column")};
    view.setMorePages(pages);
    const double room = view.viewport()->width();
    EXPECT_EQ(view.horizontalScrollBar()->maximum(), 792 * 96. / 72 + 2 * 14 - room);
    view.search("last column");
    EXPECT_GT(view.horizontalScrollBar()->value(), 720 * 96. / 72 - room) << "its place comes into view";
    view.setZoom(ReportView::Zoom::PageWidth);
    EXPECT_NEAR(view.percent() * 96 / 72 / 100 * 792, room - 2 * 14, .01);
    // An upright page is in the middle, and is pressed where it is shown.
    view.setPercent(30);
    view.goTo(0);
    const double scale = .3 * 96 / 72;
    const double left = (room - 612 * scale) / 2;
    const auto at = [&](double x) { return QPointF(left + x * scale, 14 + 80 * scale).toPoint(); };
    drag(at(73), at(300));
    EXPECT_EQ(view.selectedText(), "First words");
}
