#pragma once

#include <array>
#include <cstdint>
#include <span>

/// The tables of the earlier program, and the form in which brennoval-prior writes their rows to its pipe.
namespace PriorTables {

/// A column there, and the one of ours that takes its value.
struct Column {
    const char* prior;
    const char* target;
};

struct Table {
    const char* name; // the same here and there
    std::span<const Column> columns;
};

inline constexpr Column contractor[] = {{"Contractor", "fldName"}};
inline constexpr Column engineer[] = {{"Engineer", "fldName"}};
/// The engineer's default becomes the contractor's, if there is an engineer's: kept as it always was.
inline constexpr Column user[] = {{"DefaultContractor", "DefaultContractor"},
                                  {"DefaultEngineer", "DefaultEngineer"},
                                  {"DefaultPSIa", "DefaultPSIa"}};
inline constexpr Column jobHeader[] = {{"JobID", "JobID"},       {"JobDscrptn", "JobDscrptn"},
                                       {"Engineer", "Engineer"}, {"Contractor", "Contractor"},
                                       {"JobInfo", "JobInfo"},   {"DateCreated", "DateCreated"}};
inline constexpr Column jobData[] = {{"JobID", "JobID"},
                                     {"ModelNo", "ModelNo"},
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
                                     {"PipeIndex", "PipeIndex"},
                                     {"AtmPressure", "AtmPressure"},
                                     {"SOPMin", "SOPMin"},
                                     {"SOPMax", "SOPMax"},
                                     {"SOTMin", "SOTMin"},
                                     {"SOTMax", "SOTMax"},
                                     {"SysFluidType", "SysFluidType"},
                                     {"TotSysVolume", "TotSysVolume"},
                                     {"RequiredAcceptance", "RequiredAcceptance"},
                                     {"TagID", "TagID01"}};

/// In the order in which they are read and written.
enum Index { Contractor, Engineer, User, JobHeader, JobData, Count };
inline constexpr std::array<Table, Count> all = {Table{"tblContractor", contractor},
                                                 {"tblEngineer", engineer},
                                                 {"tblUser", user},
                                                 {"tblJobHeader", jobHeader},
                                                 {"tblJobData", jobData}};

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
