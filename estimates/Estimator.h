#pragma once

#include "core/base/Applications.h"
#include "core/shell/Screen.h"

#include <optional>

class QLineEdit;

/// A side calculator that computes a volume from its boxes and hands it to the job conditions. Its screens
/// share the buttons bttnMetric, bttnCalc, bttnCancel and bttnOK and the result box TotSysFluidCalc.
class Estimator : public Screen {
  public:
    using Screen::Screen;
    bool closesOnEscape() const override { return true; }
    /// An estimate serves all lines of a job, including one still to be added.
    Subject subject() const override { return Subject::Job; }
    bool goesAlong() const override { return true; }

    /// Opens the metric pad with the boxes that the screen needs; false when there is nothing to convert.
    bool OpenMetricForm();
    /// Sets the screen that receives the result; none when the estimator was opened on its own.
    void setTarget(const QString& screen);

  protected:
    /// Prepares the controls after setupUi: connects the toolbar, whose procedure name goes into error
    /// reports, makes every entry raise the dirty flag, and loads the picture of each label that has a sketch
    /// property.
    void prepareEstimator(const QString& toolbarProcedure);
    /// Checks for entry boxes when focus leaves them, and the button that looks up a pipe for a box.
    void checksNumber(QLineEdit* box);
    void checksPipe(QLineEdit* box);
    void findsPipe(QAbstractButton* button);

    bool QueryUnload() override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    /// The result as displayed; nothing when an empty entry silently ends the calculation.
    virtual std::optional<QString> Calculate() = 0;
    /// Selects the boxes of the metric pad.
    virtual QString metricTag() const { return name(); }
    /// Whether OK tells the user when there is no result yet.
    virtual bool asksForResult() const { return false; }
    void confirm();
    void noteChange();
    void drawSketches();

    QLineEdit* result = nullptr;
    QString target;     // the conditions from which it was opened
    bool Dirty = false; // an entry has changed since the last calculation
};

/// The name of the estimator of an application; empty for one without, such as shock arrestors.
QString estimatorOf(Application application);

/// Opens an estimator for the conditions that take its result, or on its own, without an OK button.
void openEstimator(const QString& screen, const QString& target = {});
