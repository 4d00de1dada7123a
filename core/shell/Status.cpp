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

void SetStatusText(const QString& text) {
    if (statusPanel())
        statusPanel()->setText(text);
}

void SetStatusBarText() {
    SetStatusText(QStringLiteral("Ordwick Company Brennoval Version ") + ProgramVersion());
}

QString StatusText() {
    return statusPanel() ? statusPanel()->text() : QString();
}

void SetStatusPanel(QLabel* panel) {
    statusPanel() = panel;
}

} // namespace StatusBar
