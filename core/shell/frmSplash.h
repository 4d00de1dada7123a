#pragma once

#include "core/shell/Screen.h"
#include "ui_frmSplash.h"

#include <QTimer>

/// The first screen: opens the user database, then the main window. Escape exits the program; Return
/// tries again after a start that could not go on.
class frmSplash : public Screen, private Ui::frmSplash {
  public:
    frmSplash();
    bool isTopLevel() const override { return true; }
    Subject subject() const override { return Subject::None; }
    /// In milliseconds; 0 stops the timer.
    void setTimerInterval(int interval);
    /// Goes on with the start, if data that were refused had stopped it: the user has shown others.
    void goOnAfterRefusal();

  protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void Load() override;
    void timer1Elapsed();

    QTimer Timer1{this};
    bool refusedData = false;
    bool opening = false; // whether the data are being opened
    int lockedTicks = 0;  // ticks that found the data locked
};
