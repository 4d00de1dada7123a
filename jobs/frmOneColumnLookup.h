#pragma once

#include "core/shell/Screen.h"
#include "ui_frmOneColumnLookup.h"

/// Picks a name from a list and writes it into the box that its Tag identifies.
class frmOneColumnLookup : public Screen, private Ui::frmOneColumnLookup {
  public:
    frmOneColumnLookup();
    Subject subject() const override { return Subject::None; }
    bool closesOnEscape() const override { return true; }
    bool growsWithWindow() const override { return true; }

    /// Lists the names of a table.
    void listNames(const QString& table);

  private:
    void confirm();
};
