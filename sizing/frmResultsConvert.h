#pragma once

#include "core/Screen.h"
#include "ui_frmResultsConvert.h"

/// The bladder tank that replaces a plain steel tank.
class frmResultsConvert : public Screen, private Ui::frmResultsConvert {
  public:
    frmResultsConvert();

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    void Load() override;
    void Activate() override;
    bool QueryUnload() override;
    void ShowTankLine(const QString& tankID);
    void ShowModel();
    void Leave();
};
