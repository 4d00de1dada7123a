#include "setup/pages/frmDemo.h"

#include "core/base/Fault.h"
#include "setup/pages/PageViews.h"

#include <QFileInfo>

frmDemo::frmDemo() : PageScreen("frmDemo") {
    setupUi(this);
    prepare();
    brwWebBrowser = newPageView(PagePlugin::Web, pageFrame);
    brwWebBrowser->setObjectName("brwWebBrowser");
}

void frmDemo::Start() {
    procedure(".Load", [this] {
        if (StartingAddress.isEmpty())
            return;
        if (!QFileInfo::exists(StartingAddress))
            throw Fault(Fault::FileNotFound, "File not found: " + StartingAddress.toStdString());
        brwWebBrowser->go(QUrl::fromLocalFile(StartingAddress));
    });
}
