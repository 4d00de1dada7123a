#pragma once

#include "core/shell/Screen.h"
#include "ui_frmEngContMaster.h"

/// Maintains the names of engineers or contractors. Its Tag says which: "Engineers" or "Contractors".
class frmEngContMaster : public Screen, private Ui::frmEngContMaster {
  public:
    frmEngContMaster();
    Subject subject() const override { return Subject::None; }
    bool followsData() const override { return true; }
    void showChanges() override { FillListBox(); }
    bool growsWithWindow() const override { return true; }

    /// Switches to the list that a tag names.
    void Maintain(const QString& tag);

  private:
    void Load() override;
    QWidget* firstField() const override { return txtInput; }
    bool QueryUnload() override;
    QString SetTable() const;
    void FillListBox();
    void takeName();
    void NewRecord();
    void SaveRecord();
    void DeleteRecord();

    bool Dirty = false;
};
