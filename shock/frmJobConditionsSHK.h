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
    bool checkStaticPressure();
    bool checkShockPressure();
    void refuse(const QString& text);
    bool SaveRecord(const ShockConditions& conditions, const ShockSizes& sizes);
    void goOn();
    void goBack();
    void giveUp();

    std::optional<TankLine> asRead; // nothing for a new line
};
