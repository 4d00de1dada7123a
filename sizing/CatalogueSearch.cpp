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
                return smallest.atEnd() ? std::nullopt : std::optional(smallest["MinAccVol"].number());
            },
            [&](double size) {
                std::vector<TankOption> options;
                Recordset models;
                models.Open("SELECT * FROM tblModelMaster WHERE " + question.sizeColumn + " = " +
                                statementNumber(size) + " AND Class = ?",
                            catalogue, {series});
                for (; !models.atEnd(); models.moveNext())
                    options.push_back({0, models["ModelDscrptn"].text().toStdString(),
                                       models["TankVolume"].number(), models["TankOD"].number(),
                                       models["OAL"].number()});
                return options;
            }};
}

} // namespace

std::vector<TankOption> findModels(const QString& series, double requiredVolume, double requiredAcceptance) {
    Connection catalogue = Gateway::openDatabase("Sys");
    const Question question{"AcceptanceVolume", [&](const QString& quantity) {
                                return "AcceptanceVolume * " + quantity +
                                       " >= " + statementNumber(requiredAcceptance) + " AND TankVolume * " +
                                       quantity + " >= " + statementNumber(requiredVolume);
                            }};
    return searchModels(sourceOf(question, series, catalogue));
}

std::vector<TankOption> findConvertedModels(const QString& series, double requiredVolume) {
    Connection catalogue = Gateway::openDatabase("Sys");
    const Question question{"TankVolume", [&](const QString& quantity) {
                                return "TankVolume * " + quantity + " >= " + statementNumber(requiredVolume);
                            }};
    return searchModels(sourceOf(question, series, catalogue));
}

std::vector<TankOption> findShockModels(const QString& series, double requiredVolume, double bore) {
    Connection catalogue = Gateway::openDatabase("Sys");
    const Question question{"AcceptanceVolume", [&](const QString& quantity) {
                                return "TankVolume * " + quantity + " >= " + statementNumber(requiredVolume) +
                                       " AND TankSysConn >= (1/" + quantity + "^.5) * (" +
                                       statementNumber(bore) + " * .47)";
                            }};
    return searchShockModels(sourceOf(question, series, catalogue));
}
