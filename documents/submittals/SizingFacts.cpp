#include "documents/submittals/SizingFacts.h"

#include "core/base/Applications.h"
#include "core/store/JobHeader.h"

namespace SizingNotes {

namespace {

std::string plain(const std::optional<QString>& text) {
    return text.value_or(QString()).toStdString();
}

} // namespace

Facts factsOf(const TankLine& tank, const std::optional<Model>& model) {
    const bool shock = tank.shockPressure.has_value();
    const bool conversion = tank.jobID == Records::reservedJob();
    Facts facts{.minimumPressure = tank.sopMin,
                .maximumPressure = shock ? tank.shockPressure : tank.sopMax,
                .atmosphere = tank.atmPressure,
                .maximumTemperature = tank.sotMax,
                .volume = tank.totSysVolume,
                .requiredVolume = tank.requiredVolume,
                .requiredAcceptance = conversion ? std::nullopt : tank.requiredAcceptance,
                .series = plain(tank.tankClass),
                .plainSteel = plain(tank.tankClass) == plainSteelSeries,
                .conversion = conversion,
                .shock = shock,
                .model = plain(tank.modelNo),
                .quantity = tank.qty.value_or(0)};
    facts.flowPressure = tank.flowPressure;
    facts.staticPressure = tank.staticPressure;
    if (!model)
        return facts;
    facts.modelKnown = true;
    facts.modelSeries = plain(model->series);
    facts.workingPressure = model->tankWkPressure;
    facts.leastPressure = model->minSysPressure;
    facts.temperatureRating = model->maxTemp;
    facts.tankVolume = model->tankVolume;
    facts.tankAcceptance = model->acceptanceVolume;
    facts.connection = model->tankSysConn;
    return facts;
}

QStringList textsOf(const Facts& facts) {
    QStringList texts;
    for (const std::string& note : all(facts))
        texts.append(QString::fromStdString(note));
    return texts;
}

} // namespace SizingNotes
