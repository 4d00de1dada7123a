#include "data/CatalogueModel.h"
#include "core/base/Numbers.h"

namespace {

constexpr const char* modelsWithTexts =
    "SELECT ModelDscrptn, App, Class, Bladder, ASME, NSF, TankVolume, AcceptanceVolume, TankOD, OAL, "
    "SysConnStd, TankSysConn, SysConnType, TankWkPressure, ShipWeight, MakeUpCapacity, PumpHp, TankDraw, "
    "Spec1 || IFNULL(Spec2, '') || IFNULL(Spec3, '') || IFNULL(Spec4, '') || IFNULL(Spec5, '') || "
    "IFNULL(Spec6, '') || IFNULL(Spec7, '') || IFNULL(Spec8, '') || IFNULL(Spec9, '') || IFNULL(Spec10, ''), "
    "LastLine, Description1 || IFNULL(Description2, '') || IFNULL(Description3, '') "
    "FROM tblModelMaster JOIN tblSpecMaster USING (Submittal) ORDER BY tblModelMaster.rowid";

double number(const std::string& text) {
    return parseNumber(text).value_or(0);
}

} // namespace

std::vector<CatalogueModel> readModels(Database& catalogue) {
    std::vector<CatalogueModel> models;
    for (const auto& row : catalogue.rows(modelsWithTexts))
        models.push_back({.name = row[0],
                          .application = row[1],
                          .series = row[2],
                          .bladder = row[3],
                          .code = number(row[4]) != 0,
                          .drinkingWater = row[5] == "Y",
                          .volume = number(row[6]),
                          .acceptance = number(row[7]),
                          .diameter = number(row[8]),
                          .overall = number(row[9]),
                          .connectionText = row[10],
                          .connection = number(row[11]),
                          .connectionType = row[12],
                          .pressure = number(row[13]),
                          .weight = number(row[14]),
                          .flow = number(row[15]),
                          .horsepower = number(row[16]),
                          .drawing = row[17],
                          .specification = row[18],
                          .lastLine = row[19],
                          .description = row[20]});
    return models;
}
