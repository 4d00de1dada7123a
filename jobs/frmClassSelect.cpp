#include "jobs/frmClassSelect.h"

#include "core/base/ApplicationNames.h"
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
    const std::pair<QPushButton*, Application> choices[] = {{cmdEXP, Application::Expansion},
                                                            {cmdTHM, Application::Thermal},
                                                            {cmdHYD, Application::Hydropneumatic},
                                                            {cmdSHK, Application::Shock},
                                                            {cmdPKG, Application::Package}};
    for (const auto& [button, application] : choices)
        on(button, "." + button->objectName(), [this, application = application] { Select(application); });
    onCancel(cmdCancel, ".cmdCancel", [this] { Cancel(); });
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
