#pragma once

#include <QDate>
#include <QList>
#include <QString>

#include <optional>

/// The day that a text means: in the user's short date format, with a year of two or four digits, or written
/// month/day/year or year-month-day. Nothing when it is no date, as statements read dates between # signs.
std::optional<QDate> ReadDate(const QString& text);

/// How an engine writes what the program's statements say in a dialect of their own.
class SqlDialect {
  public:
    virtual ~SqlDialect() = default;
    SqlDialect() = default;
    SqlDialect(const SqlDialect&) = delete;
    SqlDialect& operator=(const SqlDialect&) = delete;

    virtual QString quotedName(const QString& name) const = 0;
    /// base ^ exponent; null when either is.
    virtual QString power(const QString& base, const QString& exponent) const = 0;
    /// A division that gives fractions; by zero it is an error.
    virtual QString quotient(const QString& numerator, const QString& denominator) const = 0;
    /// Two values as one text. A null counts as an empty text, a number takes its shortest text.
    virtual QString joined(const QString& left, const QString& right) const = 0;
    /// The name of the function that takes the day out of a moment.
    virtual QString dayFunction() const = 0;
};

/// A statement in the dialect of the program's SQL, rewritten for an engine.
struct JetStatement {
    QString sql;
    /// For each parameter, from the first ? on: whether it is compared as it stands, so that its trailing
    /// blanks do not count.
    QList<bool> compared;
    /// The table of a "SELECT * FROM table [WHERE ...]", whose rows can be changed; empty for others.
    QString updatableTable;
};

/// Rewrites a statement: DELETE * FROM, #dates# in the user's short date format, DateValue, & between texts
/// (which binds weaker than + and *), ^ for powers, [names in brackets], "texts in double quotes", division
/// that gives fractions, and HAVING on the grouped column, which becomes WHERE so that an index serves it.
/// A ? stands for a parameter, which the engine gets with its number: ?1, ?2.
/// Quoted texts stay as they are, but for trailing blanks where they are compared, which do not count.
/// Throws DatabaseFault for a quote, bracket or date that does not end or cannot be read.
JetStatement RewriteJetSql(const QString& statement, const SqlDialect& dialect);
