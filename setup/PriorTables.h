#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

/// The tables of the earlier program, and the form in which brennoval-prior writes their rows to its pipe.
namespace PriorTables {

/// What a column holds there.
enum Kind { Number, Text, Date };

/// A column there, and the one of ours that takes its value.
struct Column {
    const char* prior;
    const char* target;
    Kind kind = Number;
};

struct Table {
    const char* name; // the same here and there
    std::span<const Column> columns;
};

inline constexpr Column contractor[] = {{"Contractor", "fldName", Text}};
inline constexpr Column engineer[] = {{"Engineer", "fldName", Text}};
/// The engineer's default becomes the contractor's, if there is an engineer's: kept as it always was.
inline constexpr Column user[] = {{"DefaultContractor", "DefaultContractor", Text},
                                  {"DefaultEngineer", "DefaultEngineer", Text},
                                  {"DefaultPSIa", "DefaultPSIa"}};
inline constexpr Column jobHeader[] = {{"JobID", "JobID", Text},       {"JobDscrptn", "JobDscrptn", Text},
                                       {"Engineer", "Engineer", Text}, {"Contractor", "Contractor", Text},
                                       {"JobInfo", "JobInfo", Text},   {"DateCreated", "DateCreated", Date}};
inline constexpr Column jobData[] = {{"JobID", "JobID", Text},
                                     {"ModelNo", "ModelNo", Text},
                                     {"PipeFt", "PipeLength"},
                                     {"FlowRate", "FlowRate"},
                                     {"FlowPressure", "FlowPressure"},
                                     {"StaticPressure", "StaticPressure"},
                                     {"ShockPressure", "ShockPressure"},
                                     {"Qty", "Qty"},
                                     {"WaterVelocity", "WaterVelocity"},
                                     {"KineticEnergy", "KineticEnergy"},
                                     {"TotalKineticEnergy", "TotalKineticEnergy"},
                                     {"RequiredVolume", "RequiredVolume"},
                                     {"LeakLoad", "LeakLoad"},
                                     {"PumpRunTime", "PumpRunTime"},
                                     {"PipeIndex", "PipeIndex", Text},
                                     {"AtmPressure", "AtmPressure"},
                                     {"SOPMin", "SOPMin"},
                                     {"SOPMax", "SOPMax"},
                                     {"SOTMin", "SOTMin"},
                                     {"SOTMax", "SOTMax"},
                                     {"SysFluidType", "SysFluidType", Text},
                                     {"TotSysVolume", "TotSysVolume"},
                                     {"RequiredAcceptance", "RequiredAcceptance"},
                                     {"TagID", "TagID01", Text}};

/// In the order in which they are read and written.
enum Index { Contractor, Engineer, User, JobHeader, JobData, Count };
inline constexpr std::array<Table, Count> all = {Table{"tblContractor", contractor},
                                                 {"tblEngineer", engineer},
                                                 {"tblUser", user},
                                                 {"tblJobHeader", jobHeader},
                                                 {"tblJobData", jobData}};

/// How much the helper writes at most, in bytes; whatever claims to be more is no such file. It always has
/// room to say so.
inline constexpr std::size_t largestOutput = 64 << 20;
inline constexpr std::size_t roomForFailure = 4096;

/// What a byte on the pipe announces. Numbers follow in the machine's own form: both ends are one machine.
enum Mark : char {
    TableBegins = 'T', // then the table's row count, 32 bits
    RowBegins = 'R',   // then its values, each with one of the three marks below
    NullValue = 'N',
    NumberValue = 'D',    // then a double
    TextValue = 'S',      // then a length of 32 bits and as many bytes of UTF-8
    FailureFollows = 'F', // then the fault's number, 32 bits, and its description as a text
    Finished = '.'
};

} // namespace PriorTables
