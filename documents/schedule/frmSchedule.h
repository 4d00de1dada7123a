#pragma once

#include "core/shell/Lists.h"
#include "documents/submittals/ResultScreen.h"
#include "ui_frmSchedule.h"

/// Lists every unit of the job's tanks, and prints and previews them as the schedule.
class frmSchedule : public ResultScreen, private Ui::frmSchedule {
  public:
    frmSchedule();
    Subject subject() const override { return Subject::Job; }
    bool loadsAfresh() const override { return true; }
    bool growsWithWindow() const override { return true; }
    bool closesOnEscape() const override { return true; }
    QString reportName() const override { return "rptSchedule"; }

  private:
    void Load() override;
    /// The work table is rebuilt only on opening and for the report.
    void showChanges() override { FillListView(); }
    QWidget* firstField() const override { return lvOptions; }
    void FillListView();
    void deleteTank();
};
