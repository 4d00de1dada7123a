#pragma once

#include "core/shell/Screen.h"
#include "extras/overview/JobLines.h"
#include "ui_frmJobOverview.h"

/// A job on one screen: its header, its tank lines with their state, and every way on from there.
class frmJobOverview : public Screen, private Ui::frmJobOverview {
  public:
    frmJobOverview();
    Subject subject() const override { return Subject::Job; }
    bool loadsAfresh() const override { return true; }
    bool hasEntries() const override { return false; }
    bool growsWithWindow() const override { return true; }
    bool closesOnEscape() const override { return true; }
    QWidget* firstField() const override { return lvTanks; }

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    void Load() override;
    bool QueryUnload() override;
    void showHeader();
    void fillTanks();
    void choose(const QString& tankID);
    const JobLine* chosen() const;
    int chosenPlace() const;
    void showChosen();
    void openFor(const JobLine& line, const QString& mode, const std::function<void()>& open);
    void onChosen(QAbstractButton* button, const QString& procedure,
                  const std::function<void(const JobLine&)>& handler);
    void actOn(const QString& tankID, const std::function<void(const JobLine&)>& handler);
    void openResults(const JobLine& line);
    void openInJob(const QString& screen);
    void copyTank(const JobLine& line);
    void deleteTank(const JobLine& line);
    void move(const JobLine& line, int by);
    void copyJob();

    std::vector<JobLine> lines;
};
