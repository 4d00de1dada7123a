#include "extras/compare/Comparison.h"

#include "calculation/SelectionSteps.h"
#include "core/base/Text.h"
#include "documents/submittals/SizingFacts.h"
#include "shock/ShockSizing.h"
#include "sizing/Series.h"
#include "sizing/TankSizing.h"

#include <algorithm>
#include <map>

using Record::orZero;

namespace {

double reserveOf(double offered, const std::optional<double>& required) {
    return required && *required > 0 ? reserve(offered, *required) : 0;
}

/// Why the search passes over a size that would be large enough in this quantity.
QString objectionTo(double size, int quantity, const std::vector<SearchStep>& steps, bool shock) {
    const auto before = std::ranges::find_if(
        steps, [size](const SearchStep& step) { return step.smallest == size && !step.models.empty(); });
    if (before != steps.end() && before->quantity < quantity)
        return (before->quantity == 1
                    ? QStringLiteral("More tanks of the size that %1 of them offers already")
                    : QStringLiteral("More tanks of the size that %1 of them offer already"))
            .arg(before->quantity);
    return shock ? QStringLiteral("The search ends after three quantities without another size")
                 : QStringLiteral("The search looks at no more than three quantities");
}

} // namespace

bool CompareFilters::allow(const Candidate& candidate) const {
    if (offeredOnly && !candidate.isOffered())
        return false;
    if (!candidate.model)
        return !asmeOnly && !mostHeight && !mostArea;
    return (!asmeOnly || candidate.model->asme.value_or(false)) &&
           (!mostHeight || orZero(candidate.model->oal) <= *mostHeight) &&
           (!mostArea || candidate.floorArea <= *mostArea);
}

Comparison::Comparison(Application application) : compared(application) {
    for (const std::string_view series : seriesOf(application))
        pools.emplace_back(toQString(series));
}

Candidate Comparison::candidate(const ModelPool& pool, const TankLine& sized, const TankOption& option,
                                double bore) const {
    constexpr double inchesInFoot = 12;
    Candidate found{.series = pool.series(),
                    .quantity = option.quantity,
                    .model = pool.model(option.model),
                    .line = sized};
    found.line.qty = option.quantity;
    found.line.modelNo = QString::fromStdString(option.model);
    const int n = option.quantity;
    found.volume = n * option.tankVolume;
    found.acceptance = n * orZero(found.model->acceptanceVolume);
    found.volumeReserve = reserveOf(found.volume, sized.requiredVolume);
    found.acceptanceReserve = reserveOf(found.acceptance, sized.requiredAcceptance);
    found.floorArea = n * option.diameter * option.diameter / (inchesInFoot * inchesInFoot);
    found.weight = n * orZero(found.model->shipWeight);
    SizingNotes::Facts facts = SizingNotes::factsOf(found.line, *found.model);
    if (compared == Application::Shock) {
        facts.requiredConnection = leastConnection(bore, n);
        ShockSizing::setOutcome(
            found.line, ShockSizing::outcomeOf(ShockSizing::conditionsOf(sized, bore), option.tankVolume, n));
    }
    found.notes = SizingNotes::textsOf(facts);
    return found;
}

void Comparison::addSeries(std::vector<Candidate>& found, const ModelPool& pool, const TankLine& sized,
                           double bore) const {
    Requirement requirement{orZero(sized.requiredVolume), orZero(sized.requiredAcceptance)};
    if (compared == Application::Shock)
        requirement.bore = bore;
    const ModelSource source = pool.sourceFor(requirement);
    std::vector<SearchStep> steps;
    const ModelSource noted = noting(source, steps);
    const std::vector<TankOption> options = requirement.bore ? searchShockModels(noted) : searchModels(noted);
    const int last = options.empty() ? MostTanks : std::max(MostTanks, options.back().quantity);
    for (int quantity = 1; quantity <= last; ++quantity) {
        std::vector<Candidate> offered;
        for (const TankOption& option : options)
            if (option.quantity == quantity)
                offered.push_back(candidate(pool, sized, option, bore));
        if (offered.empty() && quantity <= MostTanks) {
            const auto size = source.smallest(quantity);
            for (TankOption& option : size ? source.models(*size) : std::vector<TankOption>{}) {
                option.quantity = quantity;
                offered.push_back(candidate(pool, sized, option, bore));
                offered.back().objection =
                    objectionTo(*size, quantity, steps, compared == Application::Shock);
            }
            if (!size)
                offered.push_back({.series = pool.series(),
                                   .quantity = quantity,
                                   .objection = QStringLiteral("No model is large enough"),
                                   .line = sized});
        }
        std::ranges::move(offered, std::back_inserter(found));
    }
}

std::vector<Candidate> Comparison::candidatesFor(const TankLine& conditions, double bore,
                                                 const QString& series) const {
    std::vector<Candidate> found;
    const bool shock = compared == Application::Shock;
    std::map<bool, RequiredSizes> sizes; // the same for all series but plain steel
    for (const ModelPool& pool : pools) {
        if (!series.isEmpty() && pool.series() != series)
            continue;
        TankLine sized = conditions;
        sized.tankClass = pool.series();
        if (!shock) {
            const bool steel = TankSizing::isPlainSteel(pool.series());
            if (!sizes.contains(steel))
                sizes[steel] = TankSizing::sizesOf(conditions, compared, pool.series());
            sized.requiredVolume = sizes[steel].volume;
            sized.requiredAcceptance = sizes[steel].acceptance;
        }
        addSeries(found, pool, sized, bore);
    }
    return found;
}

std::optional<PressureCurve> curveOf(const Candidate& candidate, Application application) {
    if (!candidate.model)
        return std::nullopt;
    SizedTank tank;
    tank.line = candidate.line;
    tank.model = *candidate.model;
    tank.application = application;
    return curveOf(tank);
}

bool takesSeveral(const std::vector<Candidate>& candidates, const Candidate& chosen) {
    return std::ranges::none_of(candidates, [&](const Candidate& other) {
        return other.series == chosen.series && other.quantity == 1 && other.isOffered();
    });
}
