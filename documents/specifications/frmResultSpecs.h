#pragma once

#include "core/shell/Screen.h"
#include "documents/specifications/Placeholders.h"
#include "ui_frmResultSpecs.h"

/// The specification of the current tank, with the job's own numbers.
class frmResultSpecs : public Screen, private Ui::frmResultSpecs {
  public:
    frmResultSpecs();
    bool loadsAfresh() const override { return true; }
    /// Closing the screen asks about a copied text.
    bool hasEntries() const override { return Copied || Screen::hasEntries(); }
    bool growsWithWindow() const override { return true; }
    bool closesOnEscape() const override { return true; }
    bool leavesStatus() const override { return true; }

  private:
    void Load() override;
    bool QueryUnload() override;

    bool Copied = false;
};
