#pragma once

#include "core/shell/Screen.h"
#include "ui_frmFirstTime.h"

/// The getting-started screen: takes over prior data before it is shown, offers setup and demonstration, and
/// asks for the ZIP code. Every way of leaving it counts as Continue.
class frmFirstTime : public Screen, private Ui::frmFirstTime {
  public:
    frmFirstTime();
    Subject subject() const override { return Subject::None; }

  private:
    void Load() override;
    QWidget* firstField() const override { return cmdContinue; }
    bool QueryUnload() override;
    void DeleteFiles(const QString& kind);
    void storeTick();
    void Continue();
    void showRepresentative(const QString& zip);
    void LookRepInDb(const QString& zip, bool& found);
};
