#pragma once

#include "ui_StartPage.h"

#include <QWidget>

/// What the empty frame shows: the tasks and the newest jobs. It is a background rather than a screen, so the
/// session does not change until something is chosen.
class StartPage : public QWidget, private Ui::StartPage {
  public:
    explicit StartPage(QWidget* parent);

  protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    void prepareTasks();
    void showJobs(bool any);
    void fillJobs();
    void drawMark();
};
