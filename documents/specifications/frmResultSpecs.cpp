#include "documents/specifications/frmResultSpecs.h"

#include "core/base/Numbers.h"
#include "core/shell/Dialogs.h"
#include "core/shell/DisplayFields.h"
#include "core/shell/Hourglass.h"
#include "core/shell/Status.h"
#include "core/store/Catalogue.h"
#include "core/store/Gateway.h"
#include "core/store/SessionStore.h"
#include "core/store/SqlText.h"
#include "core/store/TankLine.h"
#include "documents/specifications/Specifications.h"
#include "documents/specifications/SpecsBox.h"

using namespace UtilityFunctions;

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

/// Fills in the figures of the model; its specification's key, or an empty text.
QString readModel(Placeholders::Values& values) {
    if (values.modelNo.isEmpty())
        return {};
    Connection connection = openDatabase("Sys");
    Recordset model;
    model.Open("SELECT * FROM tblModelMaster WHERE ModelDscrptn = '" + SqlEscape(values.modelNo) + "'",
               connection);
    if (model.AtEnd())
        return {};
    values.tankGal = FormattedField(model["TankVolume"], "#,##0 gal");
    values.tankOD = model["TankOD"].text();
    values.tankOAL = model["OAL"].text();
    values.sysConn = FractionConversion(model["TankSysConn"].number()); // unlike the submittal, as a fraction
    values.wkPressure = model["TankWkPressure"].text();
    values.precharge = model["Precharge"].text();
    values.makeUpCapacity = model["MakeUpCapacity"].text();
    values.hp = model["PumpHp"].text();
    return model["Submittal"].text();
}

/// The value that a statement gives in a column; an empty text when it has no row.
QString lookUp(const QString& database, const QString& sql, const QString& column) {
    Connection connection = openDatabase(database);
    Recordset row;
    row.Open(sql, connection);
    return row.AtEnd() ? QString() : row[column].text();
}

/// The representative of the user's postal code, looked up afresh.
QString representative() {
    const QString postalCode = lookUp("User", "SELECT * FROM tblUser", "PostalCode");
    if (postalCode.isEmpty())
        return {};
    const QString rep =
        lookUp("Sys", "SELECT * FROM tblPostalCodes WHERE PostalCode = '" + postalCode + "'", "RepID");
    return rep.isEmpty() ? QString()
                         : lookUp("Sys", "SELECT * FROM tblRepMaster WHERE RepID = '" + SqlEscape(rep) + "'",
                                  "CompanyName");
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
    lblTankID->setText(Session::TankID.text());
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
