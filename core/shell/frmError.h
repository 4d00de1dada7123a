#pragma once

#include "core/shell/Screen.h"
#include "ui_frmError.h"

/// Shows an error report, which the user can copy.
class frmError : public Screen, private Ui::frmError {
  public:
    frmError();
    bool isTopLevel() const override { return true; }
    bool closesOnEscape() const override { return true; }
    /// In the corner of the display, clear of the screen that the report is about.
    void Load() override { move(0, 0); }
    Subject subject() const override { return Subject::None; }
    void setReport(const QString& newReport);
    /// What failed, without the time.
    const QString& failure() const { return failed; }
    void setFailure(const QString& failure) { failed = failure; }

  protected:
    bool event(QEvent* event) override;

  private:
    QString report;
    QString failed;
};
