#include "sizing/CatalogueSearch.h"

#include "core/base/Text.h"
#include "core/store/Gateway.h"
#include "shock/ShockSizes.h"

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

using Search = std::vector<TankOption> (*)(const ModelSource&);

std::vector<TankOption> search(Search run, const ModelSource& source, std::vector<SearchStep>* steps) {
    return steps ? run(noting(source, *steps)) : run(source);
}

} // namespace

std::vector<TankOption> findModels(const QString& series, double requiredVolume, double requiredAcceptance,
                                   std::vector<SearchStep>* steps) {
    Connection catalogue = Gateway::openDatabase("Sys");
    const Question question{"AcceptanceVolume", [&](const QString& quantity) {
                                return "AcceptanceVolume * " + quantity +
                                       " >= " + statementNumber(requiredAcceptance) + " AND TankVolume * " +
                                       quantity + " >= " + statementNumber(requiredVolume);
                            }};
    return search(searchModels, sourceOf(question, series, catalogue), steps);
}

std::vector<TankOption> findConvertedModels(const QString& series, double requiredVolume,
                                            std::vector<SearchStep>* steps) {
    Connection catalogue = Gateway::openDatabase("Sys");
    const Question question{"TankVolume", [&](const QString& quantity) {
                                return "TankVolume * " + quantity + " >= " + statementNumber(requiredVolume);
                            }};
    return search(searchModels, sourceOf(question, series, catalogue), steps);
}

std::vector<TankOption> findShockModels(const QString& series, double requiredVolume, double bore,
                                        std::vector<SearchStep>* steps) {
    Connection catalogue = Gateway::openDatabase("Sys");
    const Question question{"AcceptanceVolume", [&](const QString& quantity) {
                                return "TankVolume * " + quantity + " >= " + statementNumber(requiredVolume) +
                                       " AND TankSysConn >= (1/" + quantity + "^.5) * (" +
                                       statementNumber(bore) + " * " + statementNumber(connectionShare) + ")";
                            }};
    return search(searchShockModels, sourceOf(question, series, catalogue), steps);
}
