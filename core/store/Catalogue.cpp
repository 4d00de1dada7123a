#include "core/store/Catalogue.h"

#include "core/base/Fault.h"
#include "core/base/Text.h"
#include "core/store/Gateway.h"

using namespace Gateway;

namespace Catalogue {

namespace {

Rows readPipe(const QString& pipeIndex) {
    return {"Sys", "SELECT * FROM tblPipeMaster WHERE PipeIndex = ?", {pipeIndex}};
}

} // namespace

bool hasPipe(const QString& pipeIndex) {
    return !Rows("Sys", "SELECT * FROM tblPipeMaster WHERE PipeIndex = '" + pipeIndex + "'").atEnd();
}

bool hasMetricPipe(const QString& metricIndex) {
    return !Rows("Sys", "SELECT * FROM tblPipeMaster WHERE MetricIndex = '" + metricIndex + "'").atEnd();
}

QString pipeIndexOf(const QString& metricIndex) {
    Rows pipe("Sys", "SELECT * FROM tblPipeMaster WHERE MetricIndex = ?", {metricIndex});
    return pipe.atEnd() ? QString() : pipe["PipeIndex"].text();
}

QString metricIndexOf(const QString& pipeIndex) {
    Rows pipe = readPipe(pipeIndex);
    return pipe.atEnd() ? QString() : pipe["MetricIndex"].text();
}

std::vector<PipeSize> pipesOf(const QString& schedule) {
    std::vector<PipeSize> sizes;
    for (Rows pipe("Sys", "SELECT * FROM tblPipeMaster WHERE Schedule = ?", {schedule}); !pipe.atEnd();
         pipe->moveNext())
        sizes.push_back({pipe["PipeIndex"].text(), pipe["MetricIndex"].text(), pipe["ID"].number()});
    return sizes;
}

std::optional<double> findBore(const QString& pipeIndex) {
    Rows pipe = readPipe(pipeIndex);
    return pipe.atEnd() ? std::nullopt : std::optional(pipe["ID"].number());
}

double pipeBore(const QString& pipeIndex) {
    return findBore(pipeIndex).value_or(0);
}

double transverseArea(const QString& pipeIndex) {
    return readPipe(pipeIndex)["TransArea"].number();
}

double readPressureFactor(double shockBand, double staticBand) {
    Rows factor("Sys",
                "SELECT [" + statementNumber(staticBand) + "] AS P1 FROM tblPressureFactor WHERE SOPMax = ?",
                {shockBand});
    return factor.atEnd() ? 0 : factor["P1"].number();
}

std::optional<Expansion> readExpansion(int column, double maximumTemperature) {
    Rows rows("Sys",
              "SELECT SOTMax, [" + QString::number(column) +
                  "] AS minSOT FROM tblExpFactor WHERE SOTMax >= ? ORDER BY SOTMax",
              {maximumTemperature});
    if (rows.atEnd())
        return std::nullopt;
    return Expansion{.factor = rows["minSOT"].number(), .row = rows["SOTMax"].number()};
}

QString FractionConversion(double value) {
    return underName("FractionConversion", [value]() -> QString {
        const QString text = statementNumber(value);
        const QString inch = "\"";
        const auto point = text.indexOf('.');
        if (point < 1) // no fraction, or below one: unchanged
            return text + inch;
        const QString fraction = text.mid(point);
        const double whole = Round(value - toNumber(fraction), 0); // removes the subtraction's rounding error
        Rows rows("Sys", "SELECT * FROM tblFractionConversion WHERE DecimalValue = ?", {toNumber(fraction)});
        return shownNumber(whole) + "-" + (rows.atEnd() ? QString() : rows["Fraction"].text()) + inch;
    });
}

std::optional<DrawingInfo> findDrawing(const QString& drawing) {
    Rows row("Sys", "SELECT * FROM tblTankDrawMaster WHERE TankDraw = '" + drawing + "'");
    if (row.atEnd())
        return std::nullopt;
    return DrawingInfo{row["X"].number(), row["Y"].number(), row["Ext"].text()};
}

} // namespace Catalogue
