#include "setup/pages/HelpWords.h"

#include <QRegularExpression>

#include <algorithm>
#include <array>

namespace {

/// What the trade says, and what the pages say. In lower case; longer phrases stand before their parts.
struct Synonym {
    const char* said;
    std::array<const char*, 3> written; // the rest null
};
constexpr Synonym synonyms[] = {
    {"domestic hot water", {"water heater", "thermal expansion"}},
    {"pressure reducing valve", {"reducing valve"}},
    {"compression tank", {"plain steel"}},
    {"surge vessel", {"shock arrestor"}},
    {"cut sheet", {"submittal"}},
    {"data sheet", {"submittal"}},
    {"safety valve", {"relief valve"}},
    {"pop safety", {"relief valve"}},
    {"t&p", {"relief valve"}},
    {"air cushion", {"precharge"}},
    {"cold fill", {"fill pressure"}},
    {"accumulator", {"hydropneumatic", "shock arrestor"}},
    {"altitude", {"atmospheric pressure"}},
    {"antifreeze", {"glycol"}},
    {"backup", {"restore"}},
    {"booster", {"hydropneumatic", "drawdown"}},
    {"brine", {"glycol"}},
    {"buffer", {"hydropneumatic", "drawdown"}},
    {"cut-in", {"minimum pressure", "pump starts"}},
    {"cut-out", {"maximum pressure", "pump stops"}},
    {"cylinder", {"water heater"}},
    {"dhw", {"water heater", "thermal expansion"}},
    {"elevation", {"altitude", "static height"}},
    {"freeze", {"glycol"}},
    {"hammer", {"shock"}},
    {"head", {"static height"}},
    {"hvac", {"heating", "expansion tanks"}},
    {"inhibitor", {"glycol"}},
    {"prv", {"reducing valve", "relief valve"}},
    {"recover", {"restore", "undo"}},
    {"spreadsheet", {"excel"}},
    {"surge", {"shock", "hammer"}},
    {"vessel", {"tank"}},
    {"waterlogged", {"plain steel", "precharge"}},
    {"well", {"hydropneumatic"}},
    {"word", {"rtf"}},
    {"zip", {"postal code"}},
};

/// A term for the engine: its last word may go on, so that valve finds valves.
QString searched(QString term) {
    return u'"' + term.remove(u'"') + "\"*";
}

} // namespace

HelpQuery widenedQuery(const QString& typed) {
    static const QRegularExpression separators("[^\\w&-]+", QRegularExpression::UseUnicodePropertiesOption);
    QString rest = u' ' + typed.toLower().split(separators, Qt::SkipEmptyParts).join(u' ') + u' ';
    QStringList groups;
    HelpQuery query;
    const auto take = [&](const QString& term, const QStringList& others) {
        QStringList any = {searched(term)};
        for (const QString& other : others)
            any.append(searched(other));
        groups.append(u'(' + any.join(" OR ") + u')');
        query.typed.append(term);
        query.wider += others;
    };
    for (const Synonym& synonym : synonyms) {
        const QString said = QString::fromLatin1(synonym.said);
        const qsizetype at = rest.indexOf(u' ' + said);
        // The plural counts, too.
        const QString behind = at < 0 ? QString() : rest.mid(at + 1 + said.size());
        if (at < 0 || !(behind.startsWith(u' ') || behind.startsWith(u"s ")))
            continue;
        QStringList others;
        for (const char* other : synonym.written)
            if (other)
                others.append(QString::fromLatin1(other));
        take(said, others);
        rest.replace(at, said.size() + 1 + (behind.startsWith(u's') ? 1 : 0), u' ');
    }
    for (const QString& word : rest.split(u' ', Qt::SkipEmptyParts))
        take(word, {});
    query.expression = groups.join(" AND ");
    return query;
}

int titleRank(const QString& title, const HelpQuery& query) {
    const QString words = u' ' + title.toLower();
    const auto held = [&words](const QStringList& terms) {
        return int(std::ranges::count_if(
            terms, [&words](const QString& term) { return words.contains(u' ' + term); }));
    };
    constexpr int typedWord = 100; // counts more than all synonyms
    return typedWord * held(query.typed) + held(query.wider);
}
