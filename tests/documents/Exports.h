#pragma once

#include "core/store/Gateway.h"
#include "core/store/SessionStore.h"
#include "documents/Documents.h"
#include "documents/export/Export.h"
#include "documents/report/Renderer.h"
#include "documents/report/Reports.h"
#include "documents/schedule/ScheduleTable.h"
#include "documents/submittals/Submittals.h"
#include "tests/documents/ListLayout.h"
#include "tests/support/TemporaryHome.h"

#include <gtest/gtest.h>

#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

/// Runs an external program in a folder of its own: some leave the pictures they extract in the current
/// folder.
inline QByteArray run(const QString& program, const QStringList& arguments) {
    const QTemporaryDir folder;
    QProcess process;
    process.setWorkingDirectory(folder.path());
    process.start(program, arguments);
    if (!process.waitForFinished(60000) || process.exitCode() != 0)
        ADD_FAILURE() << program.toStdString() << ": " << process.readAllStandardError().toStdString();
    return process.readAllStandardOutput();
}

/// A text without blanks and quotes, so that line ends and a converter's own quotes do not matter.
inline QString dense(QString text) {
    return text.remove(QRegularExpression("\\s|\u00a0|\""));
}

/// A workbook's cells as a spreadsheet program shows them.
inline QString csvOf(const QString& workbook) {
    return QString::fromUtf8(
        run("ssconvert", {"-O", "format=preserve", "-T", "Gnumeric_stf:stf_assistant", workbook, "fd://1"}));
}

/// The texts of a document as an RTF reader sees them.
inline QString textOfRtf(const QString& document) {
    QFile html(document + ".html");
    if (!html.open(QIODevice::WriteOnly))
        return {};
    html.write(run("unrtf", {"--html", document}));
    html.close();
    return QString::fromUtf8(
        run("xmllint", {"--html", "--nowarning", "--xpath", "string(/)", html.fileName()}));
}

/// A job with a line of each kind, and its documents. Every export is opened with an unrelated program.
class Exports : public testing::Test {
  protected:
    Exports() {
        registerDocuments();
        home.installData();
        sql("INSERT INTO tblJobHeader (JobID, Engineer, Contractor) VALUES ('O''Hara & 水 <7>', 'Łukasz "
            "\"Ł\" Ohm', "
            "'D & E')");
        sql("INSERT INTO tblRepMaster (CompanyName, PhoneNo) VALUES ('Pump && Tank', '(555) 555-0100')");
        addTank("T1", "RCB 500", "'North-1', '-', 'South-3', NULL");
        addTank("T2", "24RB60", "NULL, NULL, NULL, NULL");
        addTank("T3", "PKG 30-1.8", "NULL, NULL, NULL, NULL");
        addTank("T4", "SHK 300", "NULL, NULL, NULL, NULL");
        addTank("T5", "JWB 800", "NULL, NULL, NULL, NULL");
    }

    static void sql(const QString& statement) {
        Connection user = Gateway::openDatabase("User");
        Recordset().Open(statement, user);
    }

    static void addTank(const QString& id, const QString& model, const QString& tags) {
        sql("INSERT INTO tblJobData (TankID, JobID, ModelNo, Qty, TotSysVolume, SysFluidType, SOTMin, "
            "SOTMax, SOPMin, "
            "SOPMax, FlowRate, FlowPressure, StaticPressure, ShockPressure, WaterVelocity, LeakLoad, "
            "PumpRunTime, "
            "TagID01, TagID02, TagID03, TagID04) VALUES ('" +
            id + "', 'O''Hara & 水 <7>', '" + model +
            "', 4, 1234.5, 'Water', 40, 180, 12, 30, 260, 45, 65, 150, 8.44, .136, 5.6, " + tags + ")");
    }

    static Pages submittal(const QString& tank, const QString& model) {
        Session::TankID.write(tank);
        return Report(*findReport(Submittals::SetReport(model))).Run().pages;
    }

    static Pages list(const QString& sql) {
        Connection catalogue = Gateway::openDatabase("Sys");
        Recordset rows;
        rows.Open(sql, catalogue);
        return renderPages(listLayout(), rows);
    }

    static Document report(const char* name, const char* application = "") {
        Session::JobID.write("O'Hara & 水 <7>");
        Session::TankClass.write(application);
        Schedule::FillScheduleTable();
        return Report(*findReport(name)).Run();
    }

    QString write(const char* command, const Document& document, const char* name) {
        QString path = home.dataFolder() + u'/' + QLatin1String(name);
        Export::toFile(Export::format(command), document, path);
        return path;
    }
    QString write(const char* command, const Pages& pages, const char* name) {
        return write(command, Document{"Brennoval Submittal", "Author", "a", pages}, name);
    }

    static QStringList textsOf(const Pages& pages) {
        QStringList texts;
        for (const Page& page : pages)
            for (const PageText& text : page.texts)
                texts.append(text.plain());
        return texts;
    }

    static void expectAll(const Pages& pages, const QString& content, const char* format) {
        const QString have = dense(content);
        for (const Page& page : pages)
            for (const PageText& text : page.texts) {
                if (text.pageNumber && QLatin1String(format) == "Excel") // a sheet has no pages
                    continue;
                for (const QString& line : text.lines()) // headings side by side are read line by line
                    EXPECT_TRUE(have.contains(dense(line))) << format << ": " << line.toStdString();
            }
    }

    TemporaryHome home;
};
