#include "documents/submittals/SubmittalFields.h"

#include "core/base/Applications.h"
#include "core/base/Program.h"
#include "core/shell/DisplayFields.h"
#include "core/shell/Trap.h"
#include "core/store/Catalogue.h"
#include "core/store/Gateway.h"
#include "core/store/Model.h"
#include "core/store/Representative.h"
#include "core/store/SessionStore.h"
#include "core/store/Specification.h"
#include "core/store/TankLine.h"
#include "documents/drawings/Drawings.h"
#include "documents/report/Imprint.h"
#include "documents/report/Picture.h"
#include "documents/report/Renderer.h"
#include "documents/report/Report.h"
#include "documents/specifications/Placeholders.h"
#include "documents/submittals/SubmittalRoom.h"
#include "documents/tags/UnitTags.h"

using namespace Catalogue;
using namespace Faults;
using namespace Gateway;
using namespace Program;
using namespace Records;

namespace {

const QString tankColumns =
    QStringLiteral("SELECT TankID, tblJobHeader.JobID, Engineer, Contractor, ModelNo, Qty, ");
const QString tankTables =
    QStringLiteral("FROM tblJobHeader INNER JOIN tblJobData ON tblJobHeader.JobID = tblJobData.JobID");

/// How one submittal differs from the others, beyond its layout.
struct Kind {
    bool threePartDescription = true; // otherwise the third part is the heading
    bool connectionAsNumber = true;   // in the text, otherwise the standard wording
    bool formattedVolumes = true;     // with thousands separators
    bool bladderWord = false;         // the word "Bladder" stays in the bladder's name
    bool drawdown = false;            // hydropneumatic tanks have a block of their own
    bool shock = false;               // another data source
};

/// Fills one submittal.
class Filler {
  public:
    Filler(Report& target, const Kind& kindOfReport) : report(target), kind(kindOfReport) {}

    void fill() {
        report.source =
            kind.shock
                ? tankColumns +
                      "FlowPressure, StaticPressure, ShockPressure, WaterVelocity, LeakLoad, "
                      "PumpRunTime, FlowRate " +
                      tankTables
                : tankColumns + "TotSysVolume, SysFluidType, SOTMin, SOTMax, SOPMin, SOPMax\n" + tankTables;
        QString tankID;
        if (Session::TankID.read(tankID)) {
            report.source += " WHERE TankID = ?";
            report.parameters = {tankID};
        }
        readTankLine(tankID);
        readRepresentative();
        readModel();
        showSpecification();
        set("lblVersion", "Version " + fullProgramVersion());
        set("lblReleaseDate", BRENNOVAL_RELEASE_DATE);
        describe();
        showDrawing();
        shareRoom(report.layout());
        if (kind.drawdown && application == Application::Hydropneumatic)
            showDrawdown();
        if (kind.drawdown) { // only a "Y" shows a mark, and only on this submittal
            report.control("imgIAPMO").visible = iapmo == "Y";
            report.control("imgNSF").visible = nsf == "Y";
        }
    }

  private:
    /// Sets a field that this layout may lack.
    void set(const char* name, const QString& text) {
        if (ReportControl* control = report.layout().control(name))
            control->text = text;
    }

    /// Shows a number by a pattern; a null leaves only the text around the number.
    void setNumber(const char* name, const std::optional<double>& value, const QString& pattern) {
        ReportControl* control = report.layout().control(name);
        if (!control)
            return;
        control->style.pattern = pattern;
        if (!value) {
            control->text = pattern.startsWith("General") ? pattern.mid(7) : QString();
            return;
        }
        control->number = *value;
        control->text = shownNumber(*value, pattern);
    }

    /// A stored number in readable form; empty for null.
    static QString stored(const std::optional<double>& value) {
        return value ? shownNumber(*value, "General") : QString();
    }

    void readTankLine(const QString& tankID) {
        const auto tank = findTankLine(tankID);
        if (!tank)
            return;
        values.modelNo = shownText(tank->modelNo);
        values.qty = shownNumber(tank->qty.value_or(0), "General");
        job = shownText(tank->jobID);
        QStringList tags;
        for (const auto& tag : tank->tags)
            if (UnitTags::isGiven(tag))
                tags.append(*tag);
        set("txtUnitTagNo", tags.join(", "));
    }

    /// The description of a file of the page, and its suggested name.
    void describe() {
        report.title = QStringList{report.title, job, values.modelNo}.join(", ");
        report.author = values.rep.isEmpty() ? QString(Imprint::maker) : values.rep;
        QString tankID;
        if (Session::TankID.read(tankID)) // begins with the job
            report.fileName = tankID + u' ' + values.modelNo;
    }

    void readRepresentative() {
        const auto own = ownRepresentatives();
        if (own.empty())
            return;
        values.rep = shownText(own.front().companyName).replace("&&", "&");
        set("txtRepName", values.rep);
        set("txtRepPhone", shownText(own.front().phoneNo));
    }

    void readModel() {
        const auto model = findModel(values.modelNo);
        if (!model)
            return;
        const QString pressure = stored(model->tankWkPressure);
        set("txtShell", shownText(model->shell));
        set("txtBladder",
            kind.bladderWord ? shownText(model->bladder) : shownText(model->bladder).remove("Bladder"));
        set("txtFinish", shownText(model->finish));
        set("txtSysConnType", shownText(model->sysConnType));
        setNumber("txtMaxTemp", model->maxTemp, "General°F");
        setNumber("txtMaxPressure", model->tankWkPressure, "General psi");
        setNumber("txtPrecharge", model->precharge, "General psi");
        const QString volumes = kind.formattedVolumes ? "#,##0 gal" : "General gal";
        setNumber("txtTankVol", model->tankVolume, volumes);
        setNumber("txtAccVol", model->acceptanceVolume, volumes);
        setNumber("txtDia", model->tankOD, "General");
        setNumber("txtWidth", model->tankOD, "General");
        setNumber("txtHeight", model->oal, "General");
        set("txtSysConnSize", shownText(model->sysConnStd));
        setNumber("txtWeight", model->shipWeight, "General lbs");
        set("txtMakeUpCap", stored(model->makeUpCapacity) + " gpm @ " + pressure + " psi");
        set("txtPressureRange", stored(model->minSysPressure) + " psi - " + pressure + " psi");
        setNumber("txtHorsePower", model->pumpHp, "General hp");
        set("txtClearance", shownText(model->clearance));
        values.tankGal = shownText(model->tankVolume, "#,##0");
        values.tankOD = stored(model->tankOD);
        values.tankOAL = stored(model->oal);
        values.sysConn = kind.connectionAsNumber ? stored(model->tankSysConn) : shownText(model->sysConnStd);
        values.wkPressure = pressure;
        values.precharge = stored(model->precharge);
        values.makeUpCapacity = stored(model->makeUpCapacity);
        values.hp = stored(model->pumpHp);
        submittal = shownText(model->submittal);
        drawing = shownText(model->tankDraw);
        application = applicationCoded(shownText(model->app).toStdString());
        nsf = shownText(model->nsf);
        iapmo = shownText(model->iapmo);
    }

    void showSpecification() {
        const Specification specification =
            submittal.isEmpty() ? Specification() : readSpecification(submittal);
        set("txtTypSpecs", Specification::shown(Placeholders::replaced(specification.text, values),
                                                Placeholders::replaced(specification.lastLine, values)));
        const auto& parts = specification.description;
        set("txtDescription", parts[0] + parts[1] + (kind.threePartDescription ? parts[2] : QString()));
        if (!kind.threePartDescription)
            set("lblDescription", parts[2]);
    }

    void showDrawing() {
        const auto known = findDrawing(drawing);
        if (!known)
            return;
        ReportControl& picture = report.control("imgDrawing");
        picture.svg = readPicture(drawingPath(drawing, known->ending));
        picture.description = "Drawing of " + values.modelNo;
    }

    /// System fluid makes no sense on a hydropneumatic submittal; the pressures take its place.
    void showDrawdown() {
        for (const char* hidden :
             {"txtSOTMax", "txtSOTMin", "lblSOT", "boxSOT", "lblFluid", "txtFluid", "boxFluid"})
            report.control(hidden).visible = false;
        set("lblTSFC", "Drawdown");
        const double left = report.control("lblFluid").place.left();
        const double moved = left - report.control("lblSOP").place.left();
        for (const char* name : {"lblSOP", "boxSOP", "txtSOPMin", "txtSOPMax"})
            report.control(name).place.translate(moved, 0);
    }

    Report& report;
    const Kind& kind;
    Placeholders::Values values;
    QString job;
    QString submittal;
    QString drawing;
    std::optional<Application> application;
    QString nsf;
    QString iapmo;
};

/// Reports a failure under the data source's connection.
void start(Report& report, const Kind& kind) {
    QString connection;
    runTrapped("ActiveReport_ReportStart", [&] { connection = dbConnection("User").connectionString(); });
    runTrapped(connection, [&] { Filler(report, kind).fill(); });
}

} // namespace

void startBladderSubmittal(Report& report) {
    start(report, {.drawdown = true});
}

void startSteelSubmittal(Report& report) {
    start(report, {.connectionAsNumber = false, .formattedVolumes = false});
}

void startPackageSubmittal(Report& report) {
    start(report, {.threePartDescription = false, .connectionAsNumber = false});
}

void startShockSubmittal(Report& report) {
    start(report, {.bladderWord = true, .shock = true});
}
