#pragma once

#include <QDate>
#include <QList>
#include <QString>
#include <QStringList>

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
    /// A number, a truth value and the parameter with a number, from 1.
    virtual QString number(const QString& text) const { return text; }
    virtual QString truth(bool value) const {
        return value ? QStringLiteral("TRUE") : QStringLiteral("FALSE");
    }
    virtual QString parameter(int number) const { return u'?' + QString::number(number); }
    /// What stands between a text and its pattern.
    virtual QString likeWord() const { return QStringLiteral("LIKE"); }
    /// What follows a pattern without an escape character, so that it has none.
    virtual QString withoutEscape() const { return {}; }
    /// Whether the engine takes nulls for larger than all values. In a file they are the smallest.
    virtual bool nullsAreLargest() const { return false; }
    /// The columns by which the rows of a table come when a statement does not order them; empty where the
    /// engine's own order is the right one.
    virtual QStringList naturalOrder(const QString& /*table*/) const { return {}; }
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
/// index. A ? is a parameter, numbered for the engine. Quoted texts stay as they are, except that
/// compared ones lose their trailing blanks, which do not count. Throws DatabaseFault for an unterminated or
/// unreadable quote, bracket or date.
JetStatement rewriteJetSql(const QString& statement, const SqlDialect& dialect);
