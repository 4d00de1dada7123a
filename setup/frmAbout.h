#pragma once

#include "core/shell/Screen.h"
#include "ui_frmAbout.h"

/// What the program is, its version, and the way to the system's own information.
class frmAbout : public Screen, private Ui::frmAbout {
  public:
    frmAbout();
    bool closesOnEscape() const override { return true; }
    Subject subject() const override { return Subject::None; }

  private:
    static void StartSysInfo();
};
