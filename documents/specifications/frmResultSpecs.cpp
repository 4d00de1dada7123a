#include "documents/specifications/frmResultSpecs.h"

#include "core/shell/Dialogs.h"
#include "core/shell/Hourglass.h"
#include "core/shell/Status.h"
#include "core/store/SessionStore.h"
#include "core/store/TankLine.h"
#include "documents/specifications/ResultSpecification.h"
#include "documents/specifications/SpecsBox.h"

using namespace Records;
using namespace StatusBar;

frmResultSpecs::frmResultSpecs() : Screen("frmResultSpecs") {
    setupUi(this);
    prepare();
    on(cmdCopy, ".cmdCopy", [this] {
        Dialogs::current().copy(specificationText(txtSpecBox));
        Copied = true;
    });
}

void frmResultSpecs::Load() {
    const Hourglass hourglass;
    setStatusText("Copy & paste specifications to another application");
    lblTankID->setText(Session::tankLine());
    const auto tank = findTankLine(Session::tankLine());
    const Specification specification =
        resultSpecification(tank.value_or(TankLine()), directoryRepresentative());
    showSpecification(txtSpecBox, specification.text, specification.lastLine);
}

bool frmResultSpecs::QueryUnload() {
    askForClipboard(Copied);
    return true;
}
