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
#include "core/store/TankLine.h"
#include "core/store/UserDefaults.h"
#include "documents/specifications/Specifications.h"
#include "documents/specifications/SpecsBox.h"

using namespace Catalogue;
using namespace Records;
using namespace StatusBar;

namespace {

void readTankLine(Placeholders::Values& values) {
    QString tankID;
    if (!Session::TankID.read(tankID))
        return;
    const auto tank = ReadTankLine(tankID);
    if (!tank)
        return;
    values.qty = StatementNumber(tank->qty.value_or(0));
    values.modelNo = Shown(tank->modelNo);
}

/// Fills in the model's figures and returns the key of its specification, or an empty text.
QString readModel(Placeholders::Values& values) {
    if (values.modelNo.isEmpty())
        return {};
    const auto model = ReadModel(values.modelNo);
    if (!model)
        return {};
    values.tankGal = Shown(model->tankVolume, "#,##0 gal");
    values.tankOD = Shown(model->tankOD);
    values.tankOAL = Shown(model->oal);
    values.sysConn =
        FractionConversion(model->tankSysConn.value_or(0)); // as a fraction, unlike the submittal
    values.wkPressure = Shown(model->tankWkPressure);
    values.precharge = Shown(model->precharge);
    values.makeUpCapacity = Shown(model->makeUpCapacity);
    values.hp = Shown(model->pumpHp);
    return Shown(model->submittal);
}

/// The representative for the user's postal code, looked up each time.
QString representative() {
    const auto user = ReadUserDefaults();
    const QString postalCode = user ? Shown(user->postalCode) : QString();
    return postalCode.isEmpty() ? QString() : DirectoryCompany(postalCode);
}

} // namespace

frmResultSpecs::frmResultSpecs() : Screen("frmResultSpecs") {
    setupUi(this);
    prepare();
    on(cmdCopy, ".cmdCopy", [this] {
        Dialogs::current().copy(SpecificationText(txtSpecBox));
        Copied = true;
    });
}

void frmResultSpecs::Load() {
    const Hourglass hourglass;
    SetStatusText("Copy & paste specifications to another application");
    lblTankID->setText(Session::tankLine());
    Placeholders::Values values;
    readTankLine(values);
    const QString key = readModel(values);
    values.rep = representative();
    const Specification specification = key.isEmpty() ? Specification() : ReadSpecification(key);
    ShowSpecification(txtSpecBox, Placeholders::replaced(specification.text, values),
                      Placeholders::replaced(specification.lastLine, values));
}

bool frmResultSpecs::QueryUnload() {
    AskForClipboard(Copied);
    return true;
}
