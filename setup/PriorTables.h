#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

/// The tables of the earlier program, and the format in which brennoval-prior sends their rows.
namespace PriorTables {

/// The type of a column there.
enum Kind { Number, Text, Date };

/// A column there, and the column of ours that receives its value.
struct Column {
    const char* prior;
    const char* target;
    Kind kind = Number;
};

struct Table {
    const char* name; // the same in both programs
    std::span<const Column> columns;
};

inline constexpr Column contractor[] = {{"Contractor", "fldName", Text}};
inline constexpr Column engineer[] = {{"Engineer", "fldName", Text}};
/// The engineer's default gets the contractor's value if there is one for the engineer: kept as it always
/// was.
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

/// The helper's maximum output in bytes; a file that claims more is not genuine. There is always room to
/// report that.
inline constexpr std::size_t largestOutput = 64 << 20;
inline constexpr std::size_t roomForFailure = 4096;

/// The bytes that introduce something on the pipe. Numbers are in native format, since both ends are on one
/// machine.
enum Mark : char {
    TableBegins = 'T', // followed by the table's row count, 32 bits
    RowBegins = 'R',   // followed by its values, each with one of the three marks below
    NullValue = 'N',
    NumberValue = 'D',    // followed by a double
    TextValue = 'S',      // followed by a length of 32 bits and as many bytes of UTF-8
    FailureFollows = 'F', // followed by the fault's number, 32 bits, and its description as a text
    Finished = '.'
};

} // namespace PriorTables
