#pragma once

#include "core/store/Record.h"

#include <array>
#include <cstdint>

/// A tank line of a job. What is not stored, or not yet, is nothing.
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
    std::optional<double> kineticEnergy;      // ft lbs a foot of pipe
    std::optional<double> totalKineticEnergy; // ft lbs
    std::optional<double> leakLoad;           // share of the tank
    std::optional<double> pumpRunTime;        // s
    std::array<std::optional<QString>, 10> tags;

    static constexpr int mostTags = 10;

    using Columns = std::span<const Record::Column<TankLine>>;
    /// All columns, and those that one screen writes.
    static Columns all();
    static Columns conditions();
    static Columns shockConditions();
    static Columns steelTank();
    static Columns newSteelTank();
    static Columns sizes();
    static Columns choice();
    static Columns shockChoice();
    static Columns package();
    static Columns unitTags();
};

namespace Records {

/// The tank line of a key; nothing when there is none. Throws DatabaseFault.
std::optional<TankLine> ReadTankLine(const QString& tankID);

/// The tank line of the session; nothing for one to come. Throws RecordGone when one that is to be edited is
/// not there, and DatabaseFault.
std::optional<TankLine> ReadTankLineToEdit();

/// The tank lines of a job, in the order of the table. Throws DatabaseFault.
std::vector<TankLine> TankLinesOf(const QString& jobID);
/// The same over an open connection to the user database.
std::vector<TankLine> TankLinesOf(const QString& jobID, const Connection& user);

/// The longest text of a column of the tank lines, as declared. Throws DatabaseFault.
int TankLineTextSize(const QString& column);

/// The next free tank number of the session's job. Throws DatabaseFault, and Fault 6 past 32,767.
std::int16_t GetNextNumber();

/// Stores the given columns of a tank line in one write: in the mode "New", or without a key, as a new line
/// of its job, together with its number and key, else over that of the session's TankID. The session gets the
/// key once the line is stored. What was read before tells whether someone else has changed those columns
/// since. False when the mode, or the key in another mode, cannot be read: then nothing is saved. Throws
/// RecordGone when the job or the line is not there, RecordChanged, and DatabaseFault.
bool SaveTankLine(const TankLine& line, TankLine::Columns columns, const std::optional<TankLine>& asRead,
                  Record::IfChanged ifChanged);

/// Stores columns of the tank line of a key. Throws as above.
void UpdateTankLine(const QString& tankID, const TankLine& line, TankLine::Columns columns,
                    const std::optional<TankLine>& asRead, Record::IfChanged ifChanged);

} // namespace Records
