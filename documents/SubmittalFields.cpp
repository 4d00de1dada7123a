#include "documents/SubmittalFields.h"

#include "core/base/Fault.h"
#include "core/base/Numbers.h"
#include "core/shell/DisplayFields.h"
#include "core/shell/ErrorReport.h"
#include "core/shell/FieldChecks.h"
#include "core/store/Gateway.h"
#include "core/store/SessionStore.h"
#include "core/store/TankLine.h"
#include "documents/report/Report.h"
#include "documents/specifications/Placeholders.h"
#include "documents/specifications/Specifications.h"

#include <QFile>

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
        set("lblVersion", QString("Version %1.%2").arg(ProgramVersion()).arg(BRENNOVAL_REVISION));
        set("lblReleaseDate", BRENNOVAL_RELEASE_DATE);
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

    void setFormatted(const char* name, const Recordset::Field& field, const char* pattern) {
        ReportControl* control = report.layout().control(name);
        if (!control)
            return;
        control->text = FormattedField(field, pattern);
        control->format = QString::fromUtf8(pattern);
        if (!field.isNull())
            control->number = field.number();
    }

    void readTankLine(const QString& tankID) {
        Connection connection = openDatabase("User");
        Recordset tank;
        tank.Open(TankQuery(tankID), connection);
        if (tank.AtEnd())
            return;
        values.modelNo = tank["ModelNo"].text();
        values.qty = QString::fromStdString(NumberText(tank["Qty"].number()));
        QStringList tags;
        for (int i = 1; i <= 10; ++i) {
            const auto tag = tank[QString("TagID%1").arg(i, 2, 10, QChar('0'))];
            if (!tag.isNull() && tag.text() != "-")
                tags.append(tag.text());
        }
        set("txtUnitTagNo", tags.join(", "));
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
        Connection connection = openDatabase("Sys");
        Recordset model;
        model.Open("SELECT * FROM tblModelMaster WHERE ModelDscrptn = '" + SqlEscape(values.modelNo) + "'",
                   connection);
        if (model.AtEnd())
            return;
        const QString pressure = model["TankWkPressure"].text();
        set("txtShell", model["Shell"].text());
        set("txtBladder",
            kind.bladderWord ? model["Bladder"].text() : model["Bladder"].text().remove("Bladder"));
        set("txtFinish", model["Finish"].text());
        set("txtSysConnType", model["SysConnType"].text());
        set("txtMaxTemp", model["MaxTemp"].text() + "°F");
        set("txtMaxPressure", pressure + " psi");
        set("txtPrecharge", model["PreCharge"].text() + " psi");
        if (kind.formattedVolumes) {
            setFormatted("txtTankVol", model["TankVolume"], "#,##0 gal");
            setFormatted("txtAccVol", model["AcceptanceVolume"], "#,##0 gal");
        } else {
            set("txtTankVol", model["TankVolume"].text() + " gal");
            set("txtAccVol", model["AcceptanceVolume"].text() + " gal");
        }
        set("txtDia", model["TankOD"].text());
        set("txtWidth", model["TankOD"].text());
        set("txtHeight", model["OAL"].text());
        set("txtSysConnSize", model["SysConnStd"].text());
        set("txtWeight", model["ShipWeight"].text() + " lbs");
        set("txtMakeUpCap", model["MakeUpCapacity"].text() + " gpm @ " + pressure + " psi");
        set("txtPressureRange", model["MinSysPressure"].text() + " psi - " + pressure + " psi");
        set("txtHorsePower", model["PumpHp"].text() + " hp");
        set("txtClearance", model["Clearance"].text());
        values.tankGal = FormattedField(model["TankVolume"], "#,##0");
        values.tankOD = model["TankOD"].text();
        values.tankOAL = model["OAL"].text();
        values.sysConn = model[kind.connectionAsNumber ? "TankSysConn" : "SysConnStd"].text();
        values.wkPressure = pressure;
        values.precharge = model["Precharge"].text();
        values.makeUpCapacity = model["MakeUpCapacity"].text();
        values.hp = model["PumpHp"].text();
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
        const QString file = ProgramFolder() + "/Drawings/" + drawing + "." + row["Ext"].text();
        if (!QFile::exists(file))
            throw Fault(Fault::FileNotFound, "File not found: " + file.toStdString());
        report.control("imgDrawing").picture = file;
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
