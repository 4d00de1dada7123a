#include "jobs/StartPage.h"

#include "core/base/Fault.h"
#include "core/base/Text.h"
#include "core/look/Appearance.h"
#include "core/shell/Commands.h"
#include "core/shell/Hourglass.h"
#include "core/shell/Lists.h"
#include "core/shell/Screens.h"
#include "core/shell/Trap.h"
#include "core/store/JobHeader.h"
#include "core/store/SessionStore.h"
#include "jobs/JobSearch.h"
#include "jobs/OpenOverview.h"

#include <QAction>
#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QTimer>

namespace {

constexpr std::size_t newestJobs = 10;
constexpr std::size_t mostFound = 50;

/// Columns as wide as their headings are. Qt leaves room for them in bold, and loads that font to measure it.
class PlainHeader : public QHeaderView {
  public:
    explicit PlainHeader(QWidget* parent) : QHeaderView(Qt::Horizontal, parent) {
        setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    }

  protected:
    QSize sectionSizeFromContents(int section) const override {
        QStyleOptionHeader option;
        initStyleOption(&option);
        option.section = section;
        option.text = model()->headerData(section, orientation()).toString();
        constexpr int gap = 8; // pixels, before the edge of the list
        return style()->sizeFromContents(QStyle::CT_HeaderSection, &option, {}, this) + QSize(gap, 0);
    }
};

void openJob(const QString& jobID) {
    const Hourglass hourglass;
    Screens::beginTask([&] {
        Faults::runTrapped("StartPage.openJob", [&] {
            if (!Records::readJobHeader(jobID)) // another copy of the program was faster
                throw RecordGone("This job has been deleted.");
            openOverviewOf(jobID);
        });
    });
}

} // namespace

StartPage::StartPage(QWidget* parent) : QWidget(parent) {
    setupUi(this);
    drawMark();
    prepareTasks();
    showJobs(false); // until there are some: their columns would be measured for nothing
    lvJobs->setHeader(new PlainHeader(lvJobs));
    lvJobs->setColumnCount(4);
    lvJobs->header()->setStretchLastSection(false); // the description has the room to spare
    lvJobs->header()->setSectionResizeMode(1, QHeaderView::Stretch);
    lvJobs->header()->setSectionResizeMode(3, QHeaderView::ResizeToContents);
    const auto open = [](const QTreeWidgetItem* row) { openJob(row->text(0)); };
    connect(lvJobs, &QTreeWidget::itemClicked, this, open);
    connect(lvJobs, &QTreeWidget::itemActivated, this, open);
    connect(txtFind, &QLineEdit::textChanged, this, [this] { fillJobs(); });
    connect(txtFind, &QLineEdit::returnPressed, this, [this] {
        if (lvJobs->topLevelItemCount() > 0)
            openJob(lvJobs->topLevelItem(0)->text(0));
    });
}

void StartPage::prepareTasks() {
    const struct {
        TaskButton* button;
        const char* icon;
        const char* command;
    } tasks[] = {{cmdNew, "new", "mnuNewJob"},
                 {cmdEdit, "edit", "mnuEditJob"},
                 {cmdCompare, "compare", "mnuCompare"},
                 {cmdConvert, "convert", "mnuConvert"},
                 {cmdDelete, "delete", "mnuDeleteJob"}};
    for (const auto& task : tasks) {
        QAction* command = Commands::action(task.command);
        task.button->setAccessibleName(task.button->text().replace('\n', ' '));
        task.button->setShortcutText(command->shortcut().toString(QKeySequence::NativeText));
        task.button->setAccessibleDescription(command->shortcut().toString(QKeySequence::NativeText));
        task.button->setIcon(Appearance::icon(task.icon));
        connect(task.button, &TaskButton::clicked, command, &QAction::trigger);
    }
}

void StartPage::showJobs(bool any) {
    for (QWidget* part : std::initializer_list<QWidget*>{lblJobs, txtFind, lvJobs})
        part->setVisible(any);
}

/// Lists the newest jobs. If they cannot be read, only the tasks are shown: a background never asks the user
/// anything.
void StartPage::fillJobs() {
    ListRows rows;
    try {
        const QString words = txtFind->text();
        for (const JobSearch::Job& job : JobSearch::newest(words.isEmpty() ? newestJobs : mostFound, words))
            rows.push_back(std::make_unique<ListRow>(
                QStringList{job.jobID, job.description, job.contractor, shownDate(job.created)}));
    } catch (const Fault&) {
        rows.clear();
    }
    const bool any = !rows.empty() || !txtFind->text().isEmpty();
    showJobs(any);
    if (any)
        fillList(lvJobs, {"Job ID", "Description", "Contractor", "Date Created"}, std::move(rows),
                 Selected::None);
    else
        lvJobs->clear();
}

void StartPage::drawMark() {
    QPixmap picture(lblMark->minimumSize() * devicePixelRatioF());
    picture.setDevicePixelRatio(devicePixelRatioF());
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    Appearance::drawMark(painter, QRect(QPoint(), lblMark->minimumSize()),
                         palette().color(QPalette::Highlight), Qt::transparent, .7);
    lblMark->setPixmap(picture);
}

void StartPage::showEvent(QShowEvent* event) {
    fillJobs();
    QWidget::showEvent(event);
    QTimer::singleShot(0, this, [this] { // the closing screen took the focus with it
        if (isVisible() && !QApplication::focusWidget())
            cmdNew->setFocus();
    });
}

/// The next visit begins without the search of this one.
void StartPage::hideEvent(QHideEvent* event) {
    if (!event->spontaneous()) {
        const QSignalBlocker quiet(txtFind); // the next showing lists the jobs
        txtFind->clear();
    }
    QWidget::hideEvent(event);
}

void StartPage::keyPressEvent(QKeyEvent* event) {
    auto* button = dynamic_cast<QAbstractButton*>(focusWidget());
    if (button && (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter))
        button->click();
    else
        QWidget::keyPressEvent(event);
}

void StartPage::changeEvent(QEvent* event) {
    if (event->type() == QEvent::PaletteChange)
        drawMark();
    if (event->type() == QEvent::ActivationChange && isVisible() && isActiveWindow())
        fillJobs(); // another window may have changed the data or their folder
    QWidget::changeEvent(event);
}
