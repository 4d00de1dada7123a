#include "jobs/frmClassSelect.h"

#include "core/shell/BrennovalMain.h"
#include "core/shell/FieldChecks.h"
#include "core/store/SessionStore.h"

using namespace UtilityFunctions;

frmClassSelect::frmClassSelect() : Screen("frmClassSelect") {
    setupUi(this);
    prepare();
    const struct {
        QPushButton* button;
        QString application;
        QString nextScreen;
    } choices[] = {
        {cmdEXP, AppNameExpansion(), "frmJobConditions"}, {cmdTHM, AppNameThermal(), "frmJobConditions"},
        {cmdHYD, AppNameHydro(), "frmJobConditions"},     {cmdSHK, AppNameShock(), "frmJobConditionsSHK"},
        {cmdPKG, AppNamePackage(), "frmPKGSelect"},
    };
    for (const auto& choice : choices) {
        if (!Screens::known(choice.nextScreen))
            makeUnavailable(choice.button);
        on(choice.button, "." + choice.button->objectName(),
           [this, choice] { Select(choice.application, choice.nextScreen); });
    }
    on(cmdCancel, ".cmdCancel", [this] { Cancel(); });
}

void frmClassSelect::Load() {
    SetStatusText("Select application");
    lblJobID->setText(Session::JobID.text());
}

void frmClassSelect::Select(const QString& application, const QString& nextScreen) {
    const Hourglass hourglass;
    Tag = "1";
    Session::TankClass.write(application);
    Screens::open(nextScreen);
    Screens::unload(name());
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
