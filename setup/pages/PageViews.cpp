#include "setup/pages/PageViews.h"

#include "core/base/Program.h"
#include "core/shell/Dialogs.h"
#include "core/shell/SystemPrograms.h"
#include "setup/pages/TextPageView.h"

#include <QVBoxLayout>

namespace {

PageView* fromPlugin(PagePlugin plugin, QWidget* parent) {
    // The web engine shows nothing without its sandbox, which it does not get for an administrator.
    if (plugin == PagePlugin::Web && SystemPrograms::userIsAdministrator())
        return nullptr;
    const QString name = plugin == PagePlugin::Web ? "brennoval-web" : "brennoval-help";
    const auto create = reinterpret_cast<PageViewFactory>(Program::pluginFunction(name, "createPageView"));
    return create ? create(Program::fullProgramVersion().toUtf8().constData(), parent) : nullptr;
}

} // namespace

PageView* newPageView(PagePlugin plugin, QWidget* parent) {
    PageView* view = fromPlugin(plugin, parent);
    if (!view)
        view = new TextPageView(parent);
    auto* layout = new QVBoxLayout(parent);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(view);
    view->leave = [](const QUrl& address) { Dialogs::current().openInBrowser(address); };
    return view;
}
