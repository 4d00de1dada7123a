#pragma once

#include "core/shell/Screen.h"
#include "ui_frmSplash.h"

#include <QTimer>

/// The first screen: opens the user database and brings up the main window.
class frmSplash : public Screen, private Ui::frmSplash {
  public:
    frmSplash();
    bool isTopLevel() const override { return true; }
    /// In milliseconds; 0 stops the timer.
    void setTimerInterval(int interval);

  private:
    void Load() override;
    void Timer1_Timer();

    QTimer Timer1;
};
