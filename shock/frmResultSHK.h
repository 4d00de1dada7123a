#pragma once

#include "core/Screen.h"
#include "ui_frmResultSHK.h"

/// A finished shock arrestor tank: the model, the computed figures, the conditions and the drawing.
class frmResultSHK : public Screen, private Ui::frmResultSHK {
  public:
    frmResultSHK();

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
