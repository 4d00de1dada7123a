#include "core/store/TankLine.h"

#include "core/base/Fault.h"
#include "core/base/Numbers.h"
#include "core/store/Gateway.h"
#include "core/store/SessionStore.h"
#include "core/store/TankNumbers.h"

#include <QHash>

#include <limits>

using namespace Gateway;
using namespace TankNumbers;

using Record::column;
using Record::IfChanged;

namespace {

using TankColumn = Record::Column<TankLine>;

template<std::size_t unit>
constexpr TankColumn tagColumn(const char* name) {
    return {name,
            [](TankLine& line, const Recordset::Field& field) {
                line.tags[unit] = Record::valueOf<QString>(field);
            },
            [](const TankLine& line, Recordset::Field field) { Record::assign(field, line.tags[unit]); },
            [](const TankLine& one, const TankLine& other) { return one.tags[unit] == other.tags[unit]; }};
}

constexpr TankColumn tagColumns[] = {
    tagColumn<0>("TagID01"), tagColumn<1>("TagID02"), tagColumn<2>("TagID03"), tagColumn<3>("TagID04"),
    tagColumn<4>("TagID05"), tagColumn<5>("TagID06"), tagColumn<6>("TagID07"), tagColumn<7>("TagID08"),
    tagColumn<8>("TagID09"), tagColumn<9>("TagID10")};

constexpr TankColumn dateCreated = column<&TankLine::dateCreated>("DateCreated");
constexpr TankColumn tankClass = column<&TankLine::tankClass>("TankClass");
constexpr TankColumn modelNo = column<&TankLine::modelNo>("ModelNo");
constexpr TankColumn qty = column<&TankLine::qty>("Qty");
constexpr TankColumn atmPressure = column<&TankLine::atmPressure>("AtmPressure");
constexpr TankColumn sopMin = column<&TankLine::sopMin>("SOPMin");
constexpr TankColumn sopMax = column<&TankLine::sopMax>("SOPMax");
constexpr TankColumn sotMin = column<&TankLine::sotMin>("SOTMin");
constexpr TankColumn sotMax = column<&TankLine::sotMax>("SOTMax");
constexpr TankColumn sysFluidType = column<&TankLine::sysFluidType>("SysFluidType");
constexpr TankColumn totSysVolume = column<&TankLine::totSysVolume>("TotSysVolume");
constexpr TankColumn requiredVolume = column<&TankLine::requiredVolume>("RequiredVolume");
constexpr TankColumn requiredAcceptance = column<&TankLine::requiredAcceptance>("RequiredAcceptance");
constexpr TankColumn pipeLength = column<&TankLine::pipeLength>("PipeLength");
constexpr TankColumn pipeIndex = column<&TankLine::pipeIndex>("PipeIndex");
constexpr TankColumn flowRate = column<&TankLine::flowRate>("FlowRate");
constexpr TankColumn flowPressure = column<&TankLine::flowPressure>("FlowPressure");
constexpr TankColumn staticPressure = column<&TankLine::staticPressure>("StaticPressure");
constexpr TankColumn shockPressure = column<&TankLine::shockPressure>("ShockPressure");
constexpr TankColumn waterVelocity = column<&TankLine::waterVelocity>("WaterVelocity");
constexpr TankColumn kineticEnergy = column<&TankLine::kineticEnergy>("KineticEnergy");
constexpr TankColumn totalKineticEnergy = column<&TankLine::totalKineticEnergy>("TotalKineticEnergy");
constexpr TankColumn leakLoad = column<&TankLine::leakLoad>("LeakLoad");
constexpr TankColumn pumpRunTime = column<&TankLine::pumpRunTime>("PumpRunTime");

constexpr TankColumn keyColumn = column<&TankLine::tankID>("TankID");
constexpr TankColumn numberColumn = column<&TankLine::tankNo>("TankNo");
constexpr TankColumn sortColumn = column<&TankLine::sortNo>("SortNo");

constexpr TankColumn allColumns[] = {keyColumn,
                                     numberColumn,
                                     column<&TankLine::jobID>("JobID"),
                                     dateCreated,
                                     tankClass,
                                     modelNo,
                                     qty,
                                     atmPressure,
                                     sopMin,
                                     sopMax,
                                     sotMin,
                                     sotMax,
                                     sysFluidType,
                                     totSysVolume,
                                     requiredVolume,
                                     requiredAcceptance,
                                     pipeLength,
                                     pipeIndex,
                                     flowRate,
                                     flowPressure,
                                     staticPressure,
                                     shockPressure,
                                     waterVelocity,
                                     kineticEnergy,
                                     totalKineticEnergy,
                                     leakLoad,
                                     pumpRunTime,
                                     sortColumn,
                                     tagColumns[0],
                                     tagColumns[1],
                                     tagColumns[2],
                                     tagColumns[3],
                                     tagColumns[4],
                                     tagColumns[5],
                                     tagColumns[6],
                                     tagColumns[7],
                                     tagColumns[8],
                                     tagColumns[9]};

constexpr TankColumn conditionColumns[] = {atmPressure, sopMin,       sopMax,      sotMin,
                                           sotMax,      totSysVolume, sysFluidType};
constexpr TankColumn shockColumns[] = {atmPressure,   pipeLength,         pipeIndex,      flowRate,
                                       flowPressure,  staticPressure,     shockPressure,  waterVelocity,
                                       kineticEnergy, totalKineticEnergy, requiredVolume, requiredAcceptance,
                                       tankClass};
constexpr TankColumn steelColumns[] = {atmPressure, sopMin, totSysVolume, sysFluidType};
constexpr TankColumn sizeColumns[] = {tankClass, requiredVolume, requiredAcceptance};
constexpr TankColumn choiceColumns[] = {qty, modelNo};
constexpr TankColumn shockChoiceColumns[] = {qty, modelNo, leakLoad, pumpRunTime};
constexpr TankColumn packageColumns[] = {modelNo, qty, sopMax, tankClass, dateCreated};

/// Conditions, sizes and choice in one.
template<std::size_t... counts>
constexpr auto together(const TankColumn (&... parts)[counts]) {
    std::array<TankColumn, (counts + ...)> all{};
    std::size_t at = 0;
    ((std::ranges::copy(parts, all.begin() + std::ptrdiff_t(at)), at += counts), ...);
    return all;
}
constexpr auto comparedColumns = together(conditionColumns, sizeColumns, choiceColumns);
constexpr TankColumn shownColumns[] = {keyColumn, numberColumn, modelNo, qty,       sopMin,
                                       sopMax,    sotMin,       sotMax,  sortColumn};
constexpr auto scheduledColumns = together(shownColumns, tagColumns);
constexpr auto comparedShockColumns = together(shockColumns, shockChoiceColumns);

const char* const byKey = "SELECT * FROM tblJobData WHERE TankID = ?";

/// Adds a line below its job's header. Number and row are one write, so that no other instance can take the
/// number.
QString add(const TankLine& line, TankLine::Columns columns) {
    const QString job = line.jobID.value_or(QString());
    const Connection connection = Gateway::openDatabase("User");
    Transaction write(connection);
    requireJob(connection, job);
    const std::int16_t number = nextNumber(connection, job);
    QString tankID = job + u'.' + QString::number(number);
    Recordset tank;
    tank.Open("tblJobData", connection, CursorType::Keyset, CommandType::Table);
    tank.AddNew();
    tank["TankNo"] = number;
    tank["TankID"] = tankID;
    tank["JobID"] = job;
    Record::assign(tank["DateCreated"], line.dateCreated);
    Record::write(tank, line, columns);
    tank.Update();
    write.commit();
    return tankID;
}

} // namespace

TankLine::Columns TankLine::all() {
    return allColumns;
}
TankLine::Columns TankLine::conditions() {
    return conditionColumns;
}
TankLine::Columns TankLine::shockConditions() {
    return shockColumns;
}
TankLine::Columns TankLine::steelTank() {
    return newSteelTank().first(3);
}
/// A new conversion also stores its fluid, which no screen asks for.
TankLine::Columns TankLine::newSteelTank() {
    return steelColumns;
}
TankLine::Columns TankLine::sizes() {
    return sizeColumns;
}
TankLine::Columns TankLine::choice() {
    return choiceColumns;
}
TankLine::Columns TankLine::shockChoice() {
    return shockChoiceColumns;
}
TankLine::Columns TankLine::package() {
    return packageColumns;
}
TankLine::Columns TankLine::compared() {
    return comparedColumns;
}
TankLine::Columns TankLine::comparedShock() {
    return comparedShockColumns;
}
TankLine::Columns TankLine::unitTags() {
    return tagColumns;
}
TankLine::Columns TankLine::scheduled() {
    return scheduledColumns;
}

namespace Records {

std::optional<TankLine> findTankLine(const QString& tankID) {
    Rows tank("User", byKey, {tankID});
    return tank.atEnd() ? std::nullopt : std::optional(Record::read(*tank, TankLine::all()));
}

std::optional<TankLine> readTankLineToEdit() {
    const QString tankID = Session::TankID.text();
    auto line = findTankLine(tankID);
    if (!line && !tankID.isEmpty() && Session::Mode.text() == Session::Modes::Edit)
        throw RecordGone("This tank has been deleted.");
    return line;
}

std::vector<TankLine> tankLinesOf(const QString& jobID) {
    return tankLinesOf(jobID, openDatabase("User"));
}

std::vector<TankLine> tankLinesOf(const QString& jobID, const Connection& user, TankLine::Columns columns) {
    Recordset tanks;
    tanks.Open("SELECT * FROM tblJobData WHERE JobID = ?", user, {jobID});
    std::vector<TankLine> lines = Record::readAll(tanks, columns);
    const auto place = [](const TankLine& line) {
        return line.sortNo.value_or(std::numeric_limits<int>::max());
    };
    std::ranges::stable_sort(lines, {},
                             place); // a line that was added since the others were moved is the last
    return lines;
}

QString copyTankLine(const QString& tankID) {
    constexpr std::size_t keys = 3;      // ID, number and job, which the new line gets of its own
    constexpr std::size_t otherwise = 1; // and its place
    static const TankLine::Columns copied =
        TankLine::all().subspan(keys, TankLine::all().size() - keys - otherwise - TankLine::MostTags);
    auto line = findTankLine(tankID);
    if (!line)
        throw RecordGone("This tank has been deleted.");
    line->dateCreated = QDateTime::currentDateTime();
    return add(*line, copied);
}

void orderTankLines(const QString& jobID, const QStringList& tankIDs) {
    QHash<QString, int> places;
    for (const QString& tankID : tankIDs)
        places.insert(tankID, int(places.size()) + 1);
    const Connection user = openDatabase("User");
    Transaction write(user);
    Recordset tanks;
    tanks.Open("SELECT * FROM tblJobData WHERE JobID = ?", user, {jobID}, CursorType::Keyset);
    for (; !tanks.atEnd(); tanks.moveNext()) {
        const auto place = places.constFind(tanks["TankID"].text());
        if (place == places.cend() || tanks["SortNo"].stored() == *place)
            continue; // a move changes two lines of perhaps a thousand
        tanks["SortNo"] = *place;
        tanks.Update();
    }
    write.commit();
}

int tankLineTextSize(const QString& column) {
    return Rows("User", "tblJobData", CursorType::ForwardOnly, CommandType::Table)[column].DefinedSize();
}

std::int16_t GetNextNumber() {
    return underName("GetNextNumber", []() -> std::int16_t {
        QString jobID;
        return Session::JobID.read(jobID) ? nextNumber(openDatabase("User"), jobID) : std::int16_t(1);
    });
}

bool saveTankLine(const TankLine& line, TankLine::Columns columns, std::optional<TankLine>& asRead,
                  IfChanged ifChanged) {
    QString mode;
    if (!Session::Mode.read(mode))
        return false;
    QString tankID;
    const bool hasTank = Session::TankID.read(tankID);
    if (mode == Session::Modes::New ||
        (hasTank && tankID.isEmpty())) // a package's Add More does not change the mode
        tankID = add(line, columns);
    else if (hasTank)
        updateTankLine(tankID, line, columns, asRead, ifChanged);
    else
        return false;
    Session::TankID.write(tankID);
    return true;
}

void updateTankLine(const QString& tankID, const TankLine& line, TankLine::Columns columns,
                    std::optional<TankLine>& asRead, IfChanged ifChanged) {
    const Connection connection = openDatabase("User");
    Transaction write(connection);
    Recordset tank;
    tank.Open(byKey, connection, {tankID}, CursorType::Keyset);
    if (tank.atEnd()) {
        if (line.jobID)
            requireJob(connection, *line.jobID);
        throw RecordGone("This tank has been deleted.");
    }
    if (ifChanged == IfChanged::Refuse && asRead &&
        !Record::agree(Record::read(tank, columns), *asRead, columns))
        throw RecordChanged("This tank has been changed since it was opened. Save anyway?");
    Record::write(tank, line, columns);
    tank.Update();
    std::optional<TankLine> stored = asRead;
    if (stored)
        for (const Record::Column<TankLine>& column : columns)
            column.read(*stored, tank[column.name]);
    tank.Close();
    write.commit();
    asRead = std::move(stored);
}

} // namespace Records
