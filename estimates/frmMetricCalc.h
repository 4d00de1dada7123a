#pragma once

#include "estimates/MetricPad.h"
#include "ui_frmMetricCalc.h"

/// The metric pad of the estimators. Its Tag names the estimator and the method that it serves.
class frmMetricCalc : public MetricPad, private Ui::frmMetricCalc {
  public:
    frmMetricCalc();
    /// Opens the pad with the boxes of an estimator's method; false if the method has nothing to convert.
    static bool openFor(const QString& tag);

  private:
    void showBoxes();
    void confirm();
};
