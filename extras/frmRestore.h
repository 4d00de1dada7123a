#pragma once

#include "core/shell/Screen.h"
#include "core/store/Backup.h"
#include "core/store/JobCopies.h"
#include "ui_frmRestore.h"

/// Looks into the copies of the user's data, or into the file of a job, and brings back what the user
/// chooses. It also shows what the check at the start has found.
class frmRestore : public Screen, private Ui::frmRestore {
  public:
    frmRestore();
    bool loadsAfresh() const override { return true; }
    bool growsWithWindow() const override { return true; }
    bool closesOnEscape() const override { return true; }
    bool leavesStatus() const override { return true; } // which tells what was restored
    Subject subject() const override { return Subject::None; }
    QWidget* firstField() const override;

    /// Shows a job's file in the place of the copies.
    void LookIntoFile(const QString& path);

  private:
    void Load() override;
    void ShowChanges() override {}
    void FillCopies();
    void CountCopies();
    void ShowFindings();
    void LookInto(const QString& path, JobCopies::Origin origin);
    void FillJobs();
    void FillTanks();
    void RestoreJobs();
    void RestoreAll();
    void GiveHeadersBack();
    QStringList tickedJobs() const;
    bool isImport() const { return source && source->origin() == JobCopies::Origin::Foreign; }

    QList<Backup::Copy> copies;
    int counted = 0; // of the copies whose jobs and tanks show
    std::optional<JobCopies::Source> source;
    std::vector<JobCopies::Job> jobs;
};
