#pragma once

#include "core/shell/Screen.h"
#include "core/store/TankLine.h"
#include "ui_frmConvertSteel.h"

/// The plain steel tank to be replaced by a bladder tank. All conversions of all users belong to one reserved
/// job, "CONVERT".
class frmConvertSteel : public Screen, private Ui::frmConvertSteel {
  public:
    frmConvertSteel();

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    void Load() override;
    bool QueryUnload() override;
    void Next();
    bool SaveRecord();

    std::optional<TankLine> asRead; // nothing for a new line
};
