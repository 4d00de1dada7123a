#pragma once

#include "core/shell/Screen.h"
#include "core/store/JobHeader.h"
#include "ui_frmJobHeader.h"

/// Creates a job or edits its header: ID, description, engineer, contractor and notes.
class frmJobHeader : public Screen, private Ui::frmJobHeader {
  public:
    frmJobHeader();
    Subject subject() const override { return Subject::Job; }
    bool growsWithWindow() const override { return true; }

  private:
    void Load() override;
    void Deactivate() override;
    bool QueryUnload() override;
    QString jobID() const;
    void showStored(const JobHeader& job);
    void showDefaults();
    bool validateJobID();
    bool refuseJobID(const QString& title, const QString& text);
    bool jobIDIsFree();
    void offerDefaults();
    bool validateName(QLineEdit* field, const QString& table, const QString& question);
    bool SaveRecord();
    void Next();
    void Cancel();

    std::optional<JobHeader> asRead; // nothing for a new job
    bool Dirty = false;
};
