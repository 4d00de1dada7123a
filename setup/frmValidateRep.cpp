#include "setup/frmValidateRep.h"

#include "core/shell/Screens.h"
#include "core/store/UserDefaults.h"

#include <algorithm>

using namespace Records;

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
    return {Box{txtPostalCode, "UserPostalCode", &Representative::userPostalCode},
            {txtCompanyName, "CompanyName", &Representative::companyName},
            {txtAddress1, "Address1", &Representative::address1},
            {txtAddress2, "Address2", &Representative::address2},
            {txtPhoneNo, "PhoneNo", &Representative::phoneNo},
            {txtFAXNo, "FAXNo", &Representative::faxNo}};
}

void frmValidateRep::Load() {
    for (const Box& entry : boxes())
        entry.box->setMaxLength(representativeTextSize(entry.column));
}

void frmValidateRep::Show(const QString& zip, const Representative& representative) {
    for (const Box& entry : boxes())
        entry.box->setText((representative.*entry.member).value_or(QString()));
    txtPostalCode->setText(zip);
}

void frmValidateRep::setFound(bool found) {
    cmdOK->setVisible(found);
    cmdSave->setVisible(!found);
    setDefault(found ? cmdOK : cmdSave);
    if (!found)
        lblHeader->setText("Your ZIP Code input did not result in a match.");
}

/// The user has a single representative, in the first row.
void frmValidateRep::saveRepresentative() {
    Representative own;
    for (const Box& entry : boxes())
        own.*entry.member = entry.box->text();
    if (txtPostalCode->text().isEmpty())
        own.userPostalCode = ".";
    saveDefaultRepresentative(own);
}

void frmValidateRep::savePostalCode() {
    UserDefaults first;
    first.defaultPSIa = UserDefaults::StandardAtmosphere;
    UserDefaults user = readUserDefaults().value_or(first);
    user.postalCode = txtPostalCode->text();
    saveUserDefaults(user);
}

void frmValidateRep::Save() {
    const Hourglass hourglass;
    const auto all = boxes();
    if (std::ranges::all_of(all, [](const Box& entry) { return entry.box->text().isEmpty(); })) {
        Dialogs::current().beep();
    } else {
        saveRepresentative();
        savePostalCode();
    }
    // Kept as it always was: a user who still has no representative loses the directory.
    if (ownRepresentatives().empty())
        deleteDirectory();
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
