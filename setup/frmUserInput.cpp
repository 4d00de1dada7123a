#include "setup/frmUserInput.h"

#include "core/base/Text.h"
#include "core/shell/DisplayFields.h"
#include "core/shell/FieldChecks.h"
#include "core/shell/Fields.h"
#include "core/shell/Lists.h"
#include "core/shell/Screens.h"
#include "core/shell/Status.h"
#include "core/store/NameList.h"
#include "core/store/UserDefaults.h"
#include "jobs/NameLookup.h"
#include "setup/frmValidateRep.h"

#include <QCoreApplication>
#include <QFocusEvent>

using namespace Fields;
using namespace NameLookup;
using namespace Records;
using namespace StatusBar;

namespace {

constexpr qsizetype zipLength = 5;

QString noPressureWarning() {
    return QCoreApplication::translate(
        "frmUserInput", "With an atmospheric pressure of 0 psia expansion tanks come out too small.");
}

/// Whether a widget gets the focus by navigation rather than back from another program or a menu.
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
    onLeaving(txtDefaultPSIa, ".txtDefaultPSIa_Validate", [this] {
        if (!ValidateNumeric(txtDefaultPSIa, true))
            return false;
        setStatusText(markNoPressure() ? noPressureWarning() : QStringLiteral("Maintain user setup"));
        return true;
    });
    on(cmdFindRep, ".cmdFindRep", [this] { procedure(".GetRepInfo", [this] { GetRepInfo("Find"); }); });
    on(cmdFindEng, ".cmdFindEng", [this] { FillListView(txtEng, "tblEngineer", "frmUserInputEngineer"); });
    on(cmdFindCont, ".cmdFindCont",
       [this] { FillListView(txtCont, "tblContractor", "frmUserInputContractor"); });
    on(bttnSave, ".tbToolbar", [this] {
        bool saved = false;
        procedure(".SaveRecord", [this, &saved] {
            saved = SaveRecord();
            ownDetails.save();
        });
        const QString code = txtPostalCode->text();
        const bool codeLeft = !code.isEmpty() && code.size() != zipLength;
        setStatusText(!saved             ? tr("Not saved")
                      : markNoPressure() ? "Saved. " + noPressureWarning()
                      : codeLeft         ? tr("Saved. Change Rep Info stores %1.").arg(code)
                                         : QStringLiteral("Saved"));
    });
    on(cmdOwnLogo, ".cmdOwnLogo", [this] {
        if (ownDetails.chooseLogo())
            setEntered(true);
    });
    on(cmdOwnNoLogo, ".cmdOwnNoLogo", [this] {
        ownDetails.removeLogo();
        setEntered(true);
    });
    on(bttnChange, ".tbToolbar", [this] { changeRepresentative(); });
    const auto taken = [this] { trap(".lvOptions", [this] { takeRepresentative(); }); };
    connect(lvOptions, &QTreeWidget::itemClicked, this, taken);
    connect(lvOptions, &QTreeWidget::itemActivated, this, taken);
}

void frmUserInput::Load() {
    lblMessage->hide();
    showRepresentative(false);
    fillDefaults();
    ownDetails.fill();
    markNoPressure();
    if (txtPostalCode->text().isEmpty())
        lblMessage->show();
    else
        procedure(".GetRepInfo", [this] { GetRepInfo("Load"); });
    Dirty = false;
}

void frmUserInput::showChanges() {
    fillDefaults();
    ownDetails.fill();
}

void frmUserInput::Activate() {
    setStatusText("Maintain user setup");
}

/// An emptied box counts as 0 and is stored, but with it all tanks but shock arrestors come out too small.
/// Says whether it is so.
bool frmUserInput::markNoPressure() {
    if (toNumber(txtDefaultPSIa->text()) != 0)
        return false;
    markField(txtDefaultPSIa);
    return true;
}

void frmUserInput::fillDefaults() {
    const UserDefaults::Sizes sizes = userDefaultsSizes();
    txtPostalCode->setMaxLength(sizes.postalCode);
    txtEng->setMaxLength(sizes.defaultEngineer);
    txtCont->setMaxLength(sizes.defaultContractor);
    txtDefaultPSIa->setMaxLength(sizes.defaultPSIa);
    const auto user = readUserDefaults();
    txtDefaultPSIa->setText(
        shownNumber(user.value_or(UserDefaults()).defaultPSIa.value_or(UserDefaults::StandardAtmosphere)));
    if (!user)
        return;
    txtEng->setText(shownText(user->defaultEngineer));
    txtCont->setText(shownText(user->defaultContractor));
    txtPostalCode->setText(shownText(user->postalCode));
}

void frmUserInput::showRepresentative(bool visible) {
    for (QLabel* label : {lblName, lblRepAddress, lblPhone, lblFAX, lblRepCompanyNameVal, lblAddress1Val,
                          lblAddress2Val, lblPhoneNoVal, lblFAXNoVal})
        label->setVisible(visible);
    if (visible)
        lblMessage->hide();
}

void frmUserInput::LookupRepInDb(const QString& source, const QString& zip) {
    const auto found = source == "Sys" ? findRepresentative(zip) : ownRepresentative(zip);
    showRepresentative(found.has_value());
    if (!found)
        return;
    representative = *found;
    // The stored names have & doubled, for labels that would take a single one as a mnemonic.
    lblRepCompanyNameVal->setText(shownText(found->companyName).replace("&&", "&"));
    lblAddress1Val->setText(shownText(found->address1));
    lblAddress2Val->setText(shownText(found->address2));
    lblPhoneNoVal->setText(shownText(found->phoneNo));
    lblFAXNoVal->setText(shownText(found->faxNo));
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
    if (ownRepresentatives().empty()) {
        LookupRepInDb("Sys", zip);
        TransferRepInfoToUser(zip);
    } else {
        offerRepresentatives();
        deleteDirectory(); // the catalogue's, oddly: kept as it always was
    }
    Dirty = false;
}

/// Lists the user's own representatives to choose from.
void frmUserInput::offerRepresentatives() {
    ListRows rows;
    for (const Representative& own : ownRepresentatives())
        rows.push_back(std::make_unique<ListRow>(
            QStringList{shownText(own.userPostalCode), shownText(own.companyName), shownText(own.address2)}));
    fillList(lvOptions, {"ZIP Code", "Rep Name", "Address"}, std::move(rows));
    pages->setCurrentWidget(lvOptions);
}

void frmUserInput::takeRepresentative() {
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
    if (NameList::has(table, field->text()))
        return;
    const auto answer = Dialogs::current().show({.text = "This name is not on file!\nAdd it to the list?",
                                                 .title = "New Record",
                                                 .icon = QMessageBox::Question,
                                                 .buttons = QMessageBox::Ok | QMessageBox::Cancel});
    if (answer != QMessageBox::Ok) {
        field->clear();
        return;
    }
    NameList::add(table, field->text());
}

/// False when the atmospheric pressure is no number, which is marked.
bool frmUserInput::SaveRecord() {
    const auto stored = readUserDefaults();
    UserDefaults user = stored.value_or(UserDefaults());
    const QString zip = txtPostalCode->text();
    if (zip.size() == zipLength) // others, such as CAN, are stored with the representative
        user.postalCode = zip;
    if (zip.size() == zipLength && !stored)
        user.firstPostalCode = zip;
    user.defaultContractor = txtCont->text();
    user.defaultEngineer = txtEng->text();
    if (!ValidateNumeric(txtDefaultPSIa, false))
        return false;
    user.defaultPSIa = toNumber(txtDefaultPSIa->text());
    saveUserDefaults(user);
    return true;
}

void frmUserInput::changeRepresentative() {
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
    procedure(".SaveRecord", [this] { ownDetails.save(); });
    SetStatusBarText();
    return true;
}
