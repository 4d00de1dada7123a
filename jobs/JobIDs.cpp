#include "jobs/JobIDs.h"

#include "core/base/Text.h"
#include "core/shell/Dialogs.h"
#include "core/store/JobHeader.h"

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
