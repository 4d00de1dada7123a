#pragma once

#include "documents/submittals/FinishedTankScreen.h"
#include "ui_frmResults.h"

/// A finished tank line: the model, the requirements, the conditions, the dimensions and the drawing.
class frmResults : public FinishedTankScreen, private Ui::frmResults {
  public:
    frmResults();
    QWidget* firstField() const override { return bttnPreview; }

  private:
    void Load() override;
    void showTankLine(const TankLine& tank) override;
    void showModel(const Model& model) override;
    void addFacts(SizingNotes::Facts& facts, const TankLine& tank) const override;
};
