#include "documents/specifications/frmResultSpecs.h"

#include "core/base/Numbers.h"
#include "core/shell/Dialogs.h"
#include "core/shell/DisplayFields.h"
#include "core/shell/Hourglass.h"
#include "core/shell/Status.h"
#include "core/store/Catalogue.h"
#include "core/store/Model.h"
#include "core/store/Representative.h"
#include "core/store/SessionStore.h"
#include "core/store/Specification.h"
#include "core/store/TankLine.h"
#include "core/store/UserDefaults.h"
#include "documents/specifications/SpecsBox.h"

using namespace Catalogue;
using namespace Records;
using namespace StatusBar;

namespace {

void readTankLine(Placeholders::Values& values) {
    QString tankID;
    if (!Session::TankID.read(tankID))
        return;
    const auto tank = findTankLine(tankID);
    if (!tank)
        return;
    values.qty = statementNumber(tank->qty.value_or(0));
    values.modelNo = shownText(tank->modelNo);
}

/// Fills in the model's figures and returns the key of its specification, or an empty text.
QString readModel(Placeholders::Values& values) {
    if (values.modelNo.isEmpty())
        return {};
    const auto model = findModel(values.modelNo);
    if (!model)
        return {};
    values.tankGal = shownText(model->tankVolume, "#,##0 gal");
    values.tankOD = shownText(model->tankOD);
    values.tankOAL = shownText(model->oal);
    values.sysConn =
        FractionConversion(model->tankSysConn.value_or(0)); // as a fraction, unlike the submittal
    values.wkPressure = shownText(model->tankWkPressure);
    values.precharge = shownText(model->precharge);
    values.makeUpCapacity = shownText(model->makeUpCapacity);
    values.hp = shownText(model->pumpHp);
    return shownText(model->submittal);
}

/// The representative for the user's postal code, looked up each time.
QString representative() {
    const auto user = readUserDefaults();
    const QString postalCode = user ? shownText(user->postalCode) : QString();
    return postalCode.isEmpty() ? QString() : directoryCompany(postalCode);
}

} // namespace

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
    Placeholders::Values values;
    readTankLine(values);
    const QString key = readModel(values);
    values.rep = representative();
    const Specification specification = key.isEmpty() ? Specification() : readSpecification(key);
    showSpecification(txtSpecBox, Placeholders::replaced(specification.text, values),
                      Placeholders::replaced(specification.lastLine, values));
}

bool frmResultSpecs::QueryUnload() {
    askForClipboard(Copied);
    return true;
}
