#include "core/store/JetGroups.h"

#include <algorithm>

namespace JetTokens {

namespace {

/// Where the parts of a statement on one group begin.
struct Places {
    qsizetype where = -1; // -1 if there is none
    qsizetype group = -1;
    qsizetype having = -1;
};

Places placesIn(const Tokens& tokens) {
    Places places;
    for (qsizetype i = 0; i < tokens.size(); ++i) {
        if (isWord(tokens[i], "GROUP"))
            places.group = i;
        else if (isWord(tokens[i], "HAVING"))
            places.having = i;
        else if (isWord(tokens[i], "WHERE"))
            places.where = i;
    }
    return places;
}

bool isSame(const Token& one, const Token& other) {
    return one.kind == other.kind && one.text.compare(other.text, Qt::CaseInsensitive) == 0;
}

/// Whether "GROUP BY column" and "column = literal" go together.
bool fits(const Tokens& grouping, const Tokens& condition) {
    return grouping.size() == 3 && condition.size() == 3 && condition[0].kind == Kind::Word &&
           isSymbol(condition[1], "=") &&
           (condition[2].kind == Kind::Text || condition[2].kind == Kind::Parameter) &&
           isSame(grouping[2], condition[0]);
}

/// Whether these are "SELECT Min(column) AS name FROM table".
bool asksForMinimum(const Tokens& all) {
    return all.size() == 9 && isWord(all[0], "SELECT") && isWord(all[1], "MIN") && isSymbol(all[2], "(") &&
           isName(all[3]) && isSymbol(all[4], ")") && isWord(all[5], "AS") && isName(all[6]) &&
           isWord(all[7], "FROM") && isName(all[8]);
}

/// Writes tokens with a blank after each.
class Line {
  public:
    Line& operator<<(const Token& token) {
        tokens << token << Token{Kind::Blank, QStringLiteral(" ")};
        return *this;
    }
    Line& operator<<(const Tokens& more) {
        tokens << more;
        return *this << Token{Kind::Blank, QString()};
    }
    Line& operator<<(const char* words) { return *this << tokensOf(QLatin1String(words)); }
    Tokens tokens;
};

/// From "column * 3 >= 40", all of whose terms must hold, what it means for the column itself, which an index
/// can find: the quotient, rounded well down because the product is rounded as well. Empty if there is no
/// such term.
Tokens lowerBound(const Tokens& condition, const Token& column) {
    for (const char* word : {"OR", "NOT", "BETWEEN", "CASE"})
        if (std::ranges::any_of(condition, [word](const Token& token) { return isWord(token, word); }))
            return {};
    constexpr qsizetype length = 5;
    int depth = 0;
    for (qsizetype i = 0; i + length <= condition.size(); ++i) {
        depth += isSymbol(condition[i], "(") ? 1 : isSymbol(condition[i], ")") ? -1 : 0;
        const bool begins = i == 0 || isWord(condition[i - 1], "AND");
        const bool ends = i + length == condition.size() || isWord(condition[i + length], "AND");
        if (depth != 0 || !begins || !ends || !isSame(condition[i], column) ||
            !isSymbol(condition[i + 1], "*") || condition[i + 2].kind != Kind::Number ||
            !isSymbol(condition[i + 3], ">=") || condition[i + 4].kind != Kind::Number)
            continue;
        const double factor = condition[i + 2].text.toDouble();
        const double least = condition[i + 4].text.toDouble();
        constexpr double rounding = 1e-12;
        constexpr int allDigits = 17;
        if (factor > 0 && least > 0)
            return {column,
                    {Kind::Symbol, QStringLiteral(">=")},
                    {Kind::Number, QString::number(least / factor * (1 - rounding), 'g', allDigits)}};
    }
    return {};
}

/// Where one of the columns that order the rows ends.
qsizetype endOfOrder(const Tokens& tokens, qsizetype begin) {
    int depth = 0;
    for (qsizetype i = begin; i < tokens.size(); ++i) {
        depth += isSymbol(tokens[i], "(") ? 1 : isSymbol(tokens[i], ")") ? -1 : 0;
        if (depth < 0 || (depth == 0 && (isSymbol(tokens[i], ",") || isWord(tokens[i], "LIMIT") ||
                                         isWord(tokens[i], "OFFSET") || isWord(tokens[i], "UNION"))))
            return i;
    }
    return tokens.size();
}

/// What to add to such a column, in which the smallest come last if it is descending.
Tokens nullsFirst(const Tokens& column) {
    const auto has = [&](const char* word) {
        return std::ranges::any_of(column, [word](const Token& token) { return isWord(token, word); });
    };
    return tokensOf(has("NULLS")  ? QString()
                    : has("DESC") ? QStringLiteral(" NULLS LAST ")
                                  : QStringLiteral(" NULLS FIRST "));
}

} // namespace

Tokens withNullsFirst(const Tokens& tokens) {
    Tokens all;
    qsizetype i = 0;
    while (i < tokens.size()) {
        all << tokens[i++];
        if (!isWord(all.last(), "ORDER"))
            continue;
        for (bool more = true; more && i < tokens.size();) {
            const qsizetype end = endOfOrder(tokens, i);
            all << tokens.mid(i, end - i) << nullsFirst(tokens.mid(i, end - i));
            i = end;
            more = i < tokens.size() && isSymbol(tokens[i], ",");
            if (more)
                all << tokens[i++];
        }
    }
    return all;
}

Tokens groupedToOrdered(const Tokens& tokens) {
    const Places at = placesIn(tokens);
    if (at.group < 0 || at.having < at.group)
        return tokens;
    const Tokens series = withoutBlanks(tokens.mid(at.having + 1));
    if (!fits(withoutBlanks(tokens.mid(at.group, at.having - at.group)), series))
        return tokens;
    const bool hasWhere = at.where >= 0 && at.where < at.group;
    const Tokens condition = hasWhere ? tokens.mid(at.where + 1, at.group - at.where - 1) : Tokens();
    const Tokens head = tokens.first(hasWhere ? at.where : at.group);
    const Tokens asked = withoutBlanks(head);
    const bool minimum = asksForMinimum(asked);
    Line line;
    if (minimum) // the same without the function
        line << asked[0] << asked[3] << asked[5] << asked[6] << asked[7] << asked[8];
    else
        line << head;
    line << "WHERE" << series;
    if (const Tokens bound = minimum ? lowerBound(withoutBlanks(condition), asked[3]) : Tokens();
        !bound.isEmpty())
        line << "AND" << bound;
    if (hasWhere)
        line << "AND (" << condition << ")";
    if (minimum)
        line << "ORDER BY" << asked[3] << "NULLS LAST LIMIT 1";
    else
        line << tokens.mid(at.group, at.having - at.group);
    return line.tokens;
}

} // namespace JetTokens
