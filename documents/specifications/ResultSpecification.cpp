#include "documents/specifications/ResultSpecification.h"

#include "core/base/Numbers.h"
#include "core/shell/DisplayFields.h"
#include "core/store/Catalogue.h"
#include "core/store/Model.h"
#include "core/store/Representative.h"
#include "core/store/UserDefaults.h"
#include "documents/specifications/Placeholders.h"

using namespace Catalogue;
using namespace Records;

namespace {

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

} // namespace

QString directoryRepresentative() {
    const auto user = readUserDefaults();
    const QString postalCode = user ? shownText(user->postalCode) : QString();
    return postalCode.isEmpty() ? QString() : directoryCompany(postalCode);
}

Specification resultSpecification(const TankLine& tank, const QString& representative) {
    Placeholders::Values values;
    values.qty = statementNumber(tank.qty.value_or(0));
    values.modelNo = shownText(tank.modelNo);
    const QString key = readModel(values);
    values.rep = representative;
    Specification specification = key.isEmpty() ? Specification() : readSpecification(key);
    specification.text = Placeholders::replaced(specification.text, values);
    specification.lastLine = Placeholders::replaced(specification.lastLine, values);
    return specification;
}
