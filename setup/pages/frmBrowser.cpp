#include "setup/pages/frmBrowser.h"

#include "setup/pages/PageViews.h"

#include <QLineEdit>

using namespace WebPages;

frmBrowser::frmBrowser() : PageScreen("frmBrowser") {
    setupUi(this);
    prepare();
    brwWebBrowser = newPageView(PagePlugin::Web, pageFrame);
    brwWebBrowser->setObjectName("brwWebBrowser");
    brwWebBrowser->started = [this] {
        busy = true;
        timTimer.start();
    };
    brwWebBrowser->finished = [this](const QUrl& address, const QString& title) { loaded(address, title); };
    constexpr int interval = 5; // milliseconds
    timTimer.setInterval(interval);
    connect(&timTimer, &QTimer::timeout, this, [this] { showProgress(); });

    on(Back, ".Back", [this] { brwWebBrowser->back(); });
    on(Forward, ".Forward", [this] { brwWebBrowser->forward(); });
    on(Refresh, ".Refresh", [this] { brwWebBrowser->reload(); });
    on(Home, ".Home", [this] { goTo(homePage()); });
    on(Search, ".Search", [this] { goTo(QStringLiteral(BRENNOVAL_SEARCH_PAGE)); });
    on(Stop, ".Stop", [this] {
        brwWebBrowser->stop();
        busy = false;
    });
    cboAddress->lineEdit()->setAccessibleName(cboAddress->accessibleName());
    connect(cboAddress->lineEdit(), &QLineEdit::returnPressed, this,
            [this] { trap(".cboAddress", [this] { goTo(cboAddress->currentText()); }); });
    connect(cboAddress, &QComboBox::activated, this,
            [this](int entry) { trap(".cboAddress", [this, entry] { goTo(cboAddress->itemText(entry)); }); });
}

void frmBrowser::Start() {
    if (StartingAddress.isEmpty())
        return;
    if (cboAddress->findText(StartingAddress) < 0)
        cboAddress->addItem(StartingAddress);
    goTo(StartingAddress);
}

void frmBrowser::goTo(const QString& address) {
    cboAddress->setEditText(address);
    brwWebBrowser->go(QUrl::fromUserInput(address));
}

void frmBrowser::showProgress() {
    if (!busy)
        timTimer.stop();
    setTitle(busy ? QStringLiteral("Working...") : pageName);
}

void frmBrowser::loaded(const QUrl& address, const QString& title) {
    busy = false;
    const QString text = address.toString();
    pageName = title.isEmpty() ? text : title;
    if (cboAddress->findText(text) < 0)
        cboAddress->insertItem(0, text);
    cboAddress->setEditText(text);
    showProgress();
}
