#include "sizing/CatalogueSearch.h"

#include "core/base/Text.h"
#include "core/store/Gateway.h"

namespace {

/// What one search asks the catalogue about a number of tanks.
struct Question {
    QString sizeColumn;
    std::function<QString(const QString& quantity)> condition;
};

ModelSource sourceOf(const Question& question, const QString& series, Connection& catalogue) {
    return {[&](int quantity) -> std::optional<double> {
                Recordset smallest; // the series goes in unquoted, unlike below
                smallest.Open("SELECT Min(" + question.sizeColumn +
                                  ") AS MinAccVol FROM tblModelMaster WHERE " +
                                  question.condition(QString::number(quantity)) +
                                  " GROUP BY Class HAVING CLASS = '" + series + "'",
                              catalogue);
                return smallest.AtEnd() ? std::nullopt : std::optional(smallest["MinAccVol"].number());
            },
            [&](double size) {
                std::vector<TankOption> options;
                Recordset models;
                models.Open("SELECT * FROM tblModelMaster WHERE " + question.sizeColumn + " = " +
                                StatementNumber(size) + " AND Class = ?",
                            catalogue, {series});
                for (; !models.AtEnd(); models.MoveNext())
                    options.push_back({0, models["ModelDscrptn"].text().toStdString(),
                                       models["TankVolume"].number(), models["TankOD"].number(),
                                       models["OAL"].number()});
                return options;
            }};
}

} // namespace

std::vector<TankOption> FindModels(const QString& series, double requiredVolume, double requiredAcceptance) {
    Connection catalogue = Gateway::openDatabase("Sys");
    const Question question{"AcceptanceVolume", [&](const QString& quantity) {
                                return "AcceptanceVolume * " + quantity +
                                       " >= " + StatementNumber(requiredAcceptance) + " AND TankVolume * " +
                                       quantity + " >= " + StatementNumber(requiredVolume);
                            }};
    return SearchModels(sourceOf(question, series, catalogue));
}

std::vector<TankOption> FindConvertedModels(const QString& series, double requiredVolume) {
    Connection catalogue = Gateway::openDatabase("Sys");
    const Question question{"TankVolume", [&](const QString& quantity) {
                                return "TankVolume * " + quantity + " >= " + StatementNumber(requiredVolume);
                            }};
    return SearchModels(sourceOf(question, series, catalogue));
}

std::vector<TankOption> FindShockModels(const QString& series, double requiredVolume, double bore) {
    Connection catalogue = Gateway::openDatabase("Sys");
    const Question question{"AcceptanceVolume", [&](const QString& quantity) {
                                return "TankVolume * " + quantity + " >= " + StatementNumber(requiredVolume) +
                                       " AND TankSysConn >= (1/" + quantity + "^.5) * (" +
                                       StatementNumber(bore) + " * .47)";
                            }};
    return SearchShockModels(sourceOf(question, series, catalogue));
}
