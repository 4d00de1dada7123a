#pragma once

#include "core/shell/Screen.h"
#include "ui_frmDelete.h"

/// Deletes a job, or some of its tank lines, at once and for good.
class frmDelete : public Screen, private Ui::frmDelete {
  public:
    frmDelete();
    Subject subject() const override { return Subject::Job; }
    bool loadsAfresh() const override { return true; }
    /// Ticks are kept when the list is filled anew.
    bool hasEntries() const override { return false; }
    bool growsWithWindow() const override { return true; }
    bool leavesStatus() const override { return true; }

  private:
    void Load() override;
    QWidget* firstField() const override { return lvOptions; }
    void FillListView();
    void DeleteRecords();
    void DeleteTickedTanks();
};
