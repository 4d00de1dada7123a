#pragma once

#include "core/store/TankLine.h"
#include "documents/submittals/ResultScreen.h"
#include "ui_frmPKGSelect.h"

/// Chooses, saves and shows a glycol make-up package. There is no sizing.
class frmPKGSelect : public ResultScreen, private Ui::frmPKGSelect {
  public:
    frmPKGSelect();
    bool growsWithWindow() const override { return true; }
    bool hasEntries() const override { return Dirty; }
    QString nothingToPrint() const override;

  private:
    void Load() override;
    void showChanges() override;
    bool QueryUnload() override;
    QString modelText() const override { return txtModelNo->text(); }
    void selectFamily(const QString& packageClass, const QString& drawing);
    void FillListView(const QString& packageClass);
    void selectModel();
    void SaveRecord();

    std::optional<TankLine> asRead; // nothing for a new line
    bool Dirty = false;
    QString familyDrawing;
};
