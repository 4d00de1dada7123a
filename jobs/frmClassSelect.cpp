#include "jobs/frmClassSelect.h"

#include "core/base/ApplicationNames.h"
#include "core/base/Fault.h"
#include "core/shell/Screens.h"
#include "core/shell/Status.h"
#include "core/store/Deletion.h"
#include "core/store/SessionStore.h"

using namespace ApplicationNames;
using namespace Deletion;
using namespace StatusBar;

frmClassSelect::frmClassSelect() : Screen("frmClassSelect") {
    setupUi(this);
    prepare();
    for (const ApplicationInfo& info : allApplications) {
        QPushButton* button = buttonOf(info.application);
        on(button, "." + button->objectName(), [this, &info] { Select(info.application); });
        button->setAccessibleDescription(control<QLabel>("lblSub" + button->objectName().mid(3))->text());
    }
    onCancel(cmdCancel, ".cmdCancel", [this] { Cancel(); });
}

QPushButton* frmClassSelect::buttonOf(Application application) const {
    switch (application) {
    case Application::Expansion:
        return cmdEXP;
    case Application::Thermal:
        return cmdTHM;
    case Application::Hydropneumatic:
        return cmdHYD;
    case Application::Shock:
        return cmdSHK;
    case Application::Package:
        return cmdPKG;
    }
    throw Fault(Fault::InternalError, "No button of such an application");
}

void frmClassSelect::Load() {
    setStatusText("Select application");
    lblJobID->setText(Session::JobID.text());
}

void frmClassSelect::Select(Application application) {
    const Hourglass hourglass;
    Session::TankClass.write(AppName(application));
    leaveFor(toQString(infoOf(application).conditionsScreen));
}

void frmClassSelect::Cancel() {
    Tag = "1";
    CancelJobInput(lblJobID->text());
    Screens::unload(name());
}

bool frmClassSelect::QueryUnload() {
    if (Tag != "1") {
        Cancel();
        SetStatusBarText();
    }
    return true;
}
