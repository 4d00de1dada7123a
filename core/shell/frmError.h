#pragma once

#include "core/shell/Screen.h"
#include "ui_frmError.h"

/// Shows the report of a failure, which the user can copy.
class frmError : public Screen, private Ui::frmError {
  public:
    frmError();
    bool isTopLevel() const override { return true; }
    void setReport(const QString& report);
};
