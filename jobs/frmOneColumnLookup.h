#pragma once

#include "core/shell/Screen.h"
#include "ui_frmOneColumnLookup.h"

/// Picks a name from a list and writes it into the box that its Tag stands for.
class frmOneColumnLookup : public Screen, private Ui::frmOneColumnLookup {
  public:
    frmOneColumnLookup();

    /// Lists the names of a table.
    void List(const QString& table);

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void Confirm();
};
