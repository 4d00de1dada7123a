#pragma once

#include <QDate>
#include <QList>
#include <QString>

#include <optional>

/// The day in a text: in the user's short date format, with a year of two or four digits, or as
/// month/day/year or year-month-day. Nothing if it is not a date. Statements read dates between # signs this
/// way.
std::optional<QDate> readDate(const QString& text);

/// How an engine expresses what the program's own SQL dialect says.
class SqlDialect {
  public:
    virtual ~SqlDialect() = default;
    SqlDialect() = default;
    SqlDialect(const SqlDialect&) = delete;
    SqlDialect& operator=(const SqlDialect&) = delete;

    virtual QString quotedName(const QString& name) const = 0;
    /// base ^ exponent; null if either is.
    virtual QString power(const QString& base, const QString& exponent) const = 0;
    /// Division with fractions; dividing by zero is an error.
    virtual QString quotient(const QString& numerator, const QString& denominator) const = 0;
    /// Joins two values as text. A null counts as empty, a number as its shortest text.
    virtual QString joined(const QString& left, const QString& right) const = 0;
    /// The function that returns the day of a moment.
    virtual QString dayFunction() const = 0;
};

/// A statement in the program's SQL dialect, rewritten for an engine.
struct JetStatement {
    QString sql;
    /// For each parameter, from the first ?: whether it is compared as is, so that its trailing blanks do not
    /// count.
    QList<bool> compared;
    /// The table of a "SELECT * FROM table [WHERE ...]", whose rows can be changed; empty for others.
    QString updatableTable;
};

/// Rewrites a statement: DELETE * FROM, #dates# in the user's short date format, DateValue, & between texts
/// (which binds more loosely than + and *), ^ for powers, [names in brackets], "texts in double quotes",
/// division with fractions, and HAVING on the grouped column, which becomes WHERE so that it can use an
/// index. A ? is a parameter; the engine gets it numbered: ?1, ?2. Quoted texts stay as they are, except that
/// compared ones lose their trailing blanks, which do not count. Throws DatabaseFault for an unterminated or
/// unreadable quote, bracket or date.
JetStatement rewriteJetSql(const QString& statement, const SqlDialect& dialect);
