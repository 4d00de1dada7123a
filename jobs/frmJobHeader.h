#pragma once

#include "core/shell/Screen.h"
#include "ui_frmJobHeader.h"

/// Creates a job or changes its header: ID, description, engineer, contractor and notes.
class frmJobHeader : public Screen, private Ui::frmJobHeader {
  public:
    frmJobHeader();

  private:
    void Load() override;
    void Deactivate() override;
    bool QueryUnload() override;
    bool ValidateJobID();
    bool ValidateName(QLineEdit* field, const QString& table, const QString& question);
    void SaveRecord();
    void Next();
    void Cancel();

    bool Dirty = false;
};
