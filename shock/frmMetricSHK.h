#pragma once

#include "estimates/MetricPad.h"
#include "ui_frmMetricSHK.h"

/// The metric pad of the shock conditions.
class frmMetricSHK : public MetricPad, private Ui::frmMetricSHK {
  public:
    frmMetricSHK();

  private:
    void Load() override;
    void showPipe(const QString& metricIndex);
    void confirm();
};
