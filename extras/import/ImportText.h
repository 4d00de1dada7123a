#pragma once

#include "core/base/Applications.h"

#include <QHash>
#include <QStringList>

#include <optional>
#include <vector>

/// Conditions of many systems as a text with one system a line, such as CSV or what a spreadsheet copies.
/// The first line names the columns, each with its unit, such as "Volume [L]".
namespace ImportText {

/// A line as read: the texts of the boxes in U.S. units, by their names on the conditions screens.
struct Line {
    int number = 0; // in the text, from 1
    std::optional<Application> application{};
    QString tag{};
    QString series{};
    QHash<QString, QString> boxes{};
    QStringList problems{}; // that keep it from being stored
    QStringList notes{};
};

struct Table {
    QStringList problems{}; // of the headings, or of the text as a whole
    std::vector<Line> lines{};
};

/// The most lines that one text may have.
inline constexpr std::size_t mostLines = 5000;
/// The same for columns.
inline constexpr std::size_t mostColumns = 100;

/// Reads a text. What is wrong is said in the table and its lines; metric values are converted as the metric
/// pads do.
Table read(const QString& text);

/// The text of a file: UTF-8 or UTF-16 with a mark, otherwise UTF-8 or, if it is not that, Latin-1.
QString decoded(const QByteArray& file);

/// What a box is called in headings and messages, such as "Maximum pressure".
QString nameOf(const QString& box);

/// The boxes that an application has, and of those the ones that a line must fill in.
QStringList boxesOf(Application application);
bool mayBeEmpty(const QString& box);

/// A text with all headings and an example for each application, as a file for spreadsheets.
QByteArray sample();

} // namespace ImportText
