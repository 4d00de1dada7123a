#pragma once

#include <QDate>
#include <QString>

#include <optional>

/// The day that a text means: in the user's short date format, with a year of two or four digits, or written
/// month/day/year or year-month-day. Nothing when it is no date, as statements read dates between # signs.
std::optional<QDate> ReadDate(const QString& text);

/// A statement in the dialect of the program's SQL, rewritten for SQLite.
struct JetStatement {
    QString sql;
    /// The table of a "SELECT * FROM table [WHERE ...]", whose rows can be changed; empty for others.
    QString updatableTable;
};

/// Rewrites a statement: DELETE * FROM, #dates# in the user's short date format, DateValue, & between
/// texts, ^ for powers, [names in brackets], "texts in double quotes", division that gives fractions, and
/// HAVING on the grouped column, which becomes WHERE so that an index serves it. Quoted texts stay as they
/// are. Throws DatabaseFault for a quote, bracket or date that does not end or cannot be read.
JetStatement RewriteJetSql(const QString& statement);

/// Quotes a name for SQLite.
QString QuotedName(const QString& name);
