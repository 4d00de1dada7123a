#include "core/shell/Status.h"

#include "core/base/Program.h"

#include <QLabel>
#include <QPointer>

using namespace Program;

namespace StatusBar {

namespace {
QPointer<QLabel>& statusPanel() {
    static QPointer<QLabel> panel;
    return panel;
}
} // namespace

void setStatusText(const QString& text) {
    if (statusPanel())
        statusPanel()->setText(text);
}

void SetStatusBarText() {
    setStatusText(QStringLiteral("Ordwick Company Brennoval Version ") + programVersion());
}

QString statusText() {
    return statusPanel() ? statusPanel()->text() : QString();
}

void setStatusPanel(QLabel* panel) {
    statusPanel() = panel;
}

} // namespace StatusBar
