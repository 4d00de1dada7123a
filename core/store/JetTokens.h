#pragma once

#include <QList>
#include <QString>

/// The parts of a statement in the program's SQL dialect, for JetSql.
namespace JetTokens {

enum class Kind { Blank, Word, Name, Number, Text, Date, Parameter, Symbol };

struct Token {
    Kind kind;
    QString text; // names without brackets, quoted texts without quotes, a parameter's number, anything else
                  // as written
};

using Tokens = QList<Token>;

/// Throws DatabaseFault for a statement that cannot be read.
[[noreturn]] void syntaxError(const QString& what);

/// The tokens of a statement, blanks included. Throws DatabaseFault.
Tokens tokensOf(const QString& statement);

/// Whether a token is this word, ignoring case, or this symbol.
bool isWord(const Token& token, const char* word);
bool isSymbol(const Token& token, const char* symbol);

/// Whether a token can name a table or a column.
bool isName(const Token& token);

/// The tokens that are not blank.
Tokens withoutBlanks(const Tokens& tokens);

/// Moves a position on to the next token that is not blank.
void skipBlanks(const Tokens& tokens, qsizetype& i);

} // namespace JetTokens
