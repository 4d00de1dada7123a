#include "core/base/Applications.h"
#include "core/base/Text.h"
#include "core/store/Gateway.h"
#include "shock/ShockSizes.h"
#include "sizing/CatalogueSearch.h"
#include "sizing/RequiredSizes.h"
#include "tests/walk/Notes.h"

#include <sqlite3.h>

#include <stdexcept>

namespace Reckoning {

namespace {

QString quoted(QString text) {
    return "'" + text.replace("'", "''") + "'";
}

/// The first value of a catalogue query; empty if it has no row.
QString lookUp(const QString& sql) {
    const QList<Row> rows = query("Sys", sql);
    return rows.isEmpty() || rows.first().isEmpty() ? QString() : rows.first().first();
}

double bore(const QString& pipe) {
    return lookUp("SELECT ID FROM tblPipeMaster WHERE PipeIndex = " + quoted(pipe)).toDouble();
}

SystemConditions conditionsOf(const Row& line) {
    return {.minimumTemperature = line["SOTMin"].toDouble(),
            .maximumTemperature = line["SOTMax"].toDouble(),
            .minimumPressure = line["SOPMin"].toDouble(),
            .maximumPressure = line["SOPMax"].toDouble(),
            .atmosphericPressure = line["AtmPressure"].toDouble(),
            .volume = line["TotSysVolume"].toDouble()};
}

double expansionOf(const Row& line) {
    const SystemConditions conditions = conditionsOf(line);
    if (line["SysFluidType"] == "Water")
        return lookUp(QString("SELECT [%1] FROM tblExpFactor WHERE SOTMax >= %2 ORDER BY SOTMax LIMIT 1")
                          .arg(expansionColumn(conditions.minimumTemperature))
                          .arg(line["SOTMax"]))
            .toDouble();
    return fluidExpansionFactor(line["SysFluidType"].toStdString(), conditions.minimumTemperature,
                                conditions.maximumTemperature);
}

Row optionOf(const TankOption& option) {
    return {{"Qty", QString::number(option.quantity)}, {"ModelNo", QString::fromStdString(option.model)}};
}

/// A shock option also stores its two figures as displayed, to one decimal.
Row shockOptionOf(const TankOption& option, const Row& line) {
    const double acceptance = shockAcceptanceFactor(
        line["FlowPressure"].toDouble(), line["StaticPressure"].toDouble(), line["AtmPressure"].toDouble());
    const double leakLoad = LeakLoad(acceptance, option.tankVolume, option.quantity,
                                     line["PipeLength"].toDouble(), pipeArea(bore(line["PipeIndex"])));
    const double delay =
        pumpStartupDelay(acceptance, option.tankVolume, option.quantity, line["FlowRate"].toDouble());
    Row row = optionOf(option);
    row["LeakLoad"] = shownNumber(toNumber(formattedNumber(leakLoad, "#,##0.0%").chopped(1)) / 100);
    row["PumpRunTime"] = shownNumber(toNumber(formattedNumber(delay, "#,##0.0 sec").chopped(4)));
    return row;
}

QString textOf(sqlite3_stmt* statement, int column) {
    if (sqlite3_column_type(statement, column) == SQLITE_FLOAT)
        return shownNumber(sqlite3_column_double(statement, column));
    return QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement, column)));
}

} // namespace

QList<Row> query(const QString& database, const QString& sql) {
    const QByteArray file = Gateway::dbConnection(database).dataSource().toUtf8();
    sqlite3* handle = nullptr;
    sqlite3_stmt* statement = nullptr;
    QList<Row> rows;
    const bool good =
        sqlite3_open_v2(file.constData(), &handle, SQLITE_OPEN_READONLY, nullptr) == SQLITE_OK &&
        sqlite3_prepare_v2(handle, sql.toUtf8().constData(), -1, &statement, nullptr) == SQLITE_OK;
    while (good && sqlite3_step(statement) == SQLITE_ROW) {
        Row row;
        for (int column = 0; column < sqlite3_column_count(statement); ++column)
            if (sqlite3_column_type(statement, column) != SQLITE_NULL)
                row[sqlite3_column_name(statement, column)] = textOf(statement, column);
        rows.append(row);
    }
    sqlite3_finalize(statement);
    sqlite3_close(handle);
    if (!good)
        throw std::runtime_error("cannot read " + sql.toStdString());
    return rows;
}

QString applicationOf(const QString& model) {
    return lookUp("SELECT App FROM tblModelMaster WHERE ModelDscrptn = " + quoted(model));
}

QString seriesOf(const QString& model) {
    return lookUp("SELECT Class FROM tblModelMaster WHERE ModelDscrptn = " + quoted(model));
}

Row sizes(const Row& line, const QString& series, const Values& values) {
    const SystemConditions conditions = conditionsOf(line);
    RequiredSizes found;
    if (values.mode == "Convert") {
        found = convertedTankSizes(conditions);
    } else {
        const double acceptance = acceptanceFactor(conditions, series == "RB");
        found = values.application == "Hydropneumatic Tank"
                    ? hydropneumaticTankSizes(conditions, acceptance)
                    : expansionTankSizes(conditions, expansionOf(line), acceptance);
    }
    return {{"TankClass", series},
            {"RequiredVolume", shownNumber(found.volume)},
            {"RequiredAcceptance", shownNumber(found.acceptance)}};
}

QList<Row> options(const Row& line, const Values& values) {
    const QString series = line["TankClass"];
    const double volume = line["RequiredVolume"].toDouble();
    QList<Row> rows;
    if (values.mode == "Convert") {
        for (const TankOption& option : findConvertedModels(series, volume))
            rows.append(optionOf(option));
    } else if (values.application == "Shock Arrestor Tank") {
        for (const TankOption& option : findShockModels(series, volume, bore(line["PipeIndex"])))
            rows.append(shockOptionOf(option, line));
    } else {
        for (const TankOption& option : findModels(series, volume, line["RequiredAcceptance"].toDouble()))
            rows.append(optionOf(option));
    }
    return rows;
}

std::optional<Row> shockSizes(const Row& boxes) {
    const ShockConditions conditions{.bore = bore(boxes["PipeIndex"]),
                                     .length = boxes["PipeLength"].toDouble(),
                                     .flowRate = boxes["FlowRate"].toDouble(),
                                     .flowPressure = boxes["FlowPressure"].toDouble(),
                                     .staticPressure = boxes["StaticPressure"].toDouble(),
                                     .shockPressure = boxes["ShockPressure"].toDouble(),
                                     .atmosphericPressure = 14.7};
    const double shock = shockPressureBand(conditions.shockPressure);
    const double rest = staticPressureBand(conditions.staticPressure);
    const double factor =
        tableHasPressureFactor(shock, rest)
            ? lookUp(QString("SELECT [%1] FROM tblPressureFactor WHERE SOPMax = %2").arg(rest).arg(shock))
                  .toDouble()
            : highPressureFactor(shock, rest);
    if (factor == 0 || conditions.bore == 0)
        return std::nullopt;
    const ShockSizes found = computeShockSizes(conditions, factor);
    const double acceptance = shockAcceptanceFactor(conditions.flowPressure, conditions.staticPressure,
                                                    conditions.atmosphericPressure);
    if (shockObjection(found.waterVelocity, acceptance, shock))
        return std::nullopt;
    Row row = boxes;
    const auto put = [&](const char* column, double value) { row[column] = shownNumber(Round(value, 8)); };
    put("AtmPressure", conditions.atmosphericPressure);
    put("WaterVelocity", found.waterVelocity);
    put("KineticEnergy", found.kineticEnergy);
    put("TotalKineticEnergy", found.totalKineticEnergy);
    put("RequiredVolume", found.requiredVolume);
    put("RequiredAcceptance", found.requiredAcceptance);
    row["TankClass"] = "SHK";
    return row;
}

} // namespace Reckoning
