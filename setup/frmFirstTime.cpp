#include "setup/frmFirstTime.h"

#include "core/base/Fault.h"
#include "core/base/Numbers.h"
#include "core/look/Appearance.h"
#include "core/shell/Commands.h"
#include "core/shell/Screens.h"
#include "core/store/UserDefaults.h"
#include "setup/InstallerFiles.h"
#include "setup/PriorData.h"
#include "setup/frmValidateRep.h"

#include <QDir>
#include <QFile>

#include <optional>

using namespace InstallerFiles;
using namespace PriorData;
using namespace Records;

namespace {

constexpr qsizetype zipLength = 5;

/// Deletes a file, unless it is missing or not one that the installer may name. Throws Fault 75 if it cannot
/// be deleted.
void deleteFile(const QString& path) {
    if (!isInstallersToTake(path))
        return;
    if (!QFile::remove(path))
        throw Fault(Fault::PathFileAccess, "Path/File access error: " + path.toStdString());
}

bool needsZip() {
    const auto user = readUserDefaults();
    return !user || user->postalCode.value_or(QString()).isEmpty();
}

QString askForZip(const QString& above) {
    return Dialogs::current()
        .input("Waiting...", above +
                                 "Please enter your ZIP Code.\n"
                                 "This will be used to determine who is your manufacturer's representative.")
        .trimmed();
}

/// The ZIP code that the user enters, or HOME or CAN; nothing if they enter none. After an invalid one it
/// asks once more and then accepts whatever is entered.
std::optional<QString> zipFromUser() {
    const QString zip = askForZip({});
    if (zip.isEmpty())
        return std::nullopt;
    if (zip == "HOME" || zip == "CAN")
        return zip;
    const bool numeric = parseNumber(zip.toStdString()).has_value();
    if (!numeric || zip.size() < zipLength)
        return askForZip("Invalid Response\n");
    return zip.left(zipLength);
}

} // namespace

frmFirstTime::frmFirstTime() : Screen("frmFirstTime") {
    setupUi(this);
    prepare();
    setDefault(cmdContinue);
    imgMark->setPixmap(Appearance::splashPicture(imgMark->minimumSize(), devicePixelRatioF()));
    lblDescription->setText("Electronic Catalog\nTool\n&\nExpansion Tank\nSelection Software");
    on(cmdSetup, ".cmdSetup", [] {
        const Hourglass hourglass;
        Screens::open("frmUserInput");
    });
    on(cmdDemo, ".cmdDemo", Commands::handlerOf("mnuDemo"));
    on(cmdCheck, ".cmdCheck", [this] { storeTick(); });
    on(cmdContinue, ".cmdContinue", [this] { Continue(); });
}

void frmFirstTime::Load() {
    const int Convert = ToInt16(readFirstTimeFlag("Convert").value_or(0));
    if (Convert == 0 && ConvertPriorData())
        DeleteFiles("Data");
    DeleteFiles("Demo");
}

/// Deletes the file that the installer's ini file names, and the ini file itself.
void frmFirstTime::DeleteFiles(const QString& kind) {
    trap(".DeleteFiles", [&] {
        const QString ini = kind == "Demo" ? "demosource.ini" : "datasource.ini";
        QString path;
        try {
            path = readInstallerFile(ini);
        } catch (const Fault& fault) {
            if (fault.number() != Fault::FileNotFound && fault.number() != Fault::PathNotFound)
                throw;
            return;
        }
        deleteFile(path);
        deleteFile(QDir(installerFolderPath()).filePath(ini));
    });
}

void frmFirstTime::storeTick() {
    saveFirstTimeFlag("FirstTime", cmdCheck->isChecked());
}

void frmFirstTime::LookRepInDb(const QString& zip, bool& found) {
    auto* screen = dynamic_cast<frmValidateRep*>(Screens::find("frmValidateRep"));
    const auto representative = findRepresentative(zip);
    found = representative.has_value();
    if (screen && found)
        screen->Show(zip, *representative);
}

/// Shows the representative for a ZIP code, or an empty record if there is none.
void frmFirstTime::showRepresentative(const QString& zip) {
    auto* screen = dynamic_cast<frmValidateRep*>(Screens::load("frmValidateRep"));
    if (!screen)
        return;
    bool found = false;
    LookRepInDb(zip, found);
    screen->setFound(found);
    Screens::show(screen->name());
}

void frmFirstTime::Continue() {
    const Hourglass hourglass;
    Tag = "1";
    if (const auto zip = needsZip() ? zipFromUser() : std::nullopt)
        showRepresentative(*zip);
    Screens::unload(name());
}

bool frmFirstTime::QueryUnload() {
    if (Tag != "1")
        procedure(".Unload", [this] { Continue(); });
    return true;
}
