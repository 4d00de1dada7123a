#include "data/CatalogueQueries.h"

const std::vector<CatalogueQuery>& catalogueQueries() {
    static const std::vector<CatalogueQuery> queries = {
        {"SELECT ModelDscrptn FROM tblModelMaster WHERE App NOT IN (SELECT App FROM tblAppMaster)",
         "no such application"},
        {"SELECT ModelDscrptn FROM tblModelMaster WHERE TankDraw IS NULL OR TankDraw NOT IN (SELECT TankDraw "
         "FROM tblTankDrawMaster)",
         "no such drawing"},
        {"SELECT ModelDscrptn FROM tblModelMaster WHERE Submittal IS NULL OR Submittal NOT IN (SELECT "
         "Submittal FROM tblSpecMaster)",
         "no such specification"},
        {"SELECT TankDraw FROM tblTankDrawMaster WHERE TankDraw NOT IN (SELECT TankDraw FROM tblModelMaster)",
         "a drawing of no model"},
        {"SELECT Submittal FROM tblSpecMaster WHERE Submittal NOT IN (SELECT Submittal FROM tblModelMaster)",
         "a specification of no model"},
        {"SELECT ModelDscrptn FROM tblModelMaster WHERE SysConnStd IS NULL", "a text is missing"},
        {"SELECT ModelDscrptn FROM tblModelMaster WHERE AcceptanceVolume > TankVolume OR AcceptanceVolume <= "
         "0 OR TankVolume > 5000 OR TankOD NOT BETWEEN 6 AND 96 OR OAL NOT BETWEEN 8 AND 240 OR ShipWeight "
         "NOT BETWEEN 5 AND 20000 OR TankWkPressure NOT BETWEEN 30 AND 400 OR TankSysConn NOT BETWEEN .25 "
         "AND 12",
         "a number out of range"},
        {"SELECT ModelDscrptn FROM tblModelMaster WHERE App = 'PKG' AND (MakeUpCapacity IS NULL OR PumpHp IS "
         "NULL OR MinSysPressure IS NULL OR MinSysPressure >= TankWkPressure)",
         "package data missing or out of order"},
        {"SELECT a.ModelDscrptn FROM tblModelMaster a JOIN tblModelMaster b ON a.Class = 'JWG' AND b.Class = "
         "'JWG' WHERE a.ModelDscrptn < b.ModelDscrptn AND a.TankVolume >= b.TankVolume",
         "its size does not rise with its number"},
        {"SELECT PostalCode FROM tblPostalCodes WHERE RepID NOT IN (SELECT RepID FROM tblRepMaster)",
         "no such representative"},
        {"SELECT PipeIndex FROM tblPipeMaster WHERE Schedule NOT IN ('40', '80', 'Cu') OR ID NOT BETWEEN .3 "
         "AND 14",
         "not a pipe of the catalogue"},
        {"SELECT Submittal FROM tblSpecMaster WHERE Report NOT IN ('rptSubmittal1', 'rptSubmittal2', "
         "'rptSubmittal3', 'rptSubmittal4') OR Spec1 IS NULL OR LastLine IS NULL OR Description1 IS NULL",
         "a text is missing or the report is unknown"},
        {"SELECT TankDraw FROM tblTankDrawMaster WHERE X <= 0 OR Y <= 0", "a drawing without a size"},
        {"SELECT RepID FROM tblRepMaster WHERE CompanyName LIKE '%&&%'", "its name has a doubled ampersand"},
        {"SELECT ModelDscrptn FROM tblModelMaster WHERE TankVolume < .5", "its volume is printed as 0 gal"},
        {"SELECT ModelDscrptn FROM (SELECT ModelDscrptn, TankVolume, LAG(TankVolume) OVER (PARTITION BY "
         "Class ORDER BY TankVolume) AS smaller FROM tblModelMaster WHERE App <> 'PKG') "
         "WHERE TankVolume > 1.6 * smaller",
         "more than 1.6 times the next smaller of its series"},
        // A cell of 0 would cause a division by zero.
        {R"(SELECT SOPMax FROM tblPressureFactor WHERE NOT ("20" > "30" AND "30" > "40" AND "40" > "50" AND
            "50" > "60" AND "60" > "70" AND "70" > "80" AND "80" > "90" AND "90" > "100" AND
            "100" > "110" AND "110" > 0))",
         "pressure factors of a row that do not fall or are not above 0"},
    };
    return queries;
}
