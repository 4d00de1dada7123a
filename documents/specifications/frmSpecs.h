#pragma once

#include "core/shell/Screen.h"
#include "ui_frmSpecs.h"

/// The typical specification of every style of tank, with blanks for a job's own numbers.
class frmSpecs : public Screen, private Ui::frmSpecs {
  public:
    frmSpecs();
    bool growsWithWindow() const override { return true; }
    bool closesOnEscape() const override { return true; }
    Subject subject() const override { return Subject::None; }

  private:
    void Load() override;
    bool QueryUnload() override;
    void FillSpecsBox(const QString& key);

    bool Copied = false;
};
