#pragma once

#include "core/store/Record.h"

#include <array>
#include <cstdint>

/// A tank line of a job. Values not stored, or not yet, are nothing.
struct TankLine {
    std::optional<QString> tankID; // the job's ID, a point and the number
    std::optional<int> tankNo;
    std::optional<QString> jobID;
    std::optional<QDateTime> dateCreated;
    std::optional<QString> tankClass; // the series' code
    std::optional<QString> modelNo;
    std::optional<int> qty;
    std::optional<double> atmPressure;        // psia
    std::optional<double> sopMin;             // psig
    std::optional<double> sopMax;             // psig
    std::optional<double> sotMin;             // °F
    std::optional<double> sotMax;             // °F
    std::optional<QString> sysFluidType;      // the fluid's name
    std::optional<double> totSysVolume;       // gal
    std::optional<double> requiredVolume;     // gal
    std::optional<double> requiredAcceptance; // gal
    std::optional<double> pipeLength;         // ft
    std::optional<QString> pipeIndex;         // the pipe's U.S. key
    std::optional<double> flowRate;           // gpm
    std::optional<double> flowPressure;       // psig
    std::optional<double> staticPressure;     // psig
    std::optional<double> shockPressure;      // psig
    std::optional<double> waterVelocity;      // ft/s
    std::optional<double> kineticEnergy;      // ft lbs per foot of pipe
    std::optional<double> totalKineticEnergy; // ft lbs
    std::optional<double> leakLoad;           // fraction of the pipe's contents
    std::optional<double> pumpRunTime;        // s
    std::optional<int> sortNo;                // its place in documents; nothing while none was moved
    std::array<std::optional<QString>, 10> tags;

    bool operator==(const TankLine&) const = default;

    static constexpr int MostTags = 10;

    using Columns = std::span<const Record::Column<TankLine>>;
    /// All columns, and those that each screen writes.
    static Columns all();
    static Columns conditions();
    static Columns shockConditions();
    static Columns steelTank();
    static Columns newSteelTank();
    static Columns sizes();
    static Columns choice();
    static Columns shockChoice();
    static Columns package();
    static Columns compared();
    static Columns comparedShock();
    static Columns unitTags();
    /// What a schedule tells of a line, and its place in documents.
    static Columns scheduled();
};

namespace Records {

/// The tank line with this key; nothing if there is none. Throws DatabaseFault.
std::optional<TankLine> findTankLine(const QString& tankID);

/// The session's tank line; nothing for a new one. Throws RecordGone if the line to be edited does not exist,
/// and DatabaseFault.
std::optional<TankLine> readTankLineToEdit();

/// The tank lines of a job in the order of its documents: as they were moved, otherwise as they were entered.
/// Throws DatabaseFault.
std::vector<TankLine> tankLinesOf(const QString& jobID);
/// The same over an open connection to the user database; with only some columns, SortNo among them, where
/// the others are not needed.
std::vector<TankLine> tankLinesOf(const QString& jobID, const Connection& user,
                                  TankLine::Columns columns = TankLine::all());

/// The maximum length of a tank line's column, as declared. Throws DatabaseFault.
int tankLineTextSize(const QString& column);

/// The next free tank number of the session's job. Throws DatabaseFault, and Fault 6 past 32,767.
std::int16_t GetNextNumber();

/// Stores the given columns of a tank line in one write: in mode "New", or without a key, as a new line of
/// its job, including number and key, otherwise over the line of the session's TankID. The session gets the
/// key once the line is stored. `asRead` shows whether someone else has changed those columns since; a line
/// that is overwritten is read into it anew, so that the next save compares with this one. Returns false, and
/// saves nothing, if the mode, or in another mode the key, cannot be read. Throws RecordGone if the job or
/// the line does not exist, RecordChanged, and DatabaseFault.
bool saveTankLine(const TankLine& line, TankLine::Columns columns, std::optional<TankLine>& asRead,
                  Record::IfChanged ifChanged);

/// Stores columns of the tank line with this key. Throws as above.
void updateTankLine(const QString& tankID, const TankLine& line, TankLine::Columns columns,
                    std::optional<TankLine>& asRead, Record::IfChanged ifChanged);

/// Adds a copy of a tank line to its job, with the next number and without tags, in one write. Returns its
/// key. Throws RecordGone, Fault 6 past 32,767, and DatabaseFault.
QString copyTankLine(const QString& tankID);

/// Stores the order of a job's tank lines in documents, in one write. A line that is not among them follows.
/// Throws DatabaseFault.
void orderTankLines(const QString& jobID, const QStringList& tankIDs);

} // namespace Records
