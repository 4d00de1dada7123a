#include "core/store/JetGroups.h"

#include <algorithm>
#include <optional>

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

/// The terms of a condition, without blanks, all of which must hold; empty if some need not.
QList<Tokens> termsOf(const Tokens& condition) {
    for (const char* word : {"OR", "NOT", "BETWEEN", "CASE"})
        if (std::ranges::any_of(condition, [word](const Token& token) { return isWord(token, word); }))
            return {};
    QList<Tokens> terms(1);
    int depth = 0;
    for (const Token& token : condition) {
        depth += isSymbol(token, "(") ? 1 : isSymbol(token, ")") ? -1 : 0;
        if (depth == 0 && isWord(token, "AND"))
            terms.append(Tokens());
        else
            terms.last().append(token);
    }
    return terms;
}

/// A column and the least value that a term lets it have.
struct Bound {
    Token column;
    Tokens least;
};

/// From "column * 3 >= 40" what it means for the column itself, which an index can find: the quotient,
/// rounded well down because the product is rounded as well. From "column >= 2 * (3 + 4)" just that. Nothing
/// from any other term.
std::optional<Bound> boundOf(const Tokens& term) {
    constexpr qsizetype lengthOfProduct = 5;
    if (term.size() < 3 || !isName(term[0]))
        return std::nullopt;
    const auto isFigure = [](const Token& token) {
        return token.kind == Kind::Number || token.kind == Kind::Symbol;
    };
    if (isSymbol(term[1], ">=") && std::all_of(term.begin() + 2, term.end(), isFigure))
        return Bound{term[0], term.mid(2)};
    if (term.size() != lengthOfProduct || !isSymbol(term[1], "*") || term[2].kind != Kind::Number ||
        !isSymbol(term[3], ">=") || term[4].kind != Kind::Number)
        return std::nullopt;
    const double factor = term[2].text.toDouble();
    const double least = term[4].text.toDouble();
    constexpr double rounding = 1e-12;
    constexpr int allDigits = 17;
    if (!(factor > 0 && least > 0))
        return std::nullopt;
    return Bound{term[0], {{Kind::Number, QString::number(least / factor * (1 - rounding), 'g', allDigits)}}};
}

/// The first row in the order of a column, among the rows of a series that meet a condition. The condition's
/// bounds on the column are where the walk along the index begins. Those on other columns are first held
/// against the greatest value in the series, so that a walk which cannot end at a row does not begin.
Tokens firstOfSeries(const Token& column, const Token& table, const Tokens& series, const Tokens& condition) {
    Line line;
    Line promising;
    line << "WHERE" << series;
    for (const Tokens& term : termsOf(withoutBlanks(condition))) {
        const std::optional<Bound> bound = boundOf(term);
        if (!bound)
            continue;
        if (isSame(bound->column, column)) {
            line << "AND" << column << ">=" << bound->least;
            continue;
        }
        promising << (promising.tokens.isEmpty() ? "CASE WHEN" : "AND");
        promising << "( SELECT MAX (" << bound->column << ") FROM" << table << "WHERE" << series
                  << ") >=" << bound->least;
    }
    if (!condition.isEmpty())
        line << "AND (" << condition << ")";
    line << "ORDER BY" << column << "NULLS LAST LIMIT";
    if (promising.tokens.isEmpty())
        line << "1";
    else
        line << promising.tokens << "THEN 1 ELSE 0 END";
    return line.tokens;
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
    Line line;
    if (asksForMinimum(asked)) { // the same without the function
        line << asked[0] << asked[3] << asked[5] << asked[6] << asked[7] << asked[8];
        line << firstOfSeries(asked[3], asked[8], series, condition);
        return line.tokens;
    }
    line << head << "WHERE" << series;
    if (hasWhere)
        line << "AND (" << condition << ")";
    line << tokens.mid(at.group, at.having - at.group);
    return line.tokens;
}

} // namespace JetTokens
