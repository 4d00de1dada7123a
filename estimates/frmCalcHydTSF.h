#pragma once

#include "estimates/Estimator.h"
#include "ui_frmCalcHydTSF.h"

/// Works out the drawdown of a hydropneumatic tank: what its pump delivers in one run.
class frmCalcHydTSF : public Estimator, private Ui::frmCalcHydTSF {
  public:
    frmCalcHydTSF();
    QWidget* firstField() const override { return PumpCapacity; }

  private:
    std::optional<QString> Calculate() override;
};
