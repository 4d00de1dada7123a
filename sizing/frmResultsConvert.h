#pragma once

#include "documents/submittals/FinishedTankScreen.h"
#include "ui_frmResultsConvert.h"

/// The bladder tank that replaces a plain steel tank.
class frmResultsConvert : public FinishedTankScreen, private Ui::frmResultsConvert {
  public:
    frmResultsConvert();

  private:
    void Load() override;
    void Activate() override;
    void Deactivate() override {} // deliberately leaves on what the activation enabled
    void showTankLine(const TankLine& tank) override;
    void showModel(const Model& model) override;
    void addFacts(SizingNotes::Facts& facts, const TankLine& tank) const override;
};
