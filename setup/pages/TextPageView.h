#pragma once

#include "setup/pages/PageView.h"

class QTextBrowser;

/// Shows local pages without a web engine. For a web page it shows the address and explains why.
class TextPageView : public PageView {
  public:
    explicit TextPageView(QWidget* parent);

    void go(const QUrl& address) override;
    void back() override;
    void forward() override;
    void reload() override;
    void zoomBy(int steps) override;
    QString plainText() const override;

  private:
    void tell(const QUrl& address);

    QTextBrowser* text;
};
