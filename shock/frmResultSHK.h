#pragma once

#include "documents/ResultScreen.h"
#include "ui_frmResultSHK.h"

/// A finished shock arrestor tank: the model, the computed figures, the conditions and the drawing.
class frmResultSHK : public ResultScreen, private Ui::frmResultSHK {
  public:
    frmResultSHK();

  private:
    void Load() override;
    void Activate() override;
    void Deactivate() override;
    bool QueryUnload() override;
    void ShowTankLine();
    void ShowModel();
};
