#pragma once

#include "core/shell/Screen.h"
#include "shock/ShockSizes.h"
#include "ui_frmJobConditionsSHK.h"

/// The conditions of a shock arrestor tank; its Next computes energies and required sizes.
class frmJobConditionsSHK : public Screen, private Ui::frmJobConditionsSHK {
  public:
    frmJobConditionsSHK();

  private:
    void Load() override;
    bool QueryUnload() override;
    void SetPipeGraphic();
    bool CheckStaticPressure();
    bool CheckShockPressure();
    void Refuse(const QString& text);
    void SaveRecord(double AtmPressure, const ShockSizes& sizes);
    void GoOn();
    void GoBack();
    void GiveUp();

    bool Dirty = false;
};
