#include "calculation/Formulas.h"

#include "core/base/Numbers.h"
#include "core/base/Text.h"

#include <QRegularExpression>

#include <algorithm>

namespace Formulas {

namespace {

constexpr Row rows[] = {
    {Id::SpecificVolumeCold, "specific-volume-cold", "v_min = A * T_min^2 + B * T_min + C"},
    {Id::SpecificVolumeHot, "specific-volume-hot", "v_max = A * T_max^2 + B * T_max + C"},
    {Id::FluidFactor, "fluid-factor", "E = round((v_max - v_min) / v_min, 5)"},
    {Id::AcceptanceFactor, "acceptance-factor", "AF = round(1 - (P_a + P_min) / (P_a + P_max), 4)"},
    {Id::SteelAcceptanceFactor, "steel-acceptance-factor",
     "AF = round(P_a / (P_a + P_min) - P_a / (P_a + P_max), 4)"},
    {Id::ExpansionAcceptance, "expansion-acceptance", "V_acc = max(round(V * E, 4), 0.1)"},
    {Id::ExpansionVolume, "expansion-volume", "V_req = max(round(V * E / AF, 4), 0.1)"},
    {Id::Drawdown, "drawdown-acceptance", "V_acc = max(round(D, 4), 0.1)"},
    {Id::DrawdownVolume, "drawdown-volume", "V_req = max(round(D / AF, 4), 0.1)"},
    {Id::SteelRatio, "steel-ratio", "r = P_a / (P_a + P_min)"},
    {Id::ConvertedVolume, "converted-volume", "V_req = max(round(P_a / (P_a + P_min) * V, 0), 0.1)"},
    {Id::Velocity, "velocity", "v = 0.409 * Q / ID^2"},
    {Id::KineticEnergy, "kinetic-energy", "e = (ID / 2)^2 * (22 / 7) * v^2 / 144"},
    {Id::TotalEnergy, "total-energy", "e_tot = L * e"},
    {Id::PressureFactor, "pressure-factor",
     "F = (37.95 - (P_kt - P_st) * 0.0241) * (P_kt - P_st) - P_st * 7.24 - 234.1"},
    {Id::ShockAcceptanceFactor, "shock-acceptance-factor", "AF = 1 - (0.9 * P_f + P_a) / (P_s + P_a)"},
    {Id::ShockAcceptance, "shock-acceptance", "V_acc = e_tot / F * 7.48"},
    {Id::ShockVolume, "shock-volume", "V_req = V_acc / AF"},
    {Id::Connection, "connection", "c = 1 / sqrt(n) * ID * 0.47"},
    {Id::PipeArea, "pipe-area", "A = (22 / 7) * (ID / 2)^2"},
    {Id::LeakLoad, "leak-load", "LL = round(AF * 19.25 * V_t * n / (L * A) * 100, 1)"},
    {Id::PumpDelay, "pump-delay", "t = round(AF * V_t * n / Q * 60, 1)"},
    {Id::VolumeReserve, "volume-reserve", "r_V = round((n * V_t / V_req - 1) * 100, 1)"},
    {Id::AcceptanceReserve, "acceptance-reserve", "r_A = round((n * A_t / V_acc - 1) * 100, 1)"},
    {Id::WaterTaken, "water-taken", "V_w = min(n * V_t * (1 - (P_a + P_min) / (P_a + P_max)), n * A_t)"},
    {Id::SteelWaterTaken, "steel-water-taken", "V_w = n * V_t * (P_a / (P_a + P_min) - P_a / (P_a + P_max))"},
    {Id::ShockWaterTaken, "shock-water-taken",
     "V_w = min(n * V_t * (1 - (P_a + 0.9 * P_f) / (P_a + P_s)), n * A_t)"},
    {Id::TakenReserve, "taken-reserve", "r_w = round((V_w / V_acc - 1) * 100, 1)"},
};

static_assert(std::ranges::all_of(rows, [](const Row& row) { return &rows[std::size_t(row.id)] == &row; }));

constexpr int mostDigits = 12;

/// Puts values in the place of names.
QString filled(const QString& text, const Values& values) {
    static const QRegularExpression name("[A-Za-z]+(_[A-Za-z]+)?");
    QString result;
    qsizetype from = 0;
    for (auto matches = name.globalMatch(text); matches.hasNext();) {
        const auto match = matches.next();
        const auto value = std::ranges::find(values, match.captured(), &Values::value_type::first);
        result += text.mid(from, match.capturedStart() - from);
        result += value == values.end() ? match.captured() : value->second;
        from = match.capturedEnd();
    }
    return result + text.mid(from);
}

/// Puts a number in the place of what a formula rounds. It gets all its digits if those of a figure would
/// round differently.
QString beforeRounding(const QString& text, double number) {
    const qsizetype start = text.indexOf("round(") + 6;
    qsizetype end = start;
    for (int depth = 0; depth > 0 || text[end] != u','; ++end)
        depth += text[end] == u'(' ? 1 : text[end] == u')' ? -1 : 0;
    const int decimals = text[end + 2].digitValue();
    const bool same = Round(toNumber(figure(number)), decimals) == Round(number, decimals);
    return text.left(start) + (same ? figure(number) : shownNumber(number)) + text.mid(end);
}

} // namespace

std::span<const Row> all() {
    return rows;
}

QString textOf(Id id) {
    return QString::fromUtf8(rows[std::size_t(id)].text);
}

QString figure(double value) {
    QString shortest = shownNumber(value);
    const auto digits =
        std::ranges::count_if(shortest.section(u'E', 0, 0), [](QChar c) { return c.isDigit(); });
    if (digits <= mostDigits)
        return shortest;
    return shownNumber(QString::number(value, 'g', mostDigits).toDouble());
}

QString operand(double value) {
    return value < 0 ? u'(' + figure(value) + u')' : figure(value);
}

QString worked(Id id, const Values& values, double result, const QString& unit,
               std::optional<double> unrounded) {
    const QString formula = textOf(id);
    const QString rule = formula.section(" = ", 1);
    QStringList parts{formula, filled(rule, values)};
    if (unrounded)
        parts.append(beforeRounding(rule, *unrounded));
    parts.append(figure(result));
    parts.removeDuplicates();
    return parts.join(" = ") + (unit.isEmpty() ? QString() : " \"" + unit + '"');
}

QString given(const QString& symbol, double value, const QString& unit) {
    return symbol + " = " + figure(value) + " \"" + unit + '"';
}

} // namespace Formulas
