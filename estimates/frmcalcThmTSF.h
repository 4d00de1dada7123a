#pragma once

#include "estimates/Estimator.h"
#include "ui_frmcalcThmTSF.h"

/// Estimates what a hot water system holds: the heater and its recirculation line.
class frmcalcThmTSF : public Estimator, private Ui::frmcalcThmTSF {
  public:
    frmcalcThmTSF();
    QWidget* firstField() const override { return WtrHtrVolume; }

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    std::optional<QString> Calculate() override;
};
