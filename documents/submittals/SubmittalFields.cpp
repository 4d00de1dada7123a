#include "documents/submittals/SubmittalFields.h"

#include "core/base/Program.h"
#include "core/shell/DisplayFields.h"
#include "core/shell/Trap.h"
#include "core/store/Catalogue.h"
#include "core/store/Gateway.h"
#include "core/store/SessionStore.h"
#include "core/store/SqlText.h"
#include "core/store/TankLine.h"
#include "documents/drawings/Drawings.h"
#include "documents/report/Picture.h"
#include "documents/report/Renderer.h"
#include "documents/report/Report.h"
#include "documents/specifications/Placeholders.h"
#include "documents/specifications/Specifications.h"
#include "documents/tags/UnitTags.h"

using namespace UtilityFunctions;

namespace {

const QString tankColumns =
    QStringLiteral("SELECT TankID, tblJobHeader.JobID, Engineer, Contractor, ModelNo, Qty, ");
const QString tankTables =
    QStringLiteral("FROM tblJobHeader INNER JOIN tblJobData ON tblJobHeader.JobID = tblJobData.JobID");

/// What sets one submittal apart from the others where the layout does not tell it already.
struct Kind {
    bool threePartDescription = true; // else its third part is the heading
    bool connectionAsNumber = true;   // the connection of the text is the number, else the standard text
    bool formattedVolumes = true;     // with thousands separators
    bool bladderWord = false;         // the word stays in the bladder's name
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
        if (Session::TankID.read(tankID))
            report.source += " WHERE TankID = '" + SqlEscape(tankID) + "'";
        readTankLine(tankID);
        readRepresentative();
        readModel();
        showSpecification();
        set("lblVersion", "Version " + FullProgramVersion());
        set("lblReleaseDate", BRENNOVAL_RELEASE_DATE);
        describe();
        showDrawing();
        if (kind.drawdown && application == "HYD")
            showDrawdown();
        if (kind.drawdown) { // "Y" alone shows a mark, in this case only
            report.control("imgIAPMO").visible = iapmo == "Y";
            report.control("imgNSF").visible = nsf == "Y";
        }
    }

  private:
    /// Sets a field that this layout may not have.
    void set(const char* name, const QString& text) {
        if (ReportControl* control = report.layout().control(name))
            control->text = text;
    }

    /// Shows a number in a pattern; a null leaves what stands around the number in it.
    void setNumber(const char* name, const Recordset::Field& field, const QString& pattern) {
        ReportControl* control = report.layout().control(name);
        if (!control)
            return;
        control->style.pattern = pattern;
        if (field.isNull()) {
            control->text = pattern.startsWith("General") ? pattern.mid(7) : QString();
            return;
        }
        control->number = field.number();
        control->text = ShownNumber(field.number(), pattern);
    }

    /// A stored number as people read it; an empty text for null.
    static QString stored(const Recordset::Field& field) {
        return field.isNull() ? QString() : ShownNumber(field.number(), "General");
    }

    void readTankLine(const QString& tankID) {
        const auto tank = ReadTankLine(tankID);
        if (!tank)
            return;
        values.modelNo = Shown(tank->modelNo);
        values.qty = ShownNumber(tank->qty.value_or(0), "General");
        job = Shown(tank->jobID);
        QStringList tags;
        for (const auto& tag : tank->tags)
            if (UnitTags::IsGiven(tag))
                tags.append(*tag);
        set("txtUnitTagNo", tags.join(", "));
    }

    /// What a file of the page says about itself, and the name that it is offered.
    void describe() {
        report.title = QStringList{report.title, job, values.modelNo}.join(", ");
        report.author = values.rep.isEmpty() ? QStringLiteral("Ordwick Company") : values.rep;
        QString tankID;
        if (Session::TankID.read(tankID)) // which begins with the job
            report.fileName = tankID + u' ' + values.modelNo;
    }

    void readRepresentative() {
        Connection connection = openDatabase("User");
        Recordset representative;
        representative.Open("SELECT * FROM tblRepMaster", connection);
        if (representative.AtEnd())
            return;
        values.rep = representative["CompanyName"].text().replace("&&", "&");
        set("txtRepName", values.rep);
        set("txtRepPhone", representative["PhoneNo"].text());
    }

    void readModel() {
        Rows model = ReadModel(values.modelNo);
        if (model.AtEnd())
            return;
        const QString pressure = stored(model["TankWkPressure"]);
        set("txtShell", model["Shell"].text());
        set("txtBladder",
            kind.bladderWord ? model["Bladder"].text() : model["Bladder"].text().remove("Bladder"));
        set("txtFinish", model["Finish"].text());
        set("txtSysConnType", model["SysConnType"].text());
        setNumber("txtMaxTemp", model["MaxTemp"], "General°F");
        setNumber("txtMaxPressure", model["TankWkPressure"], "General psi");
        setNumber("txtPrecharge", model["PreCharge"], "General psi");
        const QString volumes = kind.formattedVolumes ? "#,##0 gal" : "General gal";
        setNumber("txtTankVol", model["TankVolume"], volumes);
        setNumber("txtAccVol", model["AcceptanceVolume"], volumes);
        setNumber("txtDia", model["TankOD"], "General");
        setNumber("txtWidth", model["TankOD"], "General");
        setNumber("txtHeight", model["OAL"], "General");
        set("txtSysConnSize", model["SysConnStd"].text());
        setNumber("txtWeight", model["ShipWeight"], "General lbs");
        set("txtMakeUpCap", stored(model["MakeUpCapacity"]) + " gpm @ " + pressure + " psi");
        set("txtPressureRange", stored(model["MinSysPressure"]) + " psi - " + pressure + " psi");
        setNumber("txtHorsePower", model["PumpHp"], "General hp");
        set("txtClearance", model["Clearance"].text());
        values.tankGal = FormattedField(model["TankVolume"], "#,##0");
        values.tankOD = stored(model["TankOD"]);
        values.tankOAL = stored(model["OAL"]);
        values.sysConn = kind.connectionAsNumber ? stored(model["TankSysConn"]) : model["SysConnStd"].text();
        values.wkPressure = pressure;
        values.precharge = stored(model["Precharge"]);
        values.makeUpCapacity = stored(model["MakeUpCapacity"]);
        values.hp = stored(model["PumpHp"]);
        submittal = model["Submittal"].text();
        drawing = model["TankDraw"].text();
        application = model["App"].text();
        nsf = model["NSF"].text();
        iapmo = model["IAPMO"].text();
    }

    void showSpecification() {
        const Specification specification =
            submittal.isEmpty() ? Specification() : ReadSpecification(SqlEscape(submittal));
        set("txtTypSpecs", Specification::shown(Placeholders::replaced(specification.text, values),
                                                Placeholders::replaced(specification.lastLine, values)));
        const auto& parts = specification.description;
        set("txtDescription", parts[0] + parts[1] + (kind.threePartDescription ? parts[2] : QString()));
        if (!kind.threePartDescription)
            set("lblDescription", parts[2]);
    }

    void showDrawing() {
        Connection connection = openDatabase("Sys");
        Recordset row;
        row.Open("SELECT * FROM tblTankDrawMaster WHERE TankDraw = '" + drawing + "'", connection);
        if (row.AtEnd())
            return;
        ReportControl& picture = report.control("imgDrawing");
        picture.svg = ReadPicture(DrawingPath(drawing, row["Ext"].text()));
        picture.description = "Drawing of " + values.modelNo;
    }

    /// The system's fluid makes no sense on a hydropneumatic submittal: the pressures take its place.
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
    QString application;
    QString nsf;
    QString iapmo;
};

/// A failure is reported under the data source's connection.
void start(Report& report, const Kind& kind) {
    QString connection;
    Trap("ActiveReport_ReportStart", [&] { connection = dbConnection("User").ConnectionString(); });
    Trap(connection, [&] { Filler(report, kind).fill(); });
}

} // namespace

void StartBladderSubmittal(Report& report) {
    start(report, {.drawdown = true});
}

void StartSteelSubmittal(Report& report) {
    start(report, {.connectionAsNumber = false, .formattedVolumes = false});
}

void StartPackageSubmittal(Report& report) {
    start(report, {.threePartDescription = false, .connectionAsNumber = false});
}

void StartShockSubmittal(Report& report) {
    start(report, {.bladderWord = true, .shock = true});
}
