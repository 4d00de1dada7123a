#include "core/store/JetTokens.h"

#include "core/base/Fault.h"

namespace JetTokens {

namespace {

bool isWordCharacter(QChar c) {
    return c.isLetterOrNumber() || c == u'_';
}

/// Reads a statement token by token.
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
        if (c == u'?') {
            ++position;
            return {Kind::Parameter, QString::number(++parameters)};
        }
        if (isWordCharacter(c))
            return {Kind::Word, takeWhile(isWordCharacter)};
        const QString two = source.mid(position, 2);
        if (two == u"<=" || two == u">=" || two == u"<>") {
            position += 2;
            return {Kind::Symbol, two};
        }
        // Comments belong to the engine's dialect and would hide the rest of a statement.
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
    int parameters = 0;
};

} // namespace

void syntaxError(const QString& what) {
    throw DatabaseFault(DatabaseFault::SyntaxError, ("Syntax error in query: " + what).toStdString());
}

Tokens tokensOf(const QString& statement) {
    return Tokenizer(statement).all();
}

bool isWord(const Token& token, const char* word) {
    return token.kind == Kind::Word && token.text.compare(QLatin1String(word), Qt::CaseInsensitive) == 0;
}

bool isSymbol(const Token& token, const char* symbol) {
    return token.kind == Kind::Symbol && token.text == QLatin1String(symbol);
}

bool isName(const Token& token) {
    return token.kind == Kind::Word || token.kind == Kind::Name;
}

Tokens withoutBlanks(const Tokens& tokens) {
    Tokens found;
    for (const Token& token : tokens)
        if (token.kind != Kind::Blank)
            found.append(token);
    return found;
}

void skipBlanks(const Tokens& tokens, qsizetype& i) {
    while (i < tokens.size() && tokens[i].kind == Kind::Blank)
        ++i;
}

} // namespace JetTokens
