#pragma once

#include "estimates/MetricPad.h"
#include "ui_frmMetric.h"

/// The metric pad of the job conditions. It writes into them no matter where it was opened.
class frmMetric : public MetricPad, private Ui::frmMetric {
  public:
    frmMetric();

  private:
    void Load() override;
    bool emptyStays() const override { return false; }
    bool leavesTarget(const QString& text) const override;
    void adaptToTarget() override;
    void confirm();
};
