#pragma once

#include "core/Screen.h"
#include "ui_frmResults.h"

/// A finished tank line: the model, what was required, the conditions, dimensions and the drawing.
class frmResults : public Screen, private Ui::frmResults {
  public:
    frmResults();

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    void Load() override;
    void Activate() override;
    void Deactivate() override;
    bool QueryUnload() override;
    void ShowTankLine(const QString& tankID);
    void ShowModel();
    void Leave(const QString& nextScreen);
};
