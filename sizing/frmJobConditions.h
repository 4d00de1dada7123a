#pragma once

#include "core/base/Applications.h"
#include "core/shell/Screen.h"
#include "core/store/TankLine.h"
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
    void showLimits();
    void adaptToApplication();
    void showStored(const TankLine& tank);
    void showDefaults();
    TemperatureLimits limitsInForce() const;
    bool checkTemperature(QLineEdit* box);
    bool checkFields();
    bool SaveRecord();
    void Estimate();
    void Next();
    void Previous();
    void Cancel();

    std::optional<TankLine> asRead; // nothing for a new line
};
