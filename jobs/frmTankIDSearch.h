#pragma once

#include "core/shell/Screen.h"
#include "ui_frmTankIDSearch.h"

/// Lists the tank lines of the job, to reopen one or add another.
class frmTankIDSearch : public Screen, private Ui::frmTankIDSearch {
  public:
    frmTankIDSearch();
    Subject subject() const override { return Subject::Job; }
    bool loadsAfresh() const override { return true; }
    bool growsWithWindow() const override { return true; }

  private:
    void Load() override;
    bool QueryUnload() override;
    QString selectedTank() const;
    void Next();
    void Cancel();
};
