#pragma once

#include "documents/ResultScreen.h"
#include "ui_frmResultsConvert.h"

/// The bladder tank that replaces a plain steel tank.
class frmResultsConvert : public ResultScreen, private Ui::frmResultsConvert {
  public:
    frmResultsConvert();

  private:
    void Load() override;
    void Activate() override;
    bool QueryUnload() override;
    void ShowTankLine();
    void ShowModel();
};
