#pragma once

#include "estimates/MetricPad.h"
#include "ui_frmMetricSHK.h"

/// The metric pad of the shock conditions.
class frmMetricSHK : public MetricPad, private Ui::frmMetricSHK {
  public:
    frmMetricSHK();

  private:
    void Load() override;
    void ShowPipe(const QString& metricIndex);
    void Confirm();
};
