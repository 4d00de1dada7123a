#pragma once

#include "core/Screen.h"
#include "ui_frmPKGSelect.h"

/// Chooses, saves and shows a glycol make-up package; nothing is sized.
class frmPKGSelect : public Screen, private Ui::frmPKGSelect {
  public:
    frmPKGSelect();

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    void Load() override;
    bool QueryUnload() override;
    void SelectFamily(const QString& packageClass, const QString& drawing);
    void FillListView(const QString& packageClass);
    void SelectModel();
    void SaveRecord();
    void AddMore();

    bool Dirty = false;
    QString familyDrawing;
};
