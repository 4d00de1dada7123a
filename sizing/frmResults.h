#pragma once

#include "documents/ResultScreen.h"
#include "ui_frmResults.h"

/// A finished tank line: the model, what was required, the conditions, dimensions and the drawing.
class frmResults : public ResultScreen, private Ui::frmResults {
  public:
    frmResults();

  private:
    void Load() override;
    void Activate() override;
    void Deactivate() override;
    bool QueryUnload() override;
    void ShowTankLine();
    void ShowModel();
};
