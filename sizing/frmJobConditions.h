#pragma once

#include "core/shell/Screen.h"
#include "sizing/FluidLimits.h"
#include "ui_frmJobConditions.h"

/// The operating conditions of a tank line, for expansion, thermal and hydropneumatic tanks.
class frmJobConditions : public Screen, private Ui::frmJobConditions {
  public:
    frmJobConditions();

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    void Load() override;
    bool QueryUnload() override;
    void SelectFluid();
    void ShowLimits();
    void AdaptToApplication();
    FluidLimits LimitsInForce() const;
    bool CheckTemperature(QLineEdit* box);
    bool CheckFields();
    void SaveRecord();
    void Next();
    void Previous();
    void Cancel();

    FluidLimits limits = fluidLimits[0]; // °F, of the selected fluid
};
