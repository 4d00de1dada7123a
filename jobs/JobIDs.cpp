#include "jobs/JobIDs.h"

#include "core/base/Text.h"
#include "core/shell/Dialogs.h"
#include "core/store/JobHeader.h"
#include "core/store/SessionStore.h"

QString jobAtWork(const QString& request, const QString& title) {
    QString jobID = Session::JobID.text();
    if (jobID.isEmpty() || !Records::readJobHeader(jobID)) {
        Dialogs::current().show({.text = request, .title = title});
        jobID.clear();
    }
    return jobID;
}

QString askForJobID(const QString& title, const QString& prompt) {
    QString jobID = withoutTrailingBlanks(Dialogs::current().input(title, prompt));
    const QString objection = jobID.isEmpty() ? QString() : Records::objectionToNewJob(jobID);
    if (!objection.isEmpty()) {
        refuseJobID(objection);
        jobID.clear();
    }
    return jobID;
}

void refuseJobID(const QString& objection) {
    const bool exists = objection == Records::jobExists;
    Dialogs::current().show({.text = objection, .title = exists ? "Duplicate Entry!" : "Error"});
}
