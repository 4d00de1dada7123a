#pragma once

#include "core/shell/Screen.h"
#include "ui_frmAbout.h"

/// Describes the program and its version, and opens the system information.
class frmAbout : public Screen, private Ui::frmAbout {
  public:
    frmAbout();
    bool closesOnEscape() const override { return true; }
    Subject subject() const override { return Subject::None; }

  private:
    static void StartSysInfo();
};
