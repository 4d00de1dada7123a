#pragma once

#include "core/shell/Screen.h"
#include "ui_frmPackage.h"

/// What goes into the package of a job's documents, which it then shows.
class frmPackage : public Screen, private Ui::frmPackage {
  public:
    frmPackage();
    Subject subject() const override { return Subject::Job; }
    bool closesOnEscape() const override { return true; }
    QWidget* firstField() const override { return chkSubmittals; }

  private:
    void Load() override;
    void showChanges() override {}
    void make();
};

/// Registers the package of a job: its screen and command.
void registerPackage();
