#pragma once

#include "core/shell/WebPages.h"
#include "ui_frmBrowser.h"

#include <QTimer>

class PageView;

/// The program's own browser, for systems without one.
class frmBrowser : public PageScreen, private Ui::frmBrowser {
  public:
    frmBrowser();
    void Start() override;
    bool growsWithWindow() const override { return true; }
    bool closesOnEscape() const override { return true; }

  private:
    void showProgress();
    void goTo(const QString& address);
    void loaded(const QUrl& address, const QString& title);

    PageView* brwWebBrowser;
    QTimer timTimer; // updates the title while a page loads
    bool busy = false;
    QString pageName;
};
