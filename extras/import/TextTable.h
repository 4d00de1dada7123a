#pragma once

#include <QStringList>

#include <vector>

/// A table as a spreadsheet writes it to a text file or to the clipboard.
struct TextTable {
    struct Row {
        int number = 0; // of its line in the text, from 1
        QStringList cells{};
    };

    QStringList headings{};
    std::vector<Row> rows{};       // without those that are empty
    bool decimalCommas = false;    // it comes from a country that separates columns by semicolons
    bool unfinishedQuotes = false; // its last cell is quoted and has no end

    /// Reads a text: the first line that is not empty holds the headings. Columns are separated by tabs,
    /// semicolons or commas, whichever the headings have; a cell in double quotes may hold separators and
    /// line ends.
    static TextTable read(const QString& text);
};

/// The text of a file in UTF-8 or UTF-16, or else in Latin-1.
QString decoded(const QByteArray& bytes);
