#include "data/CatalogueCheck.h"
#include "core/base/Numbers.h"
#include "data/CatalogueModel.h"
#include "data/CatalogueQueries.h"
#include "data/Drawing.h"
#include "data/Vessel.h"
#include "data/Wording.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

namespace fs = std::filesystem;

namespace {

constexpr double maxShapeDeviation = .15;
constexpr double maxWeightDeviation = .10;
constexpr double minEfficiency = .15;
constexpr double maxEfficiency = .60;
constexpr double maxWeightOnPiping = 50;  // lb, for a tank hung from the piping, with the water in it
constexpr double minContainerShare = .15; // of the bounding box of a package
constexpr double maxContainerShare = .60;
constexpr double maxShockExcess = 2;        // volume of a single shock tank over the required volume
constexpr double minMainToConnection = 1.9; // 12 in over the largest connection, 6 in: 12.75 / 6.625
constexpr double litresInGallon = 3.785411784;
constexpr double gallonInCubicInches = 231;
constexpr double waterWeight = 8.345; // lb per gallon

std::string percent(double share) {
    return NumberText(Round(share * 100, 1)) + " %";
}

/// Parses "1-1/2\"" as 1.5. Anything not a number counts as 0.
double nominalSize(std::string text) {
    if (!text.ends_with('"'))
        return 0;
    text.pop_back();
    double size = 0;
    if (const auto dash = text.find('-'); dash != std::string::npos) {
        size = parseNumber(text.substr(0, dash)).value_or(0);
        text = text.substr(dash + 1);
    }
    const auto stroke = text.find('/');
    const double below = stroke == std::string::npos ? 1 : parseNumber(text.substr(stroke + 1)).value_or(0);
    return size + parseNumber(text.substr(0, stroke)).value_or(0) / below;
}

class Check {
  public:
    Check(Database& database, fs::path drawingsFolder)
        : catalogue(database), folder(std::move(drawingsFolder)) {}

    CheckResult run() {
        for (const CatalogueQuery& query : catalogueQueries())
            for (const std::string& key : catalogue.column(query.sql))
                fault(key, query.meaning);
        readDrawings();
        for (const CatalogueModel& model : readModels(catalogue))
            if (const auto drawing = drawings.find(model.drawing); drawing != drawings.end())
                checkModel(model, drawing->second);
        for (const std::string& wrong : pressureFactorFaults(catalogue))
            fault("tblPressureFactor", wrong);
        checkShockJobs();
        return std::move(result);
    }

  private:
    void fault(const std::string& subject, const std::string& what) {
        result.faults.push_back(subject + ": " + what);
    }

    void readDrawings() {
        for (const auto& row : catalogue.rows("SELECT TankDraw, X, Y, Ext FROM tblTankDrawMaster")) {
            try {
                const Drawing drawing = readDrawing(folder / (row[0] + '.' + row[3]));
                if (std::abs(drawing.widthToHeight / (toDouble(row[1]) / toDouble(row[2])) - 1) > .01)
                    fault(row[0], "its picture has not the proportions of its row");
                drawings[row[0]] = drawing;
            } catch (const std::exception& error) {
                fault(row[0], std::string("its drawing ") + error.what());
            }
        }
    }

    void checkShockJobs() {
        result.pipes = shockJobFigures(catalogue);
        for (const PipeFigures& pipe : result.pipes)
            if (pipe.larger.ratio > maxShockExcess)
                fault(pipe.pipe, "gets a " + pipe.larger.model + " of " +
                                     NumberText(Round(pipe.larger.ratio, 2)) + " times the required volume");
    }

    SeriesFigures& figures(const std::string& series) {
        const auto known = std::ranges::find(result.series, series, &SeriesFigures::series);
        if (known != result.series.end())
            return *known;
        result.series.emplace_back().series = series;
        return result.series.back();
    }

    void note(Extreme& extreme, double deviation, const CatalogueModel& model, double most,
              const std::string& what) {
        if (std::abs(deviation) >= std::abs(extreme.deviation))
            extreme = {deviation, model.name};
        if (std::abs(deviation) > most)
            fault(model.name, "its " + what + " is off by " + percent(deviation));
    }

    void checkModel(const CatalogueModel& model, const Drawing& drawing) {
        ++figures(model.series).models;
        for (const std::string& wrong : wordingFaults(model, drawing))
            fault(model.name, wrong);
        if (nominalSize(model.connectionText) != model.connection)
            fault(model.name, "its connection is " + model.connectionText + " in words and " +
                                  NumberText(model.connection) + " in figures");
        if (model.isPackage())
            checkPackage(model, drawing);
        else
            checkTank(model, drawing);
    }

    void checkTank(const CatalogueModel& model, const Drawing& drawing) {
        const double ends = baseAndNozzles(drawing, model.diameter, model.connection);
        const Vessel vessel{.diameter = model.diameter,
                            .headToHead = model.overall - ends,
                            .pressure = model.pressure,
                            .connection = model.connection,
                            .volume = model.volume,
                            .code = model.code};
        SeriesFigures& series = figures(model.series);
        note(series.shape, shellVolume(vessel) / model.volume - 1, model, maxShapeDeviation, "shape");
        note(series.weight, model.weight / plateWeight(vessel) - 1, model, maxWeightDeviation, "weight");
        const bool hangs = !drawing.ringBase && !drawing.legs && !drawing.saddles;
        const double filled = model.weight + model.acceptance * waterWeight;
        if (hangs && filled > maxWeightOnPiping)
            fault(model.name, "hangs from the piping with " + NumberText(Round(filled, 0)) + " lb");
        if (model.isShock() && !(drawing.mainBeside && drawing.mainToConnection >= minMainToConnection))
            fault(model.name, "the main of its drawing is no 12-inch line");
        checkTankName(model);
    }

    /// The number in a name is the volume in litres; in SHK 35-8 that is the part after the hyphen. Plain
    /// steel tanks have diameter and length in inches; series JWG has a numbering of its own.
    void checkTankName(const CatalogueModel& model) {
        if (model.series == "JWG")
            return;
        if (model.series == "RB") {
            if (model.name != NumberText(model.diameter) + "RB" + NumberText(model.overall))
                fault(model.name, "its name is not its diameter and length");
            return;
        }
        std::string litres = model.name.substr(model.series.size());
        litres = litres.substr(litres.find('-') + 1);
        if (litres.ends_with('L') || litres.ends_with('V'))
            litres.pop_back();
        if (std::abs(parseNumber(litres).value_or(0) - model.volume * litresInGallon) > .2)
            fault(model.name, "its name is not its volume in litres");
    }

    void checkPackage(const CatalogueModel& model, const Drawing& drawing) {
        SeriesFigures& series = figures(model.series);
        note(series.shape, model.diameter / model.overall / drawing.aToB - 1, model, maxShapeDeviation,
             "drawing's proportion");
        note(series.weight,
             model.weight /
                     packageWeight(model.volume, model.pumps(), model.horsepower, model.series == "FDM") -
                 1,
             model, maxWeightDeviation, "weight");
        const double share =
            model.volume * gallonInCubicInches / (model.diameter * model.diameter * model.overall);
        if (share < minContainerShare || share > maxContainerShare)
            fault(model.name, "its container takes " + percent(share) + " of the room");
        const char* suffix = model.series == "PKGD" ? "D" : model.series == "PKGT" ? "T" : "";
        if (model.name != model.series.substr(0, 3) + ' ' + NumberText(model.volume) + '-' +
                              (model.flow < 1 ? "0" : "") + NumberText(model.flow) + suffix)
            fault(model.name, "its name is not its gallons and the flow of one pump");
        checkPump(model, series);
    }

    void checkPump(const CatalogueModel& model, SeriesFigures& series) {
        const double efficiency = pumpEfficiency(model.flow, model.pressure, model.horsepower);
        series.lowestPower = series.models == 1 ? efficiency : std::min(series.lowestPower, efficiency);
        series.highestPower = std::max(series.highestPower, efficiency);
        if (!(efficiency >= minEfficiency && efficiency <= maxEfficiency))
            fault(model.name, "its pump has an efficiency of " + percent(efficiency));
        const auto [known, added] =
            pumpPressures.try_emplace(std::pair(model.flow, model.horsepower), model.pressure);
        if (known->second != model.pressure)
            fault(model.name, "its pump has " + NumberText(known->second) + " psi in another package");
    }

    Database& catalogue;
    fs::path folder;
    std::map<std::string, Drawing> drawings;
    std::map<std::pair<double, double>, double> pumpPressures; // by flow and horsepower
    CheckResult result;
};

} // namespace

CheckResult checkCatalogue(Database& catalogue, const fs::path& drawings) {
    return Check(catalogue, drawings).run();
}
