#pragma once

#include "core/shell/Screen.h"
#include "ui_frmDelete.h"

/// Deletes a job or some of its tank lines immediately.
class frmDelete : public Screen, private Ui::frmDelete {
  public:
    frmDelete();
    Subject subject() const override { return Subject::Job; }
    bool loadsAfresh() const override { return true; }
    /// Ticks survive a refill of the list.
    bool hasEntries() const override { return false; }
    bool growsWithWindow() const override { return true; }
    bool leavesStatus() const override { return true; }

  private:
    void Load() override;
    void showChoice();
    QWidget* firstField() const override { return lvOptions; }
    void FillListView();
    void DeleteRecords();
    void deleteTickedTanks();
};
