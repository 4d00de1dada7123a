#include "jobs/frmEngContMaster.h"

#include "core/look/Appearance.h"
#include "core/shell/Lists.h"
#include "core/shell/Status.h"
#include "core/store/NameList.h"
#include "core/store/SessionStore.h"

using namespace StatusBar;

frmEngContMaster::frmEngContMaster() : Screen("frmEngContMaster") {
    setupUi(this);
    prepare();
    connect(txtInput, &QLineEdit::textEdited, this, [this] { Dirty = true; });
    connect(txtInput, &QLineEdit::returnPressed, bttnSave, &QToolButton::click);
    connect(lstBox, &QListWidget::itemSelectionChanged, this, &frmEngContMaster::takeName);
    connect(lstBox, &QListWidget::itemClicked, this, &frmEngContMaster::takeName);
    on(bttnNew, ".tbToolbar", [this] { NewRecord(); });
    on(bttnSave, ".tbToolbar", [this] { procedure(".SaveRecord", [this] { SaveRecord(); }); });
    on(bttnDelete, ".tbToolbar", [this] { procedure(".DeleteRecord", [this] { DeleteRecord(); }); });
}

void frmEngContMaster::Load() {
    txtInput->setMaxLength(NameList::longest("tblEngineer"));
}

void frmEngContMaster::Maintain(const QString& tag) {
    Tag = tag;
    bttnNew->setIcon(Appearance::icon(tag == Session::Modes::Engineers ? "engineers" : "contractors"));
    if (QString mode; Session::Mode.read(mode))
        procedure(".FillListBox", [this] { FillListBox(); });
}

QString frmEngContMaster::SetTable() const {
    return lblHeader->text() == Session::Modes::Contractors ? "tblContractor" : "tblEngineer";
}

void frmEngContMaster::FillListBox() {
    setStatusText("Add/edit/delete " + Tag.toLower());
    lblHeader->setText(Tag);
    setTitle("Maintain " + Tag);
    lstBox->clear();
    txtInput->setMaxLength(NameList::longest(SetTable()));
    for (const QString& listed : NameList::names(SetTable()))
        lstBox->addItem(beginningOf(listed));
}

/// Picking a name counts as typing it.
void frmEngContMaster::takeName() {
    const auto selected = lstBox->selectedItems();
    if (selected.isEmpty())
        return;
    txtInput->setText(selected.first()->text());
    Dirty = true;
}

void frmEngContMaster::NewRecord() {
    if (Dirty) {
        const auto answer = askToSave("Record has not been saved!\nWould you like to save the record?");
        if (answer == QMessageBox::Cancel) {
            txtInput->setFocus();
            return;
        }
        if (answer == QMessageBox::Yes)
            procedure(".SaveRecord", [this] { SaveRecord(); });
    }
    txtInput->clear();
    txtInput->setFocus();
}

/// Adds the name. A name already listed stays as it is: nothing is ever renamed here.
void frmEngContMaster::SaveRecord() {
    const Hourglass hourglass;
    setStatusText("Saving...");
    const QString typed = txtInput->text();
    if (!typed.isEmpty() && !NameList::has(SetTable(), typed))
        NameList::add(SetTable(), typed);
    txtInput->clear();
    FillListBox();
    Dirty = false;
}

void frmEngContMaster::DeleteRecord() {
    const Hourglass hourglass;
    setStatusText("Deleting...");
    NameList::remove(SetTable(), txtInput->text());
    FillListBox();
    txtInput->clear();
}

bool frmEngContMaster::QueryUnload() {
    if (!txtInput->text().isEmpty() && Dirty) {
        const auto answer = askToSave("Current record has not been saved!\nDo you want to save the record?");
        if (answer == QMessageBox::Cancel) {
            txtInput->setFocus();
            return false;
        }
        if (answer == QMessageBox::Yes)
            procedure(".SaveRecord", [this] { SaveRecord(); });
    }
    SetStatusBarText();
    return true;
}
