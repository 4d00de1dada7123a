#include "core/store/JetSql.h"

#include "core/base/Fault.h"

#include <QList>
#include <QLocale>

namespace {

enum class Kind { Blank, Word, Name, Number, Text, Date, Symbol };

struct Token {
    Kind kind;
    QString text; // a name without brackets, a quoted text without quotes, all else as written
};

using Tokens = QList<Token>;

[[noreturn]] void syntaxError(const QString& what) {
    throw DatabaseFault(DatabaseFault::SyntaxError, ("Syntax error in query: " + what).toStdString());
}

bool isWordCharacter(QChar c) {
    return c.isLetterOrNumber() || c == u'_';
}

/// Reads statement text token by token.
class Tokenizer {
  public:
    explicit Tokenizer(const QString& statement) : source(statement) {}

    Tokens all() {
        Tokens tokens;
        while (position < source.size())
            tokens.append(next());
        return tokens;
    }

  private:
    Token next() {
        const QChar c = source[position];
        if (c.isNull())
            syntaxError(QStringLiteral("a character that no statement can hold."));
        if (c.isSpace())
            return {Kind::Blank, takeWhile([](QChar x) { return x.isSpace(); })};
        if (c == u'\'' || c == u'"')
            return {Kind::Text, takeQuoted(c)};
        if (c == u'[')
            return {Kind::Name, takeUntil(u']', QStringLiteral("a name in brackets"))};
        if (c == u'#')
            return {Kind::Date, takeUntil(u'#', QStringLiteral("a date"))};
        if (c.isDigit() || (c == u'.' && peek(1).isDigit()))
            return {Kind::Number, takeNumber()};
        if (isWordCharacter(c))
            return {Kind::Word, takeWhile(isWordCharacter)};
        const QString two = source.mid(position, 2);
        if (two == u"<=" || two == u">=" || two == u"<>") {
            position += 2;
            return {Kind::Symbol, two};
        }
        // Comments belong to the engine's own dialect and would hide the rest of a statement.
        if (two == u"--" || two == u"/*")
            syntaxError(QStringLiteral("'%1'.").arg(two));
        ++position;
        return {Kind::Symbol, QString(c)};
    }

    QChar peek(qsizetype ahead) const {
        return position + ahead < source.size() ? source[position + ahead] : QChar();
    }

    template<typename Predicate>
    QString takeWhile(Predicate belongs) {
        const qsizetype start = position;
        while (position < source.size() && belongs(source[position]))
            ++position;
        return source.mid(start, position - start);
    }

    QString takeQuoted(QChar quote) {
        QString text;
        for (++position; position < source.size(); ++position) {
            if (source[position] != quote) {
                text += source[position];
            } else if (peek(1) == quote) {
                text += quote;
                ++position;
            } else {
                ++position;
                return text;
            }
        }
        syntaxError(QStringLiteral("a quoted text does not end."));
    }

    QString takeUntil(QChar end, const QString& what) {
        const qsizetype stop = source.indexOf(end, position + 1);
        if (stop < 0)
            syntaxError(what + QStringLiteral(" does not end."));
        QString text = source.mid(position + 1, stop - position - 1);
        position = stop + 1;
        return text;
    }

    QString takeNumber() {
        const auto digit = [](QChar x) { return x.isDigit(); };
        QString text = takeWhile(digit);
        if (peek(0) == u'.') {
            ++position;
            text += u'.' + takeWhile(digit);
        }
        if (peek(0).toUpper() == u'E') {
            const qsizetype sign = peek(1) == u'+' || peek(1) == u'-' ? 1 : 0;
            if (peek(1 + sign).isDigit()) {
                text += source.mid(position, 1 + sign);
                position += 1 + sign;
                text += takeWhile(digit);
            }
        }
        return text;
    }

    const QString& source;
    qsizetype position = 0;
};

bool isWord(const Token& token, const char* word) {
    return token.kind == Kind::Word && token.text.compare(QLatin1String(word), Qt::CaseInsensitive) == 0;
}

bool isSymbol(const Token& token, const char* symbol) {
    return token.kind == Kind::Symbol && token.text == QLatin1String(symbol);
}

QString isoDate(const QString& text) {
    const std::optional<QDate> date = ReadDate(text);
    if (!date)
        syntaxError(QStringLiteral("'%1' is not a date.").arg(text));
    return date->toString(Qt::ISODate);
}

QString quotedText(QString text) {
    return u'\'' + text.replace(u'\'', QStringLiteral("''")) + u'\'';
}

void skipBlanks(const Tokens& tokens, qsizetype& i) {
    while (i < tokens.size() && tokens[i].kind == Kind::Blank)
        ++i;
}

/// Moves "GROUP BY column HAVING column = literal" in front, as a WHERE on the same rows: a group either
/// has the value in all its rows or in none.
Tokens havingToWhere(const Tokens& tokens) {
    qsizetype group = -1;
    qsizetype having = -1;
    qsizetype where = -1;
    for (qsizetype i = 0; i < tokens.size(); ++i) {
        if (isWord(tokens[i], "GROUP"))
            group = i;
        else if (isWord(tokens[i], "HAVING"))
            having = i;
        else if (isWord(tokens[i], "WHERE"))
            where = i;
    }
    if (group < 0 || having < group)
        return tokens;
    const auto significant = [&](qsizetype from, qsizetype to) {
        Tokens found;
        for (qsizetype i = from; i < to; ++i)
            if (tokens[i].kind != Kind::Blank)
                found.append(tokens[i]);
        return found;
    };
    const Tokens grouping = significant(group, having);
    const Tokens condition = significant(having + 1, tokens.size());
    const bool fits = grouping.size() == 3 && condition.size() == 3 && condition[0].kind == Kind::Word &&
                      isSymbol(condition[1], "=") && condition[2].kind == Kind::Text &&
                      grouping[2].text.compare(condition[0].text, Qt::CaseInsensitive) == 0;
    if (!fits)
        return tokens;
    const Token blank{Kind::Blank, QStringLiteral(" ")};
    Tokens moved = tokens.first(where < 0 ? group : where + 1);
    if (where < 0)
        moved << Token{Kind::Word, QStringLiteral("WHERE")};
    moved << blank << condition;
    if (where >= 0)
        moved << blank << Token{Kind::Word, QStringLiteral("AND")} << blank
              << Token{Kind::Symbol, QStringLiteral("(")} << tokens.mid(where + 1, group - where - 1)
              << Token{Kind::Symbol, QStringLiteral(")")};
    moved << blank << tokens.mid(group, having - group);
    return moved;
}

/// Writes tokens as SQLite's text. Operands are kept as pieces, so that ^ and & can take the ones beside.
class Writer {
  public:
    explicit Writer(const Tokens& all) : tokens(all) {}

    QString write() {
        while (position < tokens.size())
            step();
        return pieces.join(QString());
    }

  private:
    void step() {
        const Token& token = tokens[position];
        if (isSymbol(token, "^"))
            power();
        else if (isSymbol(token, "&"))
            concatenate();
        else if (isSymbol(token, "/"))
            divide();
        else
            pieces.append(operand());
    }

    /// One token, or a parenthesis with its function name and all that stands inside.
    QString operand() {
        const Token& token = tokens[position++];
        switch (token.kind) {
        case Kind::Text:
            return quotedText(token.text);
        case Kind::Name:
            return QuotedName(token.text);
        case Kind::Date:
            return quotedText(isoDate(token.text));
        case Kind::Word:
            return word(token);
        case Kind::Symbol:
            return token.text == u"(" ? parenthesis() : token.text;
        default:
            return token.text;
        }
    }

    QString word(const Token& token) {
        QString text = isWord(token, "DateValue") ? QStringLiteral("date") : token.text;
        while (position < tokens.size() && isSymbol(tokens[position], ".")) { // table.column
            ++position;
            text += u'.';
            if (position < tokens.size() && tokens[position].kind != Kind::Blank)
                text += operand();
        }
        const bool call = position < tokens.size() && isSymbol(tokens[position], "(");
        if (!call)
            return text;
        ++position;
        return text + parenthesis();
    }

    /// What stands in a parenthesis whose opening sign has been read.
    QString parenthesis() {
        Tokens inside;
        int depth = 1;
        while (position < tokens.size()) {
            const Token& token = tokens[position++];
            depth += isSymbol(token, "(") ? 1 : isSymbol(token, ")") ? -1 : 0;
            if (depth == 0)
                return u'(' + Writer(inside).write() + u')';
            inside.append(token);
        }
        syntaxError(QStringLiteral("a parenthesis does not end."));
    }

    QString left() {
        while (!pieces.isEmpty() && pieces.last().trimmed().isEmpty())
            pieces.removeLast();
        if (pieces.isEmpty())
            syntaxError(QStringLiteral("an operator without a left side."));
        return pieces.takeLast();
    }

    QString right() {
        ++position;
        skipBlanks(tokens, position);
        QString sign;
        if (position < tokens.size() && isSymbol(tokens[position], "-")) {
            sign = QStringLiteral("-");
            ++position;
        }
        if (position >= tokens.size())
            syntaxError(QStringLiteral("an operator without a right side."));
        return sign + operand();
    }

    void power() {
        const QString base = left();
        pieces.append(QStringLiteral("JetPower(%1, %2)").arg(base, right()));
    }

    void concatenate() { // a null counts as an empty text
        const QString before = left();
        const QString start = before.startsWith(QStringLiteral("(IFNULL("))
                                  ? before
                                  : QStringLiteral("(IFNULL(%1, ''))").arg(before);
        pieces.append(QStringLiteral("(%1 || IFNULL(%2, ''))").arg(start, right()));
    }

    void divide() { // "* 1.0" makes a fraction of whole numbers too
        pieces.append(QStringLiteral("* 1.0 /"));
        ++position;
    }

    const Tokens tokens;
    qsizetype position = 0;
    QStringList pieces;
};

QString updatableTable(const Tokens& tokens) {
    Tokens words;
    for (const Token& token : tokens)
        if (token.kind != Kind::Blank)
            words.append(token);
    const bool selectAll = words.size() >= 4 && isWord(words[0], "SELECT") && isSymbol(words[1], "*") &&
                           isWord(words[2], "FROM") &&
                           (words[3].kind == Kind::Word || words[3].kind == Kind::Name);
    if (!selectAll || (words.size() > 4 && !isWord(words[4], "WHERE") && !isWord(words[4], "ORDER")))
        return {};
    return words[3].text;
}

} // namespace

std::optional<QDate> ReadDate(const QString& text) {
    const QLocale locale;
    QString format = locale.dateFormat(QLocale::ShortFormat);
    for (const QString& pattern : {QString(format)
                                       .replace(QStringLiteral("yyyy"), QStringLiteral("yy"))
                                       .replace(QStringLiteral("yy"), QStringLiteral("yyyy")),
                                   format, QStringLiteral("M/d/yyyy"), QStringLiteral("yyyy-MM-dd")}) {
        const QDate date = locale.toDate(text.trimmed(), pattern);
        constexpr int firstYear = 100; // of the dates that a database holds
        constexpr int lastYear = 9999;
        if (date.isValid() && date.year() >= firstYear && date.year() <= lastYear) {
            constexpr int centuryTurn = 1930; // two digits mean 1930 to 2029
            return date.year() < centuryTurn && !pattern.contains(QStringLiteral("yyyy")) ? date.addYears(100)
                                                                                          : date;
        }
    }
    return std::nullopt;
}

QString QuotedName(const QString& name) {
    return u'"' + QString(name).replace(u'"', QStringLiteral("\"\"")) + u'"';
}

JetStatement RewriteJetSql(const QString& statement) {
    Tokens tokens = Tokenizer(statement).all();
    for (qsizetype i = 0; i < tokens.size(); ++i) {
        if (!isWord(tokens[i], "DELETE"))
            continue;
        qsizetype star = i + 1;
        skipBlanks(tokens, star);
        if (star < tokens.size() && isSymbol(tokens[star], "*"))
            tokens.removeAt(star);
        break;
    }
    const QString table = updatableTable(tokens);
    return {Writer(havingToWhere(tokens)).write(), table};
}
