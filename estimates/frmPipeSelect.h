#pragma once

#include "core/shell/Screen.h"
#include "ui_frmPipeSelect.h"

/// Chooses a pipe from the catalogue and writes its U.S. key into the screen that its Tag names.
class frmPipeSelect : public Screen, private Ui::frmPipeSelect {
  public:
    frmPipeSelect();
    Subject subject() const override { return Subject::None; }
    bool closesOnEscape() const override { return true; }

  private:
    void Load() override;
    void Activate() override;
    QWidget* firstField() const override;
    void keyPressEvent(QKeyEvent* event) override;
    QString presentKey() const;
    void preselect();
    void fillSizes();
    QString selectedKey() const;
    void confirm();
    QString preselectedFor; // the screen that asked when a pipe was last chosen for the user
};
