#pragma once

#include "documents/submittals/FinishedTankScreen.h"
#include "ui_frmResultSHK.h"

/// A finished shock arrestor tank: the model, the computed figures, the conditions and the drawing.
class frmResultSHK : public FinishedTankScreen, private Ui::frmResultSHK {
  public:
    frmResultSHK();

  private:
    void Load() override;
    bool QueryUnload() override;
    void showTankLine(const TankLine& tank) override;
    void showModel(const Model& model) override;
    void addFacts(SizingNotes::Facts& facts, const TankLine& tank) const override;
};
