#include "core/store/Catalogue.h"

#include "core/base/Fault.h"
#include "core/base/Text.h"
#include "core/store/SqlText.h"

namespace UtilityFunctions {

Rows ReadModel(const QString& model) {
    return {"Sys", "SELECT * FROM tblModelMaster WHERE ModelDscrptn = '" + SqlEscape(model) + "'"};
}

Rows ReadPipe(const QString& pipeIndex) {
    return {"Sys", "SELECT * FROM tblPipeMaster WHERE PipeIndex = '" + SqlEscape(pipeIndex) + "'"};
}

double PipeBore(const QString& pipeIndex) {
    Rows pipe = ReadPipe(pipeIndex);
    return pipe.AtEnd() ? 0 : pipe["ID"].number();
}

QString FractionConversion(double value) {
    return Named("FractionConversion", [value]() -> QString {
        const QString text = StatementNumber(value);
        const QString inch = "\"";
        const auto point = text.indexOf('.');
        if (point < 1) // no fraction; a value below one stays as it is written
            return text + inch;
        const QString fraction = text.mid(point);
        const double whole = Round(value - ToNumber(fraction), 0); // no dust of the subtraction
        Rows rows("Sys", "SELECT * FROM tblFractionConversion WHERE DecimalValue = " + fraction);
        return ShownNumber(whole) + "-" + (rows.AtEnd() ? QString() : rows["Fraction"].text()) + inch;
    });
}

} // namespace UtilityFunctions
