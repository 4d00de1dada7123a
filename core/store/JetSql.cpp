#include "core/store/JetSql.h"

#include "core/base/Fault.h"
#include "core/base/Text.h"
#include "core/store/JetGroups.h"
#include "core/store/JetTokens.h"

#include <QList>
#include <QLocale>
#include <QSet>

using namespace JetTokens;

namespace {

QString isoDate(const QString& text) {
    const std::optional<QDate> date = readDate(text);
    if (!date)
        syntaxError(QStringLiteral("'%1' is not a date.").arg(text));
    return date->toString(Qt::ISODate);
}

QString quotedText(QString text) {
    return u'\'' + text.replace(u'\'', QStringLiteral("''")) + u'\'';
}

bool isComparison(const Token& token) {
    static const QSet<QString> signs = {QStringLiteral("="),  QStringLiteral("<"),  QStringLiteral(">"),
                                        QStringLiteral("<="), QStringLiteral(">="), QStringLiteral("<>")};
    return token.kind == Kind::Symbol && signs.contains(token.text);
}

/// Strips trailing blanks from compared texts, because stored texts have none. Returns for each parameter
/// whether it is compared like that.
QList<bool> trimComparedTexts(Tokens& tokens) {
    QList<bool> parameters;
    const auto neighbour = [&](qsizetype from, qsizetype direction) -> const Token* {
        qsizetype i = from + direction;
        while (i >= 0 && i < tokens.size() && tokens[i].kind == Kind::Blank)
            i += direction;
        return i >= 0 && i < tokens.size() ? &tokens[i] : nullptr;
    };
    for (qsizetype i = 0; i < tokens.size(); ++i) {
        if (tokens[i].kind != Kind::Text && tokens[i].kind != Kind::Parameter)
            continue;
        const Token* before = neighbour(i, -1);
        const Token* after = neighbour(i, 1);
        const bool compared = (before && isComparison(*before)) || (after && isComparison(*after));
        const bool joined = (before && isSymbol(*before, "&")) || (after && isSymbol(*after, "&"));
        if (tokens[i].kind == Kind::Parameter)
            parameters.append(compared && !joined);
        else if (compared && !joined)
            tokens[i].text = withoutTrailingBlanks(tokens[i].text);
    }
    return parameters;
}

/// Words between expressions; every other word is part of one.
bool isKeyword(const Token& token) {
    static const QSet<QString> words = [] {
        const QString all = QStringLiteral("SELECT DISTINCT ALL TOP FROM WHERE AND OR NOT LIKE IN IS BETWEEN "
                                           "ON BY HAVING AS JOIN INNER LEFT "
                                           "RIGHT OUTER GROUP ORDER ASC DESC UNION LIMIT OFFSET SET VALUES "
                                           "INTO INSERT UPDATE DELETE CASE WHEN "
                                           "THEN ELSE END ESCAPE");
        const QStringList list = all.split(u' ');
        return QSet<QString>(list.begin(), list.end());
    }();
    return token.kind == Kind::Word && words.contains(token.text.toUpper());
}

/// Writes tokens in an engine's dialect. Parses expressions so that each operator gets the right operands;
/// everything else is copied.
class Writer {
  public:
    Writer(const Tokens& all, const SqlDialect& sqlDialect) : tokens(all), dialect(sqlDialect) {}

    QString write() {
        QString text;
        while (position < tokens.size()) {
            if (isWord(tokens[position], "LIKE"))
                text += pattern();
            else
                text += startsOperand() ? joined() : passedOn();
        }
        return text;
    }

  private:
    bool startsOperand() const {
        const Token& token = tokens[position];
        switch (token.kind) {
        case Kind::Text:
        case Kind::Number:
        case Kind::Date:
        case Kind::Name:
        case Kind::Parameter:
            return true;
        case Kind::Word:
            return !isKeyword(token);
        case Kind::Symbol:
            return token.text == u"(" || token.text == u"-" || token.text == u"+";
        case Kind::Blank:
            return false;
        }
        return false;
    }

    QString passedOn() {
        const Token& token = tokens[position++];
        for (const char* sign : {"^", "/", "&"})
            if (isSymbol(token, sign))
                syntaxError(QStringLiteral("an operator without a left side."));
        return token.text;
    }

    /// LIKE and the pattern after it, up to an ESCAPE.
    QString pattern() {
        ++position;
        skipBlanks(tokens, position);
        QString text = dialect.likeWord() + u' ';
        if (position >= tokens.size() || !startsOperand())
            return text;
        text += joined();
        qsizetype next = position;
        skipBlanks(tokens, next);
        return next < tokens.size() && isWord(tokens[next], "ESCAPE") ? text : text + dialect.withoutEscape();
    }

    /// Consumes the next symbol, after blanks, if it is one of these.
    bool take(std::initializer_list<const char*> signs, QString* taken = nullptr) {
        qsizetype next = position;
        skipBlanks(tokens, next);
        if (next >= tokens.size())
            return false;
        for (const char* sign : signs) {
            if (!isSymbol(tokens[next], sign))
                continue;
            position = next + 1;
            skipBlanks(tokens, position);
            if (taken)
                *taken = QLatin1String(sign);
            return true;
        }
        return false;
    }

    // The operators in order of precedence, loosest first.
    QString joined() {
        QString left = sum();
        while (take({"&"}))
            left = dialect.joined(left, sum());
        return left;
    }

    QString sum() {
        QString left = product();
        for (QString sign; take({"+", "-"}, &sign);)
            left += u' ' + sign + u' ' + product();
        return left;
    }

    QString product() {
        QString left = signedPower();
        for (QString sign; take({"*", "/"}, &sign);) {
            const QString right = signedPower();
            left = sign == u"/" ? dialect.quotient(left, right) : left + QStringLiteral(" * ") + right;
        }
        return left;
    }

    QString signedPower() {
        if (take({"-"}))
            return u'-' + signedPower();
        take({"+"});
        QString base = operand();
        while (take({"^"}))
            base = dialect.power(base, take({"-"}) ? u'-' + operand() : operand());
        return base;
    }

    /// One value, or a parenthesis with its function name and contents.
    QString operand() {
        if (position >= tokens.size() || !startsOperand())
            syntaxError(QStringLiteral("an operator without a right side."));
        const Token& token = tokens[position++];
        switch (token.kind) {
        case Kind::Text:
            return quotedText(token.text);
        case Kind::Date:
            return quotedText(isoDate(token.text));
        case Kind::Number:
            return dialect.number(token.text);
        case Kind::Parameter:
            return dialect.parameter(token.text.toInt());
        case Kind::Name:
        case Kind::Word:
            return name(token);
        default:
            return token.text == u"(" ? parenthesis() : token.text;
        }
    }

    QString name(const Token& token) {
        const auto part = [this](const Token& word) {
            return word.kind == Kind::Name ? dialect.quotedName(word.text) : word.text;
        };
        if (isWord(token, "TRUE") || isWord(token, "FALSE"))
            return dialect.truth(isWord(token, "TRUE"));
        QString text = isWord(token, "DateValue") ? dialect.dayFunction() : part(token);
        while (position < tokens.size() && isSymbol(tokens[position], ".")) { // table.column
            ++position;
            text += u'.';
            if (position < tokens.size() && tokens[position].kind != Kind::Blank)
                text += part(tokens[position++]);
        }
        if (position >= tokens.size() || !isSymbol(tokens[position], "("))
            return text;
        ++position;
        return text + parenthesis();
    }

    /// The contents of a parenthesis whose opening symbol has been read.
    QString parenthesis() {
        Tokens inside;
        int depth = 1;
        while (position < tokens.size()) {
            const Token& token = tokens[position++];
            depth += isSymbol(token, "(") ? 1 : isSymbol(token, ")") ? -1 : 0;
            if (depth == 0)
                return u'(' + Writer(inside, dialect).write() + u')';
            inside.append(token);
        }
        syntaxError(QStringLiteral("a parenthesis does not end."));
    }

    const Tokens tokens;
    const SqlDialect& dialect;
    qsizetype position = 0;
};

/// The order that the last table of a plain statement gives to its rows: in a join it is the one that is read
/// through, the others are looked up. Empty if the statement says itself what comes first, or has no rows of
/// a table.
QString naturalOrder(const Tokens& tokens, const SqlDialect& dialect) {
    const Tokens words = withoutBlanks(tokens);
    if (words.isEmpty() || !isWord(words[0], "SELECT"))
        return {};
    qsizetype last = -1;
    for (qsizetype i = 1; i < words.size(); ++i) {
        for (const char* word : {"SELECT", "DISTINCT", "GROUP", "ORDER", "UNION", "LIMIT", "TOP", "COUNT",
                                 "MAX", "MIN", "SUM", "AVG", "GROUP_CONCAT", "STRING_AGG"})
            if (isWord(words[i], word))
                return {};
        if (isWord(words[i], "FROM") || isWord(words[i], "JOIN"))
            last = i + 1;
    }
    if (last < 0 || last >= words.size() || !isName(words[last]))
        return {};
    Token shown = words[last]; // the table, or what the statement calls it
    qsizetype next = last + 1;
    if (next + 1 < words.size() && isWord(words[next], "AS"))
        ++next;
    if (next < words.size() && isName(words[next]) && !isKeyword(words[next]))
        shown = words[next];
    QStringList columns = dialect.naturalOrder(words[last].text);
    const QString table = shown.kind == Kind::Name ? dialect.quotedName(shown.text) : shown.text;
    for (QString& column : columns)
        column.prepend(table + u'.');
    return columns.isEmpty() ? QString() : QStringLiteral(" ORDER BY ") + columns.join(QStringLiteral(", "));
}

QString updatableTable(const Tokens& tokens) {
    const Tokens words = withoutBlanks(tokens);
    const bool selectAll = words.size() >= 4 && isWord(words[0], "SELECT") && isSymbol(words[1], "*") &&
                           isWord(words[2], "FROM") &&
                           (words[3].kind == Kind::Word || words[3].kind == Kind::Name);
    if (!selectAll || (words.size() > 4 && !isWord(words[4], "WHERE") && !isWord(words[4], "ORDER")))
        return {};
    return words[3].text;
}

} // namespace

std::optional<QDate> readDate(const QString& text) {
    const QLocale locale;
    QString format = locale.dateFormat(QLocale::ShortFormat);
    for (const QString& pattern : {QString(format)
                                       .replace(QStringLiteral("yyyy"), QStringLiteral("yy"))
                                       .replace(QStringLiteral("yy"), QStringLiteral("yyyy")),
                                   format, QStringLiteral("M/d/yyyy"), QStringLiteral("yyyy-MM-dd")}) {
        const QDate date = locale.toDate(text.trimmed(), pattern);
        constexpr int firstYear = 100; // the range of dates that a database holds
        constexpr int lastYear = 9999;
        if (date.isValid() && date.year() >= firstYear && date.year() <= lastYear) {
            constexpr int centuryTurn = 1930; // two digits mean 1930 to 2029
            return date.year() < centuryTurn && !pattern.contains(QStringLiteral("yyyy")) ? date.addYears(100)
                                                                                          : date;
        }
    }
    return std::nullopt;
}

JetStatement rewriteJetSql(const QString& statement, const SqlDialect& dialect) {
    Tokens tokens = tokensOf(statement);
    for (qsizetype i = 0; i < tokens.size(); ++i) {
        if (!isWord(tokens[i], "DELETE"))
            continue;
        qsizetype star = i + 1;
        skipBlanks(tokens, star);
        if (star < tokens.size() && isSymbol(tokens[star], "*"))
            tokens.removeAt(star);
        break;
    }
    while (!tokens.isEmpty() && (tokens.last().kind == Kind::Blank || isSymbol(tokens.last(), ";")))
        tokens.removeLast(); // more may follow: the order of the rows
    const QList<bool> compared = trimComparedTexts(tokens);
    const Tokens ordered = groupedToOrdered(tokens);
    return {Writer(dialect.nullsAreLargest() ? withNullsFirst(ordered) : ordered, dialect).write() +
                naturalOrder(tokens, dialect),
            compared, updatableTable(tokens)};
}
