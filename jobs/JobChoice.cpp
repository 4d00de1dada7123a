#include "jobs/JobChoice.h"

#include "core/shell/Fields.h"
#include "core/shell/Screens.h"
#include "core/shell/Status.h"
#include "core/store/JobHeader.h"
#include "core/store/SessionStore.h"
#include "core/store/UserDefaults.h"
#include "jobs/JobIDs.h"
#include "jobs/JobSearch.h"

#include <QComboBox>
#include <QCoreApplication>

using namespace Records;

namespace {

QString tr(const char* text) {
    return QCoreApplication::translate("JobChoice", text);
}

} // namespace

namespace JobChoice {

void fill(QComboBox* box) {
    constexpr std::size_t most = 200;
    box->clear();
    box->addItem(tr("New job..."), QString());
    const QString atWork = Screens::anyVisible() ? Session::JobID.text() : QString();
    if (!atWork.isEmpty() && atWork != reservedJob() && readJobHeader(atWork))
        box->addItem(atWork, atWork);
    for (const JobSearch::Job& job : JobSearch::newest(most))
        if (job.jobID != reservedJob() && job.jobID != atWork)
            box->addItem(job.jobID, job.jobID);
    box->setPlaceholderText(tr("Choose a job"));
    box->setCurrentIndex(box->itemText(1) == atWork && !atWork.isEmpty() ? 1 : -1);
}

void take(QComboBox* box) {
    Fields::unmarkField(box);
    if (box->currentIndex() != 0)
        return;
    box->setCurrentIndex(-1);
    const QString jobID = askForJobID(tr("New job"), tr("Job ID:"));
    if (jobID.isEmpty())
        return;
    const UserDefaults user = readUserDefaults().value_or(UserDefaults());
    JobHeader header;
    header.jobID = jobID;
    header.engineer = user.defaultEngineer;
    header.contractor = user.defaultContractor;
    header.dateCreated = QDateTime::currentDateTime();
    if (!addJobHeader(header)) // another copy of the program was faster
        return refuseJobID(jobExists);
    box->insertItem(1, jobID, jobID);
    box->setCurrentIndex(1);
}

QString require(QComboBox* box, const QString& request) {
    QString jobID = box->currentData().toString();
    if (jobID.isEmpty()) {
        StatusBar::setStatusText(request);
        Fields::markField(box);
        box->setFocus();
    }
    return jobID;
}

} // namespace JobChoice
