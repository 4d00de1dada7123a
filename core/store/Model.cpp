#include "core/store/Model.h"

#include "core/store/Gateway.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QSet>

using namespace Gateway;

using Record::column;

namespace {

constexpr Record::Column<Model> measures[] = {
    column<&Model::modelDscrptn>("ModelDscrptn"),
    column<&Model::app>("App"),
    column<&Model::tankVolume>("TankVolume"),
    column<&Model::tankOD>("TankOD"),
    column<&Model::oal>("OAL"),
};

} // namespace

Model::Columns Model::measures() {
    return ::measures;
}

Model::Columns Model::columns() {
    static constexpr Record::Column<Model> all[] = {
        column<&Model::modelDscrptn>("ModelDscrptn"),
        column<&Model::app>("App"),
        column<&Model::series>("Class"),
        column<&Model::bladder>("Bladder"),
        column<&Model::asme>("ASME"),
        column<&Model::nsf>("NSF"),
        column<&Model::iapmo>("IAPMO"),
        column<&Model::tankVolume>("TankVolume"),
        column<&Model::acceptanceVolume>("AcceptanceVolume"),
        column<&Model::tankOD>("TankOD"),
        column<&Model::oal>("OAL"),
        column<&Model::sysConnStd>("SysConnStd"),
        column<&Model::sysConnType>("SysConnType"),
        column<&Model::tankSysConn>("TankSysConn"),
        column<&Model::tankWkPressure>("TankWkPressure"),
        column<&Model::minSysPressure>("MinSysPressure"),
        column<&Model::precharge>("Precharge"),
        column<&Model::shipWeight>("ShipWeight"),
        column<&Model::makeUpCapacity>("MakeUpCapacity"),
        column<&Model::pumpHp>("PumpHp"),
        column<&Model::shell>("Shell"),
        column<&Model::finish>("Finish"),
        column<&Model::maxTemp>("MaxTemp"),
        column<&Model::clearance>("Clearance"),
        column<&Model::tankDraw>("TankDraw"),
        column<&Model::submittal>("Submittal"),
    };
    return all;
}

namespace Catalogue {

std::optional<Model> findModel(const QString& model) {
    Rows rows("Sys", "SELECT * FROM tblModelMaster WHERE ModelDscrptn = ?", {model});
    return rows.atEnd() ? std::nullopt : std::optional(Record::read(*rows, Model::columns()));
}

QHash<QString, Model> findModels(const QStringList& names, Model::Columns columns) {
    QSet<QString> sought;
    for (const QString& name : names)
        if (!name.isEmpty())
            sought.insert(name.toCaseFolded());
    QHash<QString, Model> found;
    if (sought.isEmpty())
        return found;
    // One parameter however many names there are: a statement with a thousand takes longer than its rows.
    const QJsonArray asked = QJsonArray::fromStringList(QStringList(sought.begin(), sought.end()));
    Rows rows("Sys", "SELECT * FROM tblModelMaster WHERE ModelDscrptn IN (SELECT value FROM json_each(?))",
              {QString::fromUtf8(QJsonDocument(asked).toJson(QJsonDocument::Compact))});
    found.reserve(sought.size());
    for (Model& model : Record::readAll(*rows, columns))
        if (const QString key = model.modelDscrptn.value_or(QString()).toCaseFolded(); !found.contains(key))
            found.emplace(key, std::move(model)); // the first of a name, as everywhere
    return found;
}

std::vector<Model> modelsOf(const QString& series) {
    Rows rows("Sys", "SELECT * FROM tblModelMaster WHERE Class = ?", {series});
    return Record::readAll(*rows, Model::columns());
}

QString applicationDescription(const QString& code) {
    Rows rows("Sys", "SELECT Description FROM tblAppMaster WHERE App = ?", {code});
    return rows.atEnd() ? QString() : rows["Description"].text();
}

} // namespace Catalogue
