#include "jobs/JobChoice.h"

#include "core/base/Fault.h"
#include "core/base/Text.h"
#include "core/shell/Dialogs.h"
#include "core/shell/Fields.h"
#include "core/shell/Screens.h"
#include "core/shell/Status.h"
#include "core/store/JobHeader.h"
#include "core/store/SessionStore.h"
#include "core/store/UserDefaults.h"
#include "jobs/JobIDs.h"
#include "jobs/JobSearch.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QCompleter>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QStandardItemModel>

#include <algorithm>

using namespace Records;

namespace {

constexpr int newJob = 0; // the place of "New job..." in the list
const char* const newJobProperty = "newJob";

QString tr(const char* text) {
    return QCoreApplication::translate("JobChoice", text);
}

/// Takes back what was said of the box, once it is filled in anew.
void forgive(QComboBox* box) {
    Fields::unmarkField(box);
    StatusBar::stopAsking();
}

/// Whether there cannot be a new job with an ID, which the user is told. What cannot be checked as it is
/// typed is checked again before it is stored.
enum class IfLocked { Accept, Throw };
bool refuses(const QString& jobID, IfLocked ifLocked) {
    QString objection;
    try {
        objection = objectionToNewJob(jobID);
    } catch (const DatabaseFault&) {
        if (ifLocked == IfLocked::Throw)
            throw;
    }
    if (!objection.isEmpty())
        refuseJobID(objection);
    return !objection.isEmpty();
}

/// Whether all words typed are in an ID, without being all of it.
bool isPartOf(const QString& jobID, const QString& typed) {
    const QStringList words = typed.split(u' ', Qt::SkipEmptyParts);
    return jobID.compare(typed.trimmed(), Qt::CaseInsensitive) != 0 &&
           std::ranges::all_of(
               words, [&jobID](const QString& word) { return jobID.contains(word, Qt::CaseInsensitive); });
}

/// Takes a new job back from the list of a box.
void forgetNew(QComboBox* box) {
    const QString jobID = box->property(newJobProperty).toString();
    if (const int place = box->findText(jobID); !jobID.isEmpty() && place >= 0)
        box->removeItem(place);
    box->setProperty(newJobProperty, QString());
    box->setCurrentIndex(-1);
    box->clearEditText();
}

/// The jobs that match what was typed. If they cannot be read, none: nobody asked for them yet.
std::vector<JobSearch::Job> matching(const QString& typed, std::size_t most) {
    try {
        return JobSearch::newest(most, typed);
    } catch (const Fault&) {
        return {};
    }
}

/// Finds jobs for what is typed in a box. The list below the box opens with the arrow keys, and the wheel
/// leaves the box alone: neither may choose "New job...", which asks a question.
class Finder : public QObject {
  public:
    explicit Finder(QComboBox* owner) : QObject(owner), box(owner) {
        auto* completer = new QCompleter(&found, this);
        completer->setCompletionMode(QCompleter::UnfilteredPopupCompletion);
        completer->setCompletionRole(Qt::UserRole); // the ID without the description
        box->lineEdit()->setCompleter(completer); // as the box's own, it would look for its texts in the list
        completer->setWidget(box);
        connect(box->lineEdit(), &QLineEdit::textEdited, this, [this](const QString& typed) { find(typed); });
        connect(box->lineEdit(), &QLineEdit::editingFinished, this, [this] { settle(); });
        box->installEventFilter(this);
    }

  protected:
    bool eventFilter(QObject* object, QEvent* event) override {
        if (object == box && event->type() == QEvent::Wheel) {
            event->ignore();
            return true;
        }
        if (object != box || event->type() != QEvent::KeyPress)
            return QObject::eventFilter(object, event);
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Down && !box->lineEdit()->completer()->popup()->isVisible()) {
            box->showPopup();
            return true;
        }
        return key->key() == Qt::Key_Up || key->key() == Qt::Key_PageUp || key->key() == Qt::Key_PageDown;
    }

  private:
    void find(const QString& typed) {
        constexpr std::size_t most = 50;
        forgive(box);
        found.clear();
        if (typed.trimmed().isEmpty())
            return;
        for (const JobSearch::Job& job : matching(typed, most)) {
            const bool described = !job.description.isEmpty();
            auto* row = new QStandardItem(described ? job.jobID + "    " + job.description : job.jobID);
            row->setData(job.jobID, Qt::UserRole);
            found.appendRow(row); // which owns it
        }
    }

    /// Words that only one job has stand for that. A part of its ID does not: it may be meant as the ID of
    /// another job, and chosen from the list below the box it is no part any more.
    void settle() {
        const QString typed = box->currentText();
        if (typed.isEmpty() || typed == box->property(newJobProperty).toString() || box->findText(typed) >= 0)
            return;
        const auto jobs = matching(typed, 2);
        if (jobs.size() != 1 || isPartOf(jobs.front().jobID, typed))
            return;
        box->setEditText(jobs.front().jobID);
        StatusBar::setStatusText(tr("Found job %1").arg(jobs.front().jobID));
    }

    QComboBox* box;
    QStandardItemModel found;
};

} // namespace

namespace JobChoice {

void prepare(QComboBox* box) {
    box->setEditable(true);
    box->setInsertPolicy(QComboBox::NoInsert);
    box->setMaxVisibleItems(15);
    box->lineEdit()->setPlaceholderText(tr("Find or choose a job"));
    box->lineEdit()->setAccessibleName(box->accessibleName()); // it has the focus
    new Finder(box);                                           // which the box owns
}

void fill(QComboBox* box, const QString& jobID) {
    constexpr std::size_t most = 200;
    box->clear();
    box->setProperty(newJobProperty, QString());
    box->addItem(tr("New job..."));
    const bool exists = !jobID.isEmpty() && jobID != reservedJob() && readJobHeader(jobID);
    if (exists)
        box->addItem(jobID);
    for (const JobSearch::Job& job : JobSearch::newest(most))
        if (job.jobID != jobID)
            box->addItem(job.jobID);
    box->setCurrentIndex(exists ? 1 : -1);
}

void take(QComboBox* box) {
    forgive(box);
    if (box->currentIndex() != newJob)
        return;
    box->setCurrentIndex(-1);
    const QString jobID = withoutTrailingBlanks(Dialogs::current().input(tr("New job"), tr("Job ID:")));
    if (jobID.isEmpty() || refuses(jobID, IfLocked::Accept))
        return;
    forgetNew(box);
    box->setProperty(newJobProperty, jobID);
    box->insertItem(1, jobID);
    box->setCurrentIndex(1);
    StatusBar::setStatusText(tr("Job %1 is added when something is stored in it").arg(jobID));
}

QString require(QComboBox* box, const QString& request) {
    QString typed = withoutTrailingBlanks(box->currentText());
    if (!typed.isEmpty() && typed == box->property(newJobProperty).toString()) {
        if (!refuses(typed, IfLocked::Throw))
            return typed;
        forgetNew(box);
        box->setFocus();
        return {};
    }
    const auto header = typed.isEmpty() || typed == reservedJob() ? std::nullopt : readJobHeader(typed);
    if (header)
        return header->jobID.value_or(typed);
    StatusBar::ask(typed.isEmpty() ? request : tr("There is no job %1").arg(typed));
    Fields::markField(box);
    box->setFocus();
    return {};
}

void refuseNew(QComboBox* box) {
    refuseJobID(jobExists);
    forgetNew(box);
    box->setFocus();
}

std::optional<JobHeader> newHeader(const QComboBox* box) {
    const QString jobID = box->property(newJobProperty).toString();
    if (jobID.isEmpty() || jobID != withoutTrailingBlanks(box->currentText()))
        return std::nullopt;
    const UserDefaults user = readUserDefaults().value_or(UserDefaults());
    return JobHeader{.jobID = jobID,
                     .jobDscrptn = {},
                     .engineer = user.defaultEngineer,
                     .contractor = user.defaultContractor,
                     .jobInfo = {},
                     .dateCreated = QDateTime::currentDateTime()};
}

} // namespace JobChoice
