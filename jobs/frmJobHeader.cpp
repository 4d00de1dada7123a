#include "jobs/frmJobHeader.h"

#include "core/shell/BrennovalMain.h"
#include "core/shell/FieldChecks.h"
#include "core/store/Gateway.h"
#include "core/store/SessionStore.h"
#include "jobs/NameLookup.h"

#include <QAction>

using namespace UtilityFunctions;

namespace {

void showSchedule(bool visible) {
    BrennovalMain::instance()->command("mnuSchedule")->setVisible(visible);
}

/// Fills an empty box with a default of the user, if there is one.
void offer(QLineEdit* box, Recordset::Field fallback) {
    if (box->text().isEmpty() && !fallback.text().isEmpty())
        box->setText(fallback.text());
}

} // namespace

frmJobHeader::frmJobHeader() : Screen("frmJobHeader") {
    setupUi(this);
    prepare();
    setDefault(cmdNext);
    // Typing in the engineer's or contractor's box alone does not make the record dirty; that is meant.
    const auto touched = [this] { Dirty = true; };
    connect(txtJobID, &QLineEdit::textEdited, this, touched);
    connect(txtJobDscrptn, &QLineEdit::textEdited, this, touched);
    connect(txtJobInfo, &QPlainTextEdit::textChanged, this, touched);
    onLeaving(txtJobID, ".txtJobID_Validate", [this] { return ValidateJobID(); });
    onLeaving(txtEng, ".txtEng_Validate",
              [this] { return ValidateName(txtEng, "tblEngineer", "This engineer is not on file!"); });
    onLeaving(txtCont, ".txtCont_Validate",
              [this] { return ValidateName(txtCont, "tblContractor", "This Contractor is not on file!"); });
    on(cmdFindEng, ".cmdFindEng", [this] { FillListView(txtEng, "tblEngineer", "frmJobHeaderEngineer"); });
    on(cmdFindCont, ".cmdFindCont",
       [this] { FillListView(txtCont, "tblContractor", "frmJobHeaderContractor"); });
    on(cmdNext, ".cmdNext", [this] { Next(); });
    on(cmdCancel, ".cmdCancel", [this] { Cancel(); });
}

void frmJobHeader::Load() {
    Connection connection = openDatabase("User");
    Recordset table;
    table.Open("tblJobHeader", connection, CursorType::ForwardOnly, LockType::Optimistic, CommandType::Table);
    txtJobID->setMaxLength(table["JobID"].DefinedSize());
    txtJobDscrptn->setMaxLength(table["JobDscrptn"].DefinedSize());
    txtEng->setMaxLength(table["Engineer"].DefinedSize());
    txtCont->setMaxLength(table["Contractor"].DefinedSize());
    table.Close();

    QString jobID;
    if (Session::JobID.read(jobID)) {
        Recordset job;
        job.Open("SELECT * FROM tblJobHeader WHERE JobID ='" + SqlEscape(jobID) + "'", connection);
        if (!job.AtEnd()) {
            txtJobID->setText(job["JobID"].text());
            txtJobDscrptn->setText(job["JobDscrptn"].text());
            txtEng->setText(job["Engineer"].text());
            txtCont->setText(job["Contractor"].text());
            txtJobInfo->setPlainText(job["JobInfo"].text());
            SetStatusText("Edit Job Header");
            txtJobID->setEnabled(false);
            showSchedule(true);
            Dirty = false;
            return;
        }
    }
    SetStatusText("Create New Job Header");
    Recordset user;
    user.Open("SELECT * FROM tblUser", connection);
    if (!user.AtEnd()) {
        txtCont->setText(user["DefaultContractor"].text());
        txtEng->setText(user["DefaultEngineer"].text());
    }
    showSchedule(false);
    Dirty = false;
}

void frmJobHeader::Deactivate() {
    showSchedule(false);
}

bool frmJobHeader::ValidateJobID() {
    if (!Dirty || !ValidateValueEntered(txtJobID, false))
        return true;
    if (txtJobID->text() == "CONVERT") {
        Dialogs::current().show(
            {"This JobID is reserved for system use!\nPlease enter another value.", "Error"});
        txtJobID->setFocus();
        return false;
    }
    Connection connection = openDatabase("User");
    Recordset job;
    job.Open("SELECT JobID FROM tblJobHeader WHERE JobID = '" + SqlEscape(txtJobID->text()) + "'",
             connection);
    if (!job.AtEnd()) {
        Dialogs::current().show(
            {"This job ID all ready exists!\nPlease change the entry", "Duplicate Entry!"});
        txtJobID->setFocus();
        return false;
    }
    Recordset user;
    user.Open("tblUSer", connection, CursorType::ForwardOnly, LockType::Optimistic, CommandType::Table);
    if (!user.AtEnd()) {
        offer(txtEng, user["DefaultEngineer"]);
        offer(txtCont, user["DefaultContractor"]);
    }
    return true;
}

bool frmJobHeader::ValidateName(QLineEdit* field, const QString& table, const QString& question) {
    if (!ValidateValueEntered(field, false))
        return true;
    Connection connection = openDatabase("User");
    Recordset known;
    known.Open("SELECT * FROM " + table + " WHERE fldName = '" + SqlEscape(field->text()) + "'", connection);
    if (!known.AtEnd())
        return true;
    const auto answer =
        Dialogs::current().show({question + "\nAdd it to the Engineer list?", "New", QMessageBox::Question,
                                 QMessageBox::Ok | QMessageBox::Cancel});
    if (answer == QMessageBox::Ok) {
        Recordset names;
        names.Open(table, connection, CursorType::Keyset, LockType::Optimistic, CommandType::Table);
        names.AddNew();
        names["fldName"] = field->text();
        names.Update();
    }
    return true;
}

void frmJobHeader::SaveRecord() {
    if (!ValidateValueEntered(txtJobID, true))
        return;
    const QString jobID = txtJobID->text();
    Session::JobID.write(jobID);
    QString mode;
    if (!Dirty || !Session::Mode.read(mode))
        return;
    Connection connection = openDatabase("User");
    Recordset job;
    if (mode == "New") {
        job.Open("tblJobHeader", connection, CursorType::Keyset, LockType::Optimistic, CommandType::Table);
        job.AddNew();
        job["JobID"] = jobID;
    } else {
        job.Open("SELECT * FROM tblJobHeader WHERE JobID = '" + SqlEscape(jobID) + "'", connection,
                 CursorType::Keyset);
    }
    job["JobDscrptn"] = txtJobDscrptn->text();
    job["Engineer"] = txtEng->text();
    job["Contractor"] = txtCont->text();
    job["JobInfo"] = txtJobInfo->toPlainText();
    job["DateCreated"] = QDateTime::currentDateTime(); // of the last change, despite its name
    job.Update();
    Dirty = false;
}

void frmJobHeader::Next() {
    const Hourglass hourglass;
    if (txtJobID->text().isEmpty()) {
        Dialogs::current().show({"Please enter a Job ID!", "Entry Needed"});
        txtJobID->setFocus();
        return;
    }
    procedure(".SaveRecord", [this] { SaveRecord(); });
    Tag = "1";
    if (!Screens::unload(name()))
        return;
    QString mode;
    const bool read = Session::Mode.read(mode);
    Screens::open(!read || mode == "New" ? "frmClassSelect" : "frmTankIDSearch");
}

void frmJobHeader::Cancel() {
    const Hourglass hourglass;
    Tag = "1";
    Screens::unload(name());
}

bool frmJobHeader::QueryUnload() {
    if (!txtJobID->text().isEmpty() && Dirty) {
        const auto answer = Dialogs::current().show(
            {"Record has not been saved!\nWould you like to save the record?", "Save?", QMessageBox::Question,
             QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel});
        if (answer == QMessageBox::Cancel)
            return false;
        if (answer == QMessageBox::Yes)
            procedure(".SaveRecord", [this] { SaveRecord(); });
    }
    if (Tag == "0") {
        Cancel();
        SetStatusBarText();
    }
    return true;
}
