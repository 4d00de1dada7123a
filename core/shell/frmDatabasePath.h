#pragma once

#include "core/shell/Screen.h"
#include "ui_frmDatabasePath.h"

/// Asks for the folder of the two databases.
class frmDatabasePath : public Screen, private Ui::frmDatabasePath {
  public:
    frmDatabasePath();
    bool isTopLevel() const override { return true; }
    Subject subject() const override { return Subject::None; }

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void Load() override;
    bool QueryUnload() override;
    bool storePath();
};
