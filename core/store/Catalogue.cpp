#include "core/store/Catalogue.h"

#include "core/base/Fault.h"
#include "core/base/Text.h"

using namespace Gateway;

namespace Catalogue {

Rows ReadPipe(const QString& pipeIndex) {
    return {"Sys", "SELECT * FROM tblPipeMaster WHERE PipeIndex = ?", {pipeIndex}};
}

std::vector<PipeSize> PipesOf(const QString& schedule) {
    std::vector<PipeSize> sizes;
    for (Rows pipe("Sys", "SELECT * FROM tblPipeMaster WHERE Schedule = ?", {schedule}); !pipe.AtEnd();
         pipe->MoveNext())
        sizes.push_back({pipe["PipeIndex"].text(), pipe["MetricIndex"].text(), pipe["ID"].number()});
    return sizes;
}

double PipeBore(const QString& pipeIndex) {
    Rows pipe = ReadPipe(pipeIndex);
    return pipe.AtEnd() ? 0 : pipe["ID"].number();
}

double ReadPressureFactor(double shockBand, double staticBand) {
    Rows factor("Sys",
                "SELECT [" + StatementNumber(staticBand) + "] AS P1 FROM tblPressureFactor WHERE SOPMax = ?",
                {shockBand});
    return factor.AtEnd() ? 0 : factor["P1"].number();
}

double ReadExpansionFactor(int column, double maximumTemperature) {
    Rows factor("Sys",
                "SELECT [" + QString::number(column) +
                    "] AS minSOT FROM tblExpFactor WHERE SOTMax >= ? ORDER BY SOTMax",
                {maximumTemperature});
    return factor.AtEnd() ? 0 : factor["minSOT"].number();
}

QString FractionConversion(double value) {
    return Named("FractionConversion", [value]() -> QString {
        const QString text = StatementNumber(value);
        const QString inch = "\"";
        const auto point = text.indexOf('.');
        if (point < 1) // no fraction, or below one: unchanged
            return text + inch;
        const QString fraction = text.mid(point);
        const double whole = Round(value - ToNumber(fraction), 0); // removes the subtraction's rounding error
        Rows rows("Sys", "SELECT * FROM tblFractionConversion WHERE DecimalValue = ?", {ToNumber(fraction)});
        return ShownNumber(whole) + "-" + (rows.AtEnd() ? QString() : rows["Fraction"].text()) + inch;
    });
}

} // namespace Catalogue
