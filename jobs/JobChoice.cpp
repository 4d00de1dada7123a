#include "jobs/JobChoice.h"

#include "core/shell/Screens.h"
#include "core/store/JobHeader.h"
#include "core/store/SessionStore.h"
#include "core/store/UserDefaults.h"
#include "jobs/JobIDs.h"
#include "jobs/JobSearch.h"

#include <QComboBox>
#include <QCoreApplication>

using namespace Records;

namespace JobChoice {

namespace {

QString translated(const char* text) {
    return QCoreApplication::translate("JobChoice", text);
}

} // namespace

void fill(QComboBox* box) {
    constexpr std::size_t most = 200;
    box->clear();
    box->addItem(translated("New job..."), QString());
    const QString atWork = Screens::anyVisible() ? Session::JobID.text() : QString();
    if (!atWork.isEmpty() && atWork != reservedJob() && readJobHeader(atWork))
        box->addItem(atWork, atWork);
    for (const JobSearch::Job& job : JobSearch::newest(most))
        if (job.jobID != reservedJob() && job.jobID != atWork)
            box->addItem(job.jobID, job.jobID);
    box->setPlaceholderText(translated("Choose a job"));
    box->setCurrentIndex(box->itemText(1) == atWork && !atWork.isEmpty() ? 1 : -1);
}

void take(QComboBox* box) {
    if (box->currentIndex() != 0)
        return;
    box->setCurrentIndex(-1);
    const QString jobID = askForJobID(translated("New job"), translated("Job ID:"));
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

} // namespace JobChoice
