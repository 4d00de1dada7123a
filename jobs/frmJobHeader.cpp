#include "jobs/frmJobHeader.h"

#include "core/base/Fault.h"
#include "core/base/Text.h"
#include "core/shell/Commands.h"
#include "core/shell/DisplayFields.h"
#include "core/shell/FieldChecks.h"
#include "core/shell/Fields.h"
#include "core/shell/Screens.h"
#include "core/shell/Status.h"
#include "core/store/NameList.h"
#include "core/store/SessionStore.h"
#include "core/store/UserDefaults.h"
#include "jobs/NameLookup.h"

#include <QAction>

using namespace Fields;
using namespace NameLookup;
using namespace Records;
using namespace StatusBar;

namespace {

void showSchedule(bool visible) {
    Commands::setVisible("mnuSchedule", visible);
}

/// Fills an empty box with the user's default, if there is one.
void offer(QLineEdit* box, const QString& fallback) {
    if (box->text().isEmpty())
        box->setText(fallback);
}

} // namespace

frmJobHeader::frmJobHeader() : Screen("frmJobHeader") {
    setupUi(this);
    prepare();
    setDefault(cmdNext);
    // Typing only in the engineer's or contractor's box does not make the record dirty; this is deliberate.
    const auto touched = [this] { Dirty = true; };
    connect(txtJobID, &QLineEdit::textEdited, this, touched);
    connect(txtJobDscrptn, &QLineEdit::textEdited, this, touched);
    connect(txtJobInfo, &QPlainTextEdit::textChanged, this, touched);
    onLeaving(txtJobID, ".txtJobID_Validate", [this] { return validateJobID(); });
    onLeaving(txtEng, ".txtEng_Validate",
              [this] { return validateName(txtEng, "tblEngineer", "This engineer is not on file!"); });
    onLeaving(txtCont, ".txtCont_Validate",
              [this] { return validateName(txtCont, "tblContractor", "This Contractor is not on file!"); });
    on(cmdFindEng, ".cmdFindEng", [this] { FillListView(txtEng, "tblEngineer", "frmJobHeaderEngineer"); });
    on(cmdFindCont, ".cmdFindCont",
       [this] { FillListView(txtCont, "tblContractor", "frmJobHeaderContractor"); });
    on(cmdNext, ".cmdNext", [this] { Next(); });
    onCancel(cmdCancel, ".cmdCancel", [this] { Cancel(); });
}

void frmJobHeader::Load() {
    const JobHeader::Sizes sizes = jobHeaderSizes();
    txtJobID->setMaxLength(sizes.jobID);
    txtJobDscrptn->setMaxLength(sizes.jobDscrptn);
    txtEng->setMaxLength(sizes.engineer);
    txtCont->setMaxLength(sizes.contractor);
    if (QString jobID; Session::JobID.read(jobID))
        asRead = readJobHeader(jobID);
    if (!asRead && Session::Mode.text() == Session::Modes::Edit && !Session::JobID.text().isEmpty())
        throw RecordGone("This job has been deleted.");
    if (asRead)
        showStored(*asRead);
    else
        showDefaults();
    showSchedule(asRead.has_value());
    Dirty = false;
}

void frmJobHeader::showStored(const JobHeader& job) {
    txtJobID->setText(shownText(job.jobID));
    txtJobDscrptn->setText(shownText(job.jobDscrptn));
    txtEng->setText(shownText(job.engineer));
    txtCont->setText(shownText(job.contractor));
    txtJobInfo->setPlainText(shownText(job.jobInfo));
    setStatusText("Edit Job Header");
    const QString way = QStringLiteral(" to edit ");
    setTitle(windowTitle().section(way, 0, 0) + way + shownText(job.jobID));
    txtJobID->setEnabled(false);
}

void frmJobHeader::showDefaults() {
    setStatusText("Create New Job Header");
    const UserDefaults user = readUserDefaults().value_or(UserDefaults());
    txtCont->setText(shownText(user.defaultContractor));
    txtEng->setText(shownText(user.defaultEngineer));
}

void frmJobHeader::Deactivate() {
    showSchedule(false);
}

bool frmJobHeader::refuseJobID(const QString& title, const QString& text) {
    markField(txtJobID); // until it is changed
    Dialogs::current().show({.text = text, .title = title, .fields = {txtJobID}});
    txtJobID->setFocus();
    return false;
}

QString frmJobHeader::jobID() const {
    return withoutTrailingBlanks(txtJobID->text());
}

/// Tells the user when a new job cannot have its ID because it is reserved or taken.
bool frmJobHeader::jobIDIsFree() {
    const QString objection = objectionToNewJob(jobID());
    return objection.isEmpty() ||
           refuseJobID(objection == jobExists ? "Duplicate Entry!" : "Error", objection);
}

/// Offers the defaults again for a job that was started with empty fields.
void frmJobHeader::offerDefaults() {
    const UserDefaults user = readUserDefaults().value_or(UserDefaults());
    offer(txtEng, shownText(user.defaultEngineer));
    offer(txtCont, shownText(user.defaultContractor));
}

bool frmJobHeader::validateJobID() {
    if (!Dirty || !ValidateValueEntered(txtJobID, false))
        return true;
    if (!jobIDIsFree())
        return false;
    offerDefaults();
    return true;
}

bool frmJobHeader::validateName(QLineEdit* field, const QString& table, const QString& question) {
    if (!ValidateValueEntered(field, false))
        return true;
    if (NameList::has(table, field->text()))
        return true;
    const auto answer =
        Dialogs::current().show({question + "\nAdd it to the Engineer list?", "New", QMessageBox::Question,
                                 QMessageBox::Ok | QMessageBox::Cancel});
    if (answer == QMessageBox::Ok)
        NameList::add(table, field->text());
    return true;
}

/// Returns false when the record cannot be saved as it is; the user has already been told.
bool frmJobHeader::SaveRecord() {
    if (!ValidateValueEntered(txtJobID, true))
        return false;
    QString mode;
    if (Dirty && Session::Mode.read(mode)) {
        const bool isNew = mode == Session::Modes::New;
        if (isNew && !jobIDIsFree()) // its field may have been left through a menu
            return false;
        const JobHeader job = {.jobID = jobID(),
                               .jobDscrptn = txtJobDscrptn->text(),
                               .engineer = txtEng->text(),
                               .contractor = txtCont->text(),
                               .jobInfo = txtJobInfo->toPlainText(),
                               .dateCreated = QDateTime::currentDateTime()};
        if (isNew && !addJobHeader(job)) // another copy of the program was faster
            return jobIDIsFree();
        if (!isNew && !saves([&](Record::IfChanged ifChanged) { updateJobHeader(job, asRead, ifChanged); }))
            return false;
        asRead = job;
        Dirty = false;
    }
    Session::JobID.write(jobID());
    return true;
}

void frmJobHeader::Next() {
    const Hourglass hourglass;
    if (jobID().isEmpty()) {
        refuseJobID("Entry Needed", "Please enter a Job ID!");
        return;
    }
    bool saved = false;
    procedure(".SaveRecord", [&] { saved = SaveRecord(); });
    if (!saved)
        return;
    Tag = "1";
    if (!Screens::unload(name()))
        return;
    QString mode;
    const bool read = Session::Mode.read(mode);
    Screens::open(!read || mode == Session::Modes::New ? "frmClassSelect" : "frmTankIDSearch");
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
        bool saved = true;
        if (answer == QMessageBox::Yes)
            procedure(".SaveRecord", [&] { saved = SaveRecord(); });
        if (!saved)
            return false;
    }
    if (Tag == "0") {
        Cancel();
        SetStatusBarText();
    }
    return true;
}
