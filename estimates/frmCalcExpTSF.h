#pragma once

#include "estimates/Estimator.h"
#include "estimates/SystemFluid.h"
#include "ui_frmCalcExpTSF.h"

/// Estimates what a heating or cooling system holds by one of five methods.
class frmCalcExpTSF : public Estimator, private Ui::frmCalcExpTSF {
  public:
    frmCalcExpTSF();
    QWidget* firstField() const override { return BldgHeight; }

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    /// A method: its button, its frame and its arithmetic, in gallons.
    struct Method {
        QToolButton* button;
        QWidget* frame;
        std::optional<double> (frmCalcExpTSF::*calculate)();
    };

    const Method& pressedMethod() const;
    void SetEstimateFrames();
    std::optional<QString> Calculate() override;
    QString metricTag() const override;
    bool asksForResult() const override { return true; }

    std::optional<double> estimateByBuilding();
    std::optional<double> estimateByBoiler();
    std::optional<double> estimateByChiller();
    std::optional<double> estimateByComponents();
    std::optional<double> estimateByList();
    void addItems();
    void addItem(const QString& item, const QString& amount, const QString& unit);

    QList<Method> methods; // in the order of the toolbar
    /// Radiation and piping, which nothing ever sets: the two lists must be filled in but change nothing.
    int RadClass = 0;
    int PipeClass = 0;
};
