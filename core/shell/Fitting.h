#pragma once

class QLineEdit;
class QScrollArea;
class QTreeWidget;
class QWidget;

/// Fits boxes to their texts, and a screen to the space available.
namespace Fitting {

/// Gives a box that only shows room for the text that it has now; long texts such as names are left to
/// scroll.
void makeRoomForText(QLineEdit& box);
/// Widens a list to the width of its columns, in pixels, as far as an ordinary display allows. A list in a
/// screen that scrolls stays narrow and scrolls by itself.
void makeRoomForColumns(QTreeWidget& list, int width);
/// Keeps a list narrow: its columns scroll in it.
void keepNarrow(QTreeWidget& list);
/// Boxes and lists that are given a width in pixels get it for the letters in use.
void scaleWidths(const QWidget& screen);
/// Reduces the space between the rows.
void tighten(const QWidget& screen);
/// Shows only the icons of a screen's tool bar if its captions need more than a width in pixels.
void fitToolBar(const QWidget& screen, int width);
/// Makes the middle of a screen scroll, so that it can be smaller than its content; tool bar and buttons stay
/// in sight. Its lists get narrower than a width in pixels, and scroll by themselves.
void letScroll(QWidget& screen, int width);
/// Scrolls an area so that the widget with the focus, or the current row of a list, stays in sight. A press
/// with the mouse scrolls nothing.
void keepFocusInSight(QScrollArea& area);

} // namespace Fitting
