#pragma once

#include "core/shell/WebPages.h"
#include "ui_frmHelp.h"

class PageView;

/// The help, in a window of its own beside the program. Its addresses are topics: the number of a help
/// context or a screen's name.
class frmHelp : public PageScreen, private Ui::frmHelp {
  public:
    frmHelp();
    void Start() override;
    bool isTopLevel() const override { return true; }
    bool growsWithWindow() const override { return true; }
    bool closesOnEscape() const override { return true; }

  private:
    void goTo(const QString& topic);

    PageView* view;
    bool topicShown = false;
};
