#pragma once

#include "core/base/Applications.h"
#include "core/shell/Screen.h"
#include "ui_frmClassSelect.h"

/// Chooses the application of a new tank line.
class frmClassSelect : public Screen, private Ui::frmClassSelect {
  public:
    frmClassSelect();
    Subject subject() const override { return Subject::Job; }

  private:
    void Load() override;
    bool QueryUnload() override;
    QPushButton* buttonOf(Application application) const;
    void Select(Application application);
    void Cancel();
};
