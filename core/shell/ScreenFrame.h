#pragma once

#include <QMdiSubWindow>

#include <functional>

class QMdiArea;

/// A screen's window inside the main window. It has the size that its screen wants, as far as there is room.
class ScreenFrame final : public QMdiSubWindow {
  public:
    /// What a screen gains from a larger window: it fills the main window, whatever that leaves of it; fills
    /// it and scrolls where there is too little room; may be enlarged; or keeps its size.
    enum class Growth { Fills, FillsOrScrolls, Grows, Keeps };

    /// Takes a screen into the main window's area, hidden. `closing` runs when the user closes the window,
    /// and tells whether it may.
    ScreenFrame(QWidget& shownScreen, QMdiArea& screenArea, Growth screenGrowth,
                std::function<bool()> closing);

    /// Gives the window its size and centres it.
    void fitAndCentre();
    /// Centres the window again, unless the user has moved it.
    void centreAgain();
    /// Puts the window into its state: filling the main window, or at its own size.
    void applyState();
    /// The room for the screen, in pixels.
    QSize room() const;

  protected:
    bool event(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    bool focusNextPrevChild(bool next) override;

  private:
    bool fills() const { return growth == Growth::Fills || growth == Growth::FillsOrScrolls; }
    QSize space() const;
    QSize leastSize() const;
    bool exceedsSpace();
    void adaptToSpace();
    void centre();

    QWidget& screen;
    QMdiArea& area;
    Growth growth;
    std::function<bool()> mayClose;
    QPoint centredAt;
    QSize whole;  // before the space made it smaller
    QSize fitted; // as it was made last
};
