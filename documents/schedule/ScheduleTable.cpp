#include "documents/schedule/ScheduleTable.h"

#include "core/base/Text.h"
#include "core/shell/DisplayFields.h"
#include "core/shell/Trap.h"
#include "core/store/DataState.h"
#include "core/store/Gateway.h"
#include "core/store/Model.h"
#include "core/store/SessionStore.h"
#include "core/store/TankLine.h"
#include "documents/tags/UnitTags.h"

#include <exception>
#include <utility>

using namespace Catalogue;
using namespace Faults;
using namespace Gateway;
using namespace Records;

namespace Schedule {

namespace {

/// What a row takes from its tank line's model.
struct ModelValues {
    QString tankOD;
    QString oal;
    double tankVolume = 0;
    QString app;
};

/// The models of tank lines, all read together when the first is asked for: a long job would open the
/// catalogue for each of its lines.
class Models {
  public:
    explicit Models(const std::vector<TankLine>& tanks) : lines(tanks) {}

    std::optional<Model> find(const QString& modelNo) {
        if (!std::exchange(read, true)) {
            QStringList names;
            for (const TankLine& tank : lines)
                names.append(tank.modelNo.value_or(QString()));
            models = findModels(names, Model::measures());
        }
        const auto found = models.constFind(modelNo.toCaseFolded());
        return found == models.cend() ? std::nullopt : std::optional(*found);
    }

  private:
    const std::vector<TankLine>& lines;
    QHash<QString, Model> models;
    bool read = false;
};

/// A model that has left the catalogue changes nothing: its line keeps the values of the line before.
void takeModel(const QString& modelNo, Models& models, ModelValues& values) {
    if (modelNo.isEmpty()) {
        values.tankOD.clear();
        values.oal.clear();
        // This is no number, so the conversion fails: a job with a tank that has no model yet stops here,
        // because its schedule must not pass for a complete one.
        values.tankVolume = toNumber("'");
    }
    const auto model = models.find(modelNo);
    if (!model)
        return;
    values = {.tankOD = shownText(model->tankOD),
              .oal = shownText(model->oal),
              .tankVolume = model->tankVolume.value_or(0),
              .app = shownText(model->app)};
}

/// The program has always looked for the tenth unit's tag in a column that does not exist, so the schedule
/// stops before it.
constexpr int room = 9;

/// Adds rows to the work table. Its columns are looked up once, not for every row.
class NewRows {
  public:
    explicit NewRows(Recordset& schedule)
        : table(schedule), tagID(schedule["TagID"]), tankID(schedule["TankID"]), tankOD(schedule["TankOD"]),
          oal(schedule["OAL"]), tankVol(schedule["TankVol"]), app(schedule["App"]) {}

    void addUnits(const TankLine& tank, const ModelValues& values) {
        for (int unit = 1; unit <= tank.qty.value_or(0); ++unit) {
            table.AddNew();
            tagID = UnitTags::tagOf(tank, unit, room);
            tankID = tank.tankID.value_or(QString());
            tankOD = values.tankOD;
            oal = values.oal;
            tankVol = values.tankVolume;
            app = values.app;
            table.Update();
        }
    }

  private:
    Recordset& table;
    Recordset::Field tagID, tankID, tankOD, oal, tankVol, app;
};

void rebuild(const Connection& user) {
    Recordset().Open("DELETE * FROM tblSchedule", user);
    QString job;
    if (!Session::JobID.read(job))
        return;
    Recordset schedule;
    schedule.Open("tblSchedule", user, CursorType::Keyset, CommandType::Table);
    const std::vector<TankLine> tanks = tankLinesOf(job, user, TankLine::scheduled());
    NewRows rows(schedule);
    Models models(tanks);
    ModelValues values;
    for (const TankLine& tank : tanks) {
        takeModel(tank.modelNo.value_or(QString()), models, values);
        rows.addUnits(tank, values);
    }
}

/// In one transaction, which waits for the disk once and not for every row. Rows written before a failure
/// stay.
void fill() {
    const Connection user = openDatabase("User");
    Transaction write(user);
    std::exception_ptr failure;
    try {
        rebuild(user);
    } catch (const Fault&) {
        failure = std::current_exception();
    }
    try {
        write.commit();
    } catch (const Fault&) {
        if (!failure) // otherwise report the failure that led here
            throw;
    }
    if (failure)
        std::rethrow_exception(failure);
}

/// A job and the state of the data.
using State = std::pair<QString, quint32>;

State currentState() {
    const QString job = Session::JobID.text();
    const auto data = readDataState(job, {});
    return {job, data ? data->version : 0};
}

/// What the table was last filled for.
State& filledFor() {
    static State state;
    return state;
}

} // namespace

void FillScheduleTable() {
    runTrapped("FillScheduleTable", fill);
    filledFor() = currentState();
}

QStringList scheduledTanks() {
    QStringList tanks;
    Rows rows("User", scheduleRows);
    for (; !rows.atEnd(); rows->moveNext())
        tanks.append(rows["TankID"].text());
    return tanks;
}

QString whyItEnds(const std::vector<TankLine>& lines) {
    for (const TankLine& tank : lines) {
        const QString name = tank.tankID.value_or(QString());
        if (tank.modelNo.value_or(QString()).isEmpty())
            return "Incomplete: ends before tank " + name + ", which has no model yet.";
        if (tank.qty.value_or(0) > room)
            return "Incomplete: ends after " + QString::number(room) + " of the " +
                   QString::number(*tank.qty) + " units of tank " + name + '.';
    }
    return {};
}

void prepareScheduleTable() {
    if (filledFor() == currentState())
        return;
    try {
        fill();
    } catch (const Fault& fault) {
        // What a tank without a model is, and one of ten units; anything else is a failure.
        if (fault.number() != Fault::TypeMismatch && fault.number() != DatabaseFault::NoSuchColumn)
            throw;
    }
    filledFor() = currentState();
}

void updateScheduleTable() {
    if (filledFor() != currentState())
        FillScheduleTable();
}

} // namespace Schedule
