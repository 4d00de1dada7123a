#include "extras/import/ImportSizing.h"

#include "core/base/ApplicationNames.h"
#include "core/base/Fault.h"
#include "core/base/Text.h"
#include "core/shell/DisplayFields.h"
#include "core/store/Catalogue.h"
#include "core/store/UserDefaults.h"
#include "shock/ShockSizing.h"
#include "sizing/ConditionRules.h"
#include "sizing/FluidLimits.h"
#include "sizing/Series.h"

#include <algorithm>

namespace {

const char* const firstTag = "TagID01";

QString shockSeries() {
    return toQString(infoOf(Application::Shock).code);
}

/// The code of a series as the catalogue writes it; empty if the application has no such series.
QString seriesOf(Application application, const QString& text) {
    if (application == Application::Shock)
        return text.isEmpty() || text.compare(shockSeries(), Qt::CaseInsensitive) == 0 ? shockSeries()
                                                                                       : QString();
    const auto found = std::ranges::find_if(allSeries, [&](const Series& each) {
        return each.application == application && text.compare(each.code, Qt::CaseInsensitive) == 0;
    });
    return found == allSeries.end() ? QString() : QString(found->code);
}

/// The fluid as the list writes it; empty for one that is not there.
QString fluidOf(const QString& text) {
    for (const FluidLimits& row : fluidLimits)
        if (text.compare(toQString(row.fluid), Qt::CaseInsensitive) == 0)
            return toQString(row.fluid);
    return {};
}

/// The U.S. key of a pipe given by its metric key; any other text stays.
QString pipeOf(const QString& text) {
    if (text.contains(u'\'') || Catalogue::hasPipe(text))
        return text;
    const QString key = Catalogue::pipeIndexOf(text);
    return key.isEmpty() ? text : key;
}

/// A tag as the screen of the tags would store it: what has no hyphen and fits the first of its two boxes
/// gets one at its end.
QString tagOf(const QString& text) {
    constexpr qsizetype firstBox = 5; // characters
    return text.isEmpty() || text.contains(u'-') || text.size() > firstBox ? text : text + u'-';
}

} // namespace

ImportSizing::ImportSizing()
    : atmosphere(Records::readUserDefaults()
                     .value_or(UserDefaults())
                     .defaultPSIa.value_or(UserDefaults::StandardAtmosphere)),
      shockAtmosphere(ShockSizing::atmosphericPressure()), longestTag(Records::tankLineTextSize(firstTag)) {}

ImportSizing::~ImportSizing() = default;

/// Completes the boxes, and refuses what the screens would refuse.
void ImportSizing::check(ImportText::Line& read, Application application) const {
    QHash<QString, QString>& boxes = read.boxes;
    read.tag = tagOf(read.tag);
    if (read.tag.size() > longestTag)
        read.problems.append(QStringLiteral("Tag: no more than %1 characters.").arg(longestTag));
    else if (!std::ranges::all_of(read.tag, [](QChar each) { return each.isPrint(); }))
        read.problems.append("Tag: it has characters that cannot be shown.");
    const QStringList own = ImportText::boxesOf(application);
    if (own.contains("cmboFluidType")) {
        const QString given = boxes.value("cmboFluidType");
        boxes["cmboFluidType"] = given.isEmpty() ? toQString(fluidLimits.front().fluid) : fluidOf(given);
        if (boxes["cmboFluidType"].isEmpty()) {
            boxes["cmboFluidType"] = given;
            read.problems.append(QStringLiteral("There is no fluid \"%1\".").arg(given));
        }
    }
    const QHash<QString, QString> fixed = ConditionRules::hiddenBoxes(application);
    for (const auto& [box, text] : fixed.asKeyValueRange())
        if (own.contains(box) && fluidOf(boxes.value(box)) != text && read.problems.isEmpty())
            read.problems.append(QStringLiteral("%1: only %2.").arg(ImportText::nameOf(box), text));
    boxes.insert(fixed);
    if (own.contains("txtAtmPressure") && !boxes.contains("txtAtmPressure"))
        boxes["txtAtmPressure"] = shownNumber(atmosphere);
    if (own.contains("PipeIndex"))
        boxes["PipeIndex"] = pipeOf(boxes.value("PipeIndex"));
    if (!read.problems.isEmpty())
        return;
    const Objections wrong = application == Application::Shock
                                 ? ShockSizing::objectionsTo(boxes)
                                 : ConditionRules::objectionsTo(boxes, application);
    for (const Objection& objection : wrong)
        read.problems.append(ImportText::nameOf(objection.box) + ": " + objection.text);
}

/// Takes the first model that is offered in a series.
void ImportSizing::choose(ImportedLine& found, Application application, const QString& series, double bore) {
    const Comparison& comparison = comparisons.try_emplace(application, application).first->second;
    const std::vector<Candidate> candidates = comparison.candidatesFor(found.line, bore, series);
    const auto offered = std::ranges::find_if(
        candidates, [](const Candidate& each) { return each.model && each.isOffered(); });
    if (offered != candidates.end()) {
        found.line = offered->line;
        found.model = shownText(offered->model->modelDscrptn);
        return;
    }
    if (!candidates.empty()) {
        found.line = candidates.front().line; // with its sizes
        found.line.modelNo.reset();
        found.line.qty.reset();
    }
    found.remarks.append(QStringLiteral("No model of %1 is large enough.").arg(series));
}

ImportedLine ImportSizing::sized(const ImportText::Line& read, const ChosenSeries& series) {
    ImportedLine found{.read = read, .line = {}, .model = {}, .remarks = read.notes};
    if (!read.application)
        return found;
    const Application application = *read.application;
    const auto chosen = series.find(application);
    const QString wanted = read.series.isEmpty() && chosen != series.end() ? chosen->second : read.series;
    const QString code = seriesOf(application, wanted);
    if (code.isEmpty())
        found.read.problems.append(QStringLiteral("There is no series \"%1\" of %2s.")
                                       .arg(wanted, ApplicationNames::AppName(application)));
    else
        found.read.series = code;
    check(found.read, application);
    if (!found.isRight())
        return found;
    const QHash<QString, QString>& boxes = found.read.boxes;
    try {
        double bore = 0; // in
        if (application == Application::Shock) {
            const ShockConditions conditions = ShockSizing::conditionsIn(boxes, shockAtmosphere);
            bore = conditions.bore;
            std::optional<std::string_view> objection;
            found.line = ShockSizing::lineOf(conditions, boxes.value("PipeIndex"),
                                             ShockSizing::sizesOf(conditions, objection));
            if (objection) {
                found.read.problems.append(toQString(*objection));
                return found;
            }
        } else {
            found.line = ConditionRules::lineOf(boxes);
        }
        found.line.tankClass = code;
        choose(found, application, code, bore);
    } catch (const DatabaseFault&) {
        throw;
    } catch (const Fault& fault) {
        found.read.problems.append(QStringLiteral("These conditions cannot be sized: %1.").arg(fault.what()));
    }
    if (!found.read.tag.isEmpty())
        found.line.tags[0] = found.read.tag;
    return found;
}
