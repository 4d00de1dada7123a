#pragma once

#include "documents/submittals/ResultScreen.h"
#include "ui_frmPKGSelect.h"

/// Chooses, saves and shows a glycol make-up package; nothing is sized.
class frmPKGSelect : public ResultScreen, private Ui::frmPKGSelect {
  public:
    frmPKGSelect();
    bool growsWithWindow() const override { return true; }

  private:
    void Load() override;
    bool QueryUnload() override;
    QString modelText() const override { return txtModelNo->text(); }
    void SelectFamily(const QString& packageClass, const QString& drawing);
    void FillListView(const QString& packageClass);
    void SelectModel();
    void SaveRecord();

    bool Dirty = false;
    QString familyDrawing;
};
