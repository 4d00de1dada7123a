#include "extras/package/frmPackage.h"

#include "core/shell/Commands.h"
#include "core/shell/Hourglass.h"
#include "core/shell/Screens.h"
#include "core/shell/Status.h"
#include "core/store/SessionStore.h"
#include "documents/viewer/ReportOutput.h"
#include "extras/package/JobPackage.h"
#include "jobs/JobIDs.h"

#include <utility>

using namespace StatusBar;

namespace {

/// The parts chosen last, a letter each, for the next job.
constexpr Registry::SessionValue lastChoice{"PackageParts"};

void openPackage() {
    if (!jobAtWork("Please open the job whose documents are to be put together!", "Job package").isEmpty())
        Screens::open("frmPackage");
}

} // namespace

frmPackage::frmPackage() : Screen("frmPackage") {
    setupUi(this);
    prepare();
    setDefault(cmdOK);
    on(cmdOK, ".cmdOK", [this] { make(); });
    onCancel(cmdCancel, ".cmdCancel", [this] { Screens::unload(name()); });
}

void frmPackage::Load() {
    setStatusText("Job package");
    lblJobID->setText(Session::JobID.text());
    setTitle("Job Package " + lblJobID->text());
    QString parts;
    if (!lastChoice.read(parts))
        parts = "S";
    chkSubmittals->setChecked(parts.contains('S'));
    chkCalculations->setChecked(parts.contains('C'));
    chkSpecifications->setChecked(parts.contains('T'));
    chkDrawings->setChecked(parts.contains('D'));
    setEntered(false);
}

void frmPackage::make() {
    const Hourglass hourglass;
    const JobPackage::Contents contents{.submittals = chkSubmittals->isChecked(),
                                        .calculations = chkCalculations->isChecked(),
                                        .specifications = chkSpecifications->isChecked(),
                                        .drawings = chkDrawings->isChecked(),
                                        .revision = txtRevision->text(),
                                        .note = txtNote->text()};
    lastChoice.write(QString(contents.submittals ? "S" : "") + (contents.calculations ? "C" : "") +
                     (contents.specifications ? "T" : "") + (contents.drawings ? "D" : ""));
    auto package = JobPackage::begin(lblJobID->text(), contents);
    Screens::unload(name());
    showDocument(std::move(package));
}

void registerPackage() {
    Screens::add("frmPackage", [] { return new frmPackage; });
    Commands::set("mnuPackage", [] {
        if (Screens::activeExists())
            openPackage();
    });
}
