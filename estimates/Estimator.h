#pragma once

#include "core/shell/Screen.h"

#include <optional>

class QLineEdit;

/// A side calculator: computes a volume from its boxes and hands it to the job conditions. Its screens share
/// the buttons bttnMetric, bttnCalc, bttnCancel and bttnOK and the result box TotSysFluidCalc.
class Estimator : public Screen {
  public:
    using Screen::Screen;
    bool closesOnEscape() const override { return true; }
    /// An estimate serves the lines of a job, one to come too.
    Subject subject() const override { return Subject::Job; }
    bool goesAlong() const override { return true; }

    /// Opens the metric pad with the boxes that the screen needs; false when it has nothing to convert.
    bool OpenMetricForm();
    /// Whether its result can be handed to the job conditions.
    void setHandsBack(bool handsBack);

  protected:
    /// Prepares the controls after setupUi: wires the toolbar, whose procedure names it in a report, lets
    /// every entry raise the dirty flag, and gives a label with a property sketch that picture.
    void prepareEstimator(const QString& toolbarProcedure);
    /// The checks of entry boxes when they are left, and the button that looks a pipe up for one.
    void checksNumber(QLineEdit* box);
    void checksPipe(QLineEdit* box);
    void findsPipe(QAbstractButton* button);

    bool QueryUnload() override;
    void changeEvent(QEvent* event) override;

  private:
    /// The result as it shows; nothing when an empty entry ends the calculation without a word.
    virtual std::optional<QString> Calculate() = 0;
    /// Names the boxes of the metric pad.
    virtual QString metricTag() const { return name(); }
    /// Whether OK without a result says so.
    virtual bool asksForResult() const { return false; }
    void Confirm();
    void drawSketches();

    QLineEdit* result = nullptr;
    bool serves = false; // it was opened by the conditions
    bool Dirty = false;  // an entry has changed since the last calculation
};

/// How an estimator is opened: with the job conditions to take its result, or on its own.
enum class EstimatorUse { ForConditions, FreeStanding };
/// Opens an estimator, whose OK is there only for the conditions.
void OpenEstimator(const QString& screen, EstimatorUse use);
