#include "extras/overview/JobLines.h"

#include "core/store/Catalogue.h"
#include "documents/submittals/SizingFacts.h"
#include "documents/tags/UnitTags.h"
#include "shock/ShockSizing.h"
#include "sizing/Series.h"

#include <QCoreApplication>
#include <QHash>

#include <algorithm>

namespace {

QString translated(const char* text) {
    return QCoreApplication::translate("JobLines", text);
}

std::optional<Application> applicationOf(const JobLine& shown) {
    if (shown.model)
        return applicationCoded(shown.model->app.value_or(QString()).toStdString());
    return applicationOfSeries(shown.line.tankClass.value_or(QString()).toStdString());
}

QStringList notesOf(const JobLine& shown, QHash<QString, double>& bores) {
    if (!shown.model)
        return {};
    SizingNotes::Facts facts = SizingNotes::factsOf(shown.line, shown.model);
    if (shown.application == Application::Shock) {
        const QString pipe = shown.line.pipeIndex.value_or(QString());
        if (!bores.contains(pipe)) // a job has few pipes and many lines
            bores.insert(pipe, Catalogue::pipeBore(pipe));
        facts.requiredConnection = ShockSizing::requiredConnection(shown.line, bores[pipe]);
    }
    return SizingNotes::textsOf(facts);
}

} // namespace

QString JobLine::state() const {
    if (line.modelNo.value_or(QString()).isEmpty())
        return translated("No model yet");
    if (!model)
        return translated("Model not in the catalogue");
    if (notes.isEmpty())
        return translated("Sized");
    return notes.size() == 1 ? translated("1 note") : translated("%1 notes").arg(notes.size());
}

QString JobLine::tags() const {
    QStringList given;
    const int units = line.qty.value_or(TankLine::MostTags); // an imported line has a tag before a quantity
    for (int unit = 0; unit < std::min(units, TankLine::MostTags); ++unit)
        if (const auto& tag = line.tags[std::size_t(unit)]; UnitTags::isGiven(tag) && !tag->isEmpty())
            given.append(*tag);
    return given.join(", ");
}

std::vector<JobLine> jobLinesOf(const QString& jobID) {
    std::vector<JobLine> all;
    QStringList names;
    std::vector<TankLine> stored = Records::tankLinesOf(jobID);
    all.reserve(stored.size());
    for (TankLine& line : stored) {
        names.append(line.modelNo.value_or(QString()));
        all.push_back({.line = std::move(line), .model = {}, .application = {}, .notes = {}});
    }
    const QHash<QString, Model> models = Catalogue::findModels(names);
    QHash<QString, double> bores;
    for (JobLine& shown : all) {
        const auto found = models.find(shown.line.modelNo.value_or(QString()).toCaseFolded());
        if (found != models.end())
            shown.model = *found;
        shown.application = applicationOf(shown);
        shown.notes = notesOf(shown, bores);
    }
    return all;
}
