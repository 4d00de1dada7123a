#pragma once

#include "core/shell/Screen.h"
#include "core/store/TankLine.h"
#include "shock/ShockSizes.h"
#include "ui_frmJobConditionsSHK.h"

/// The conditions of a shock arrestor tank. Its Next computes energies and required sizes.
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
    bool SaveRecord(const ShockConditions& conditions, const ShockSizes& sizes);
    void GoOn();
    void GoBack();
    void GiveUp();

    std::optional<TankLine> asRead; // nothing for a new line
    bool Dirty = false;
};
