#pragma once

#include "core/shell/WebPages.h"
#include "ui_frmDemo.h"

class PageView;

/// Shows the pages of the demonstration, which are local files.
class frmDemo : public PageScreen, private Ui::frmDemo {
  public:
    frmDemo();
    void Start() override;
    bool growsWithWindow() const override { return true; }
    bool closesOnEscape() const override { return true; }

  private:
    PageView* brwWebBrowser;
};
