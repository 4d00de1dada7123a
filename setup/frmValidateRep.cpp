#include "setup/frmValidateRep.h"

#include "core/shell/Screens.h"
#include "core/store/Gateway.h"

#include <algorithm>

using namespace UtilityFunctions;

namespace {
constexpr double standardAtmosphere = 14.7; // psia
} // namespace

frmValidateRep::frmValidateRep() : Screen("frmValidateRep") {
    setupUi(this);
    prepare();
    setDefault(cmdSave);
    cmdOK->hide();
    for (const Box& entry : boxes())
        connect(entry.box, &QLineEdit::textEdited, this, [this] { Dirty = true; });
    on(cmdSave, ".cmdSave", [this] { Save(); });
    on(cmdOK, ".cmdOK", [this] { Save(); });
}

std::array<frmValidateRep::Box, 6> frmValidateRep::boxes() const {
    return {Box{txtPostalCode, "UserPostalCode"},
            {txtCompanyName, "CompanyName"},
            {txtAddress1, "Address1"},
            {txtAddress2, "Address2"},
            {txtPhoneNo, "PhoneNo"},
            {txtFAXNo, "FAXNo"}};
}

void frmValidateRep::Load() {
    Rows own("User", "tblRepMaster", CursorType::ForwardOnly, CommandType::Table);
    for (const Box& entry : boxes())
        entry.box->setMaxLength(own[entry.column].DefinedSize());
}

void frmValidateRep::Show(const QString& zip, const Representative& representative) {
    txtPostalCode->setText(zip);
    txtCompanyName->setText(representative.companyName);
    txtAddress1->setText(representative.address1);
    txtAddress2->setText(representative.address2);
    txtPhoneNo->setText(representative.phoneNo);
    txtFAXNo->setText(representative.faxNo);
}

void frmValidateRep::SetFound(bool found) {
    cmdOK->setVisible(found);
    cmdSave->setVisible(!found);
    setDefault(found ? cmdOK : cmdSave);
    if (!found)
        lblHeader->setText("Your ZIP Code input did not result in a match.");
}

/// The user has one representative of his own, in the first row.
void frmValidateRep::SaveRepresentative() {
    Rows own("User", "tblRepMaster", CursorType::Keyset, CommandType::Table);
    if (own.AtEnd())
        own->AddNew();
    for (const Box& entry : boxes())
        own[entry.column] = entry.box->text();
    if (txtPostalCode->text().isEmpty())
        own["UserPostalCode"] = ".";
    own["Default"] = true;
    own->Update();
}

void frmValidateRep::SavePostalCode() {
    Rows user("User", "tblUser", CursorType::Keyset, CommandType::Table);
    if (user.AtEnd()) {
        user->AddNew();
        user["DefaultPSIa"] = standardAtmosphere;
    }
    user["PostalCode"] = txtPostalCode->text();
    user->Update();
}

void frmValidateRep::Save() {
    const Hourglass hourglass;
    const auto all = boxes();
    if (std::ranges::all_of(all, [](const Box& entry) { return entry.box->text().isEmpty(); })) {
        Dialogs::current().beep();
    } else {
        SaveRepresentative();
        SavePostalCode();
    }
    // Kept as it always was: whoever still has no representative of his own loses the directory.
    if (Rows("User", "SELECT * FROM tblRepMaster").AtEnd())
        DeleteDirectory();
    Dirty = false;
    Screens::unload(name());
}

bool frmValidateRep::QueryUnload() {
    if (Dirty)
        procedure(".cmdSave", [this] { Save(); });
    if (Tag == "UserInput")
        Screens::open("frmUserInput");
    return true;
}
