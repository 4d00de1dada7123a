#pragma once

#include "core/shell/Screen.h"
#include "jobs/JobSearch.h"
#include "ui_frmjobsearchdialog.h"

/// Finds a job by up to four criteria and opens it for editing or deletion.
class frmjobsearchdialog : public Screen, private Ui::frmjobsearchdialog {
  public:
    frmjobsearchdialog();
    Subject subject() const override { return Subject::None; }
    bool followsData() const override { return true; }
    /// The search runs again on opening; the criteria stay.
    bool hasEntries() const override { return false; }
    void showChanges() override;
    bool growsWithWindow() const override { return true; }

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void Load() override;
    QWidget* firstField() const override;
    bool QueryUnload() override;
    JobSearch::Criteria enteredCriteria() const;
    void listFound(const QString& query);
    void FillResultsBox();
    void SearchFinished();
    void prepareCalendar();
    void showCalendar(const QLineEdit* box);
    void takeDate(const QDate& date);
    bool validateDate(QLineEdit* box);

    QString listedQuery; // empty while nothing is listed
};
