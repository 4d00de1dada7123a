#pragma once

#include "setup/PriorTables.h"

#include <QString>
#include <QVariantList>

#include <array>
#include <chrono>
#include <vector>

/// The rows of the earlier program's tables. The values are in the order of PriorTables, each a null, a
/// double or a text.
struct PriorRows {
    struct Table {
        std::uint32_t announced = 0; // the row count stated by the file
        std::vector<QVariantList> rows;
    };
    std::array<Table, PriorTables::Count> tables;
};

/// The program that reads the file, and its time limits.
struct PriorHelper {
    QString program; // if empty, brennoval-prior next to the program
    std::chrono::milliseconds longestSilence = std::chrono::seconds(15);
    std::chrono::milliseconds longestRun = std::chrono::minutes(2);
};

/// Replaces the program's own helper. For tests.
void setPriorHelper(const PriorHelper& helper);

/// Reads a file of the earlier program; meanwhile the windows repaint but take no input. Throws DatabaseFault
/// with the general error if the file is missing, damaged or of a different kind, or needs more time or room
/// than such a file ever should; the rows then have the counts of the tables started so far. Throws Fault 6
/// for a table with more than 32,767 rows.
void readPriorFile(const QString& path, PriorRows& rows);
