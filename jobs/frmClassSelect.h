#pragma once

#include "core/shell/Screen.h"
#include "ui_frmClassSelect.h"

/// Gives a new tank line its application.
class frmClassSelect : public Screen, private Ui::frmClassSelect {
  public:
    frmClassSelect();

  private:
    void Load() override;
    bool QueryUnload() override;
    void Select(const QString& application, const QString& nextScreen);
    void Cancel();
};
