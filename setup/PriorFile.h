#pragma once

#include "setup/PriorTables.h"

#include <QString>
#include <QVariantList>

#include <array>
#include <chrono>
#include <vector>

/// The rows of the earlier program's tables: the values of each in the order of PriorTables, a null, a double
/// or a text.
struct PriorRows {
    struct Table {
        std::uint32_t announced = 0; // how many rows the file says that the table has
        std::vector<QVariantList> rows;
    };
    std::array<Table, PriorTables::Count> tables;
};

/// What reads the file, and how long it may take.
struct PriorHelper {
    QString program; // brennoval-prior beside the program, when it is empty
    std::chrono::milliseconds longestSilence = std::chrono::seconds(15);
    std::chrono::milliseconds longestRun = std::chrono::minutes(2);
};

/// Sets another helper than the program's own. For tests.
void SetPriorHelper(const PriorHelper& helper);

/// Reads a file of the earlier program while the windows stay alive, but take no input. Throws DatabaseFault:
/// with the general error when the file is not there, is damaged or of another kind, or asks for more time or
/// room than such a file ever needs; the rows then hold the counts of the tables that had been begun. Throws
/// Fault 6 for a table of more than 32,767 rows.
void ReadPriorFile(const QString& path, PriorRows& rows);
