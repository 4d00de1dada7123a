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
    void SaveRecord(const QString& TankID, double AtmPressure, double WaterVelocity, double KineticEnergy,
                    double TotalKineticEnergy, double RequiredVolume, double RequiredAcceptance);
    void GoOn();
    void GoBack();
    void GiveUp();

    bool Dirty = false;
};
