#pragma once

#include "core/shell/Screen.h"
#include "core/store/Backup.h"
#include "core/store/JobCopies.h"
#include "ui_frmRestore.h"

/// Shows what is in the backups of the user's data, or in a job's file, and restores what the user selects.
/// Also shows the findings of the check at the start.
class frmRestore : public Screen, private Ui::frmRestore {
  public:
    frmRestore();
    bool loadsAfresh() const override { return true; }
    bool growsWithWindow() const override { return true; }
    bool closesOnEscape() const override { return true; }
    bool leavesStatus() const override { return true; } // it says what was restored
    Subject subject() const override { return Subject::None; }
    QWidget* firstField() const override;

    /// Shows a job's file instead of the backups.
    void lookIntoFile(const QString& path);

  private:
    void Load() override;
    void showChanges() override {}
    void fillCopies();
    void countCopies();
    void showFindings();
    void lookInto(const QString& path, JobCopies::Origin origin);
    void fillJobs();
    void fillTanks();
    void restoreJobs();
    void restoreAll();
    void giveHeadersBack();
    QStringList tickedJobs() const;
    bool isImport() const { return source && source->origin() == JobCopies::Origin::Foreign; }

    QList<Backup::Copy> copies;
    int counted = 0; // number of copies whose jobs and tanks are shown
    std::optional<JobCopies::Source> source;
    std::vector<JobCopies::Job> jobs;
};
