#include "setup/frmUserInput.h"

#include "core/base/Text.h"
#include "core/shell/FieldChecks.h"
#include "core/shell/Lists.h"
#include "core/shell/Screens.h"
#include "core/shell/Status.h"
#include "core/store/Gateway.h"
#include "core/store/SqlText.h"
#include "jobs/NameLookup.h"
#include "setup/frmValidateRep.h"

#include <QFocusEvent>

using namespace UtilityFunctions;

namespace {

const QString standardAtmosphere = QStringLiteral("14.7"); // psia
constexpr qsizetype zipLength = 5;

/// Whether a widget takes the focus anew, and not back from another program or a menu.
bool entersField(const QFocusEvent& event) {
    return event.gotFocus() && event.reason() != Qt::ActiveWindowFocusReason &&
           event.reason() != Qt::PopupFocusReason && event.reason() != Qt::MenuBarFocusReason;
}

} // namespace

frmUserInput::frmUserInput() : Screen("frmUserInput") {
    setupUi(this);
    prepare();
    connect(txtPostalCode, &QLineEdit::textEdited, this, [this] { Dirty = true; });
    onLeaving(txtPostalCode, ".txtPostalCode_Validate", [this] {
        zipAtLeaving = txtPostalCode->text();
        return true;
    });
    onLeaving(txtEng, ".txtEng_Validate", [this] {
        ValidateforNewEntry(txtEng, "tblEngineer");
        return true;
    });
    onLeaving(txtCont, ".txtCont_Validate", [this] {
        ValidateforNewEntry(txtCont, "tblContractor");
        return true;
    });
    onLeaving(txtDefaultPSIa, ".txtDefaultPSIa_Validate",
              [this] { return ValidateNumeric(txtDefaultPSIa, true); });
    on(cmdFindRep, ".cmdFindRep", [this] { procedure(".GetRepInfo", [this] { GetRepInfo("Find"); }); });
    on(cmdFindEng, ".cmdFindEng", [this] { FillListView(txtEng, "tblEngineer", "frmUserInputEngineer"); });
    on(cmdFindCont, ".cmdFindCont",
       [this] { FillListView(txtCont, "tblContractor", "frmUserInputContractor"); });
    on(bttnSave, ".tbToolbar", [this] { procedure(".SaveRecord", [this] { SaveRecord(); }); });
    on(bttnChange, ".tbToolbar", [this] { ChangeRepresentative(); });
    const auto taken = [this] { trap(".lvOptions", [this] { TakeRepresentative(); }); };
    connect(lvOptions, &QTreeWidget::itemClicked, this, taken);
    connect(lvOptions, &QTreeWidget::itemActivated, this, taken);
}

void frmUserInput::Load() {
    lblMessage->hide();
    ShowRepresentative(false);
    FillDefaults();
    if (txtPostalCode->text().isEmpty())
        lblMessage->show();
    else
        procedure(".GetRepInfo", [this] { GetRepInfo("Load"); });
    Dirty = false;
}

void frmUserInput::Activate() {
    SetStatusText("Maintain user setup");
}

void frmUserInput::FillDefaults() {
    Rows user("User", "tblUser", CursorType::ForwardOnly, CommandType::Table);
    txtPostalCode->setMaxLength(user["PostalCode"].DefinedSize());
    txtEng->setMaxLength(user["DefaultEngineer"].DefinedSize());
    txtCont->setMaxLength(user["DefaultContractor"].DefinedSize());
    txtDefaultPSIa->setMaxLength(user["DefaultPSIa"].DefinedSize());
    txtDefaultPSIa->setText(standardAtmosphere);
    if (user.AtEnd())
        return;
    txtEng->setText(user["DefaultEngineer"].text());
    txtCont->setText(user["DefaultContractor"].text());
    txtPostalCode->setText(user["PostalCode"].text());
    if (!user["DefaultPSIa"].isNull())
        txtDefaultPSIa->setText(user["DefaultPSIa"].text());
}

void frmUserInput::ShowRepresentative(bool visible) {
    for (QLabel* label : {lblName, lblRepAddress, lblPhone, lblFAX, lblRepCompanyNameVal, lblAddress1Val,
                          lblAddress2Val, lblPhoneNoVal, lblFAXNoVal})
        label->setVisible(visible);
    if (visible)
        lblMessage->hide();
}

void frmUserInput::LookupRepInDb(const QString& source, const QString& zip) {
    std::optional<Representative> found;
    if (source == "Sys") {
        found = FindRepresentative(zip);
    } else if (Rows own("User", "SELECT * FROM tblRepMaster WHERE UserPostalCode = '" + SqlEscape(zip) + "'");
               !own.AtEnd()) {
        found = Representative{.companyName = own["CompanyName"].text(),
                               .address1 = own["Address1"].text(),
                               .address2 = own["Address2"].text(),
                               .phoneNo = own["PhoneNo"].text(),
                               .faxNo = own["FAXNo"].text()};
    }
    ShowRepresentative(found.has_value());
    if (!found)
        return;
    representative = *found;
    // Names are stored for labels that take a single & as the mark of a mnemonic.
    lblRepCompanyNameVal->setText(QString(found->companyName).replace("&&", "&"));
    lblAddress1Val->setText(found->address1);
    lblAddress2Val->setText(found->address2);
    lblPhoneNoVal->setText(found->phoneNo);
    lblFAXNoVal->setText(found->faxNo);
}

void frmUserInput::GetRepInfo(const QString& sender) {
    const QString zip = txtPostalCode->text();
    if (sender == "Load") {
        LookupRepInDb("User", zip);
        Dirty = false;
        return;
    }
    if (!ValidateValueEntered(txtPostalCode, false) || !Dirty || zipAtFocus == zipAtLeaving)
        return;
    if (Rows("User", "SELECT * FROM tblRepMaster").AtEnd()) {
        LookupRepInDb("Sys", zip);
        TransferRepInfoToUser(zip);
    } else {
        OfferRepresentatives();
        DeleteDirectory(); // the catalogue's, of all places: kept as it always was
    }
    Dirty = false;
}

/// Lists the user's own representatives, one of whom he picks.
void frmUserInput::OfferRepresentatives() {
    ListRows rows;
    for (Rows own("User", "SELECT * FROM tblRepMaster"); !own.AtEnd(); own->MoveNext())
        rows.push_back(std::make_unique<ListRow>(
            QStringList{own["UserPostalCode"].text(), own["CompanyName"].text(), own["Address2"].text()}));
    FillList(lvOptions, {"ZIP Code", "Rep Name", "Address"}, std::move(rows));
    pages->setCurrentWidget(lvOptions);
}

void frmUserInput::TakeRepresentative() {
    const QTreeWidgetItem* picked = lvOptions->currentItem();
    if (!picked || pages->currentWidget() != lvOptions)
        return;
    txtPostalCode->setText(picked->text(0));
    LookupRepInDb("User", picked->text(0));
    pages->setCurrentWidget(pageRepresentative);
}

void frmUserInput::ValidateforNewEntry(QLineEdit* field, const QString& table) {
    if (!ValidateValueEntered(field, false))
        return;
    Rows names("User", "SELECT * FROM " + table + " WHERE fldName = '" + SqlEscape(field->text()) + "'",
               CursorType::Keyset);
    if (!names.AtEnd())
        return;
    const auto answer = Dialogs::current().show({.text = "This name is not on file!\nAdd it to the list?",
                                                 .title = "New Record",
                                                 .icon = QMessageBox::Question,
                                                 .buttons = QMessageBox::Ok | QMessageBox::Cancel});
    if (answer != QMessageBox::Ok) {
        field->clear();
        return;
    }
    names->AddNew();
    names["fldName"] = field->text();
    names->Update();
}

void frmUserInput::SaveRecord() {
    Rows user("User", "tblUser", CursorType::Keyset, CommandType::Table);
    const bool isNew = user.AtEnd();
    if (isNew)
        user->AddNew();
    const QString zip = txtPostalCode->text();
    if (zip.size() == zipLength) // others, such as CAN, are written with the representative
        user["PostalCode"] = zip;
    if (zip.size() == zipLength && isNew)
        user["FirstPostalCode"] = zip;
    user["DefaultContractor"] = txtCont->text();
    user["DefaultEngineer"] = txtEng->text();
    if (!ValidateNumeric(txtDefaultPSIa, false))
        return;
    user["DefaultPSIa"] = ToNumber(txtDefaultPSIa->text());
    user->Update();
}

void frmUserInput::ChangeRepresentative() {
    const Hourglass hourglass;
    auto* next = dynamic_cast<frmValidateRep*>(Screens::load("frmValidateRep"));
    if (!next)
        return;
    next->Show(txtPostalCode->text(), representative);
    next->Tag = "UserInput";
    Screens::show(next->name());
    Screens::unload(name());
}

bool frmUserInput::eventFilter(QObject* object, QEvent* event) {
    if (object == txtPostalCode && event->type() == QEvent::FocusIn &&
        entersField(*static_cast<QFocusEvent*>(event)))
        zipAtFocus = txtPostalCode->text();
    return Screen::eventFilter(object, event);
}

bool frmUserInput::QueryUnload() {
    if (!lblName->isHidden())
        procedure(".SaveRecord", [this] { SaveRecord(); });
    SetStatusBarText();
    return true;
}
