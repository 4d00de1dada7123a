#pragma once

#include "core/shell/WebPages.h"
#include "setup/pages/PageView.h"
#include "ui_frmHelp.h"

/// The help, in a window of its own next to the program's. Its addresses are topics: a help context number or
/// a screen's name.
class frmHelp : public PageScreen, private Ui::frmHelp {
  public:
    frmHelp();
    void Start() override;
    bool isTopLevel() const override { return true; }
    bool growsWithWindow() const override { return true; }
    bool closesOnEscape() const override { return true; }

  private:
    void goTo(const QString& topic);
    void print(PageView::Extent extent);
    void exportAll();

    PageView* view;
    bool topicShown = false;
};
