#include "extras/frmRestore.h"

#include "core/base/Fault.h"
#include "core/base/Text.h"
#include "core/shell/BrennovalMain.h"
#include "core/shell/Lists.h"
#include "core/shell/Screens.h"
#include "core/shell/Status.h"
#include "core/store/DataCheck.h"
#include "core/store/Gateway.h"
#include "core/store/Schema.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QHeaderView>
#include <QLocale>
#include <QTimer>

using namespace Gateway;
using namespace StatusBar;
using JobCopies::Today;

namespace {

enum CopyColumn { Made, For, Size, Jobs, Tanks };

QString shown(Backup::Reason reason) {
    using Backup::Reason;
    switch (reason) {
    case Reason::Daily:
        return "Daily";
    case Reason::ByHand:
        return "By hand";
    case Reason::Upgrade:
        return "Before an upgrade";
    case Reason::Conversion:
        return "Before a conversion";
    case Reason::Deletion:
        return "Before a deletion";
    case Reason::Restore:
        return "Before a restore";
    }
    return {};
}

QString shown(Today today) {
    switch (today) {
    case Today::Missing:
        return "Missing today";
    case Today::Differs:
        return "Differs today";
    case Today::Same:
        return "The same today";
    case Today::Only:
        return "Only today";
    }
    return {};
}

QString number(double value) {
    return QLocale(QLocale::English).toString(value, 'f', 0);
}

std::unique_ptr<ListRow> rowOf(const Backup::Copy& copy) {
    const QLocale english(QLocale::English);
    auto row = std::make_unique<ListRow>(QStringList{
        shownDate(copy.made.date()) + copy.made.toString("  hh:mm"), shown(copy.reason),
        english.formattedDataSize(copy.size, 1, QLocale::DataSizeTraditionalFormat), QString(), QString()});
    row->setSortKey(Made, copy.made);
    row->setSortKey(Size, copy.size);
    for (const int column : {Size, Jobs, Tanks})
        row->setTextAlignment(column, Qt::AlignRight | Qt::AlignVCenter);
    return row;
}

/// Makes a list wide enough for a row of such texts in the font that is set.
void makeRoom(QTreeWidget* list, const QString& texts) {
    constexpr int gaps = 90; // pixels between five columns
    list->setMinimumWidth(
        std::max(list->minimumWidth(), list->fontMetrics().horizontalAdvance(texts) + gaps));
}

bool closeOtherScreens(const QString& own) {
    const QStringList names = Screens::loaded();
    return std::all_of(names.crbegin(), names.crend(),
                       [&](const QString& name) { return name == own || Screens::unload(name); });
}

bool confirm(const QString& question, const QString& title) {
    return Dialogs::current().show({.text = question,
                                    .title = title,
                                    .icon = QMessageBox::Question,
                                    .buttons = QMessageBox::Yes | QMessageBox::No,
                                    .defaultButton = QMessageBox::No}) == QMessageBox::Yes;
}

} // namespace

frmRestore::frmRestore() : Screen("frmRestore") {
    setupUi(this);
    prepare();
    lvCopies->setColumnCount(Tanks + 1);
    lvCopies->header()->setStretchLastSection(false); // keeps the numbers together
    lvCopies->header()->setSectionResizeMode(For, QHeaderView::Stretch);
    makeRoom(lvCopies, "00/00/00  00:00Before a conversion100.0 MB10,000Tanks");
    for (QTreeWidget* list : {lvJobs, lvTanks})
        makeRoom(list, "Tank ID Compared with today Tanks Description");
    sortByHeadings(lvCopies);
    sortByHeadings(lvJobs);
    connect(lvCopies, &QTreeWidget::itemSelectionChanged, this, [this] {
        trap(".lvCopies", [this] {
            if (const auto chosen = lvCopies->selectedItems(); !chosen.isEmpty())
                lookInto(chosen.first()->data(For, Qt::UserRole + 1).toString(), JobCopies::Origin::Own);
        });
    });
    connect(lvJobs, &QTreeWidget::itemSelectionChanged, this,
            [this] { trap(".lvJobs", [this] { fillTanks(); }); });
    on(cmdRestore, ".cmdRestore", [this] { restoreJobs(); });
    on(cmdWhole, ".cmdWhole", [this] { restoreAll(); });
    on(cmdGiveHeader, ".cmdGiveHeader", [this] { giveHeadersBack(); });
    onCancel(cmdClose, ".cmdClose", [this] { Screens::unload(name()); });
}

QWidget* frmRestore::firstField() const {
    return lvCopies->isHidden() ? lvJobs : lvCopies;
}

void frmRestore::Load() {
    fillCopies();
    showFindings();
    fillJobs();
}

void frmRestore::lookIntoFile(const QString& path) {
    setTitle("Import job");
    grpCopies->hide();
    cmdWhole->hide();
    grpFindings->hide();
    lblHeader->setText("Jobs in " + QFileInfo(path).fileName());
    grpInside->setTitle("Jobs in the file");
    cmdRestore->setText("Import &jobs");
    lookInto(path, JobCopies::Origin::Foreign);
    for (int i = 0; i < lvJobs->topLevelItemCount(); ++i)
        lvJobs->topLevelItem(i)->setCheckState(0, Qt::Checked);
}

void frmRestore::fillCopies() {
    const Connection user = dbConnection("User");
    const QString file = user.dataSource();
    grpCopies->setHidden(user.isOffice());
    cmdWhole->setHidden(user.isOffice());
    if (user.isOffice())
        return;
    copies = Backup::copiesOf(file);
    lblFolder->setText(Backup::folderOf(file));
    ListRows rows;
    for (const Backup::Copy& copy : copies) {
        rows.push_back(rowOf(copy));
        rows.back()->setData(For, Qt::UserRole + 1, copy.path);
    }
    lvCopies->blockSignals(true);
    fillList(lvCopies, {"Date", "Reason", "Size", "Jobs", "Tanks"}, std::move(rows), Selected::None);
    lvCopies->blockSignals(false);
    counted = 0;
    countCopies();
}

/// Counts what fits between two frames and leaves the rest for later, since many large copies take a while.
void frmRestore::countCopies() {
    constexpr int maxTime = 8; // milliseconds
    QElapsedTimer clock;
    clock.start();
    for (; counted < copies.size() && clock.elapsed() < maxTime; ++counted) {
        const QString& path = copies[counted].path;
        QTreeWidgetItem* row = nullptr; // wherever sorting has put it
        for (int i = 0; i < lvCopies->topLevelItemCount() && !row; ++i)
            if (lvCopies->topLevelItem(i)->data(For, Qt::UserRole + 1).toString() == path)
                row = lvCopies->topLevelItem(i);
        if (!row)
            continue;
        try {
            Connection copy;
            copy.setProperty("Data Source", path);
            copy.setReadOnly();
            copy.Open();
            Schema::requirePlainTables(copy);
            const Backup::Counts counts = Backup::countsOf(copy);
            for (const auto& [column, count] : {std::pair(Jobs, counts.jobs), {Tanks, counts.tanks}}) {
                row->setText(column, number(count));
                row->setData(column, Qt::UserRole, count);
            }
        } catch (const Fault&) {
            row->setText(Jobs, "unreadable");
        }
    }
    fitColumns(lvCopies);
    lvCopies->resizeColumnToContents(Tanks);
    if (counted < copies.size())
        QTimer::singleShot(0, this, [this] { countCopies(); });
}

void frmRestore::showFindings() {
    const DataCheck::Findings& findings = DataCheck::latestFindings();
    grpFindings->setVisible(!findings.isEmpty());
    cmdGiveHeader->setVisible(!findings.orphanJobs.isEmpty());
    lblFindings->setText(findings.sentences().mid(0, 3).join('\n') +
                         (findings.sentences().size() > 3
                              ? QString("\nand %1 more").arg(findings.sentences().size() - 3)
                              : QString()));
}

void frmRestore::lookInto(const QString& path, JobCopies::Origin origin) {
    const Hourglass hourglass;
    source.reset();
    jobs.clear();
    fillJobs();
    try {
        source.emplace(path, origin);
    } catch (const DatabaseFault& fault) {
        if (origin == JobCopies::Origin::Foreign)
            throw;
        lblNone->setText("This backup cannot be read. " + QString::fromUtf8(fault.what()));
        return;
    }
    const Connection user = openDatabase("User");
    jobs = isImport() ? JobCopies::allJobs(*source, user) : JobCopies::changedJobs(*source, user);
    fillJobs();
}

void frmRestore::fillJobs() {
    ListRows rows;
    for (const JobCopies::Job& job : jobs) {
        auto row = std::make_unique<ListRow>(
            QStringList{job.jobID, shown(job.today), number(job.tanks), job.description});
        row->setCheckState(0, Qt::Unchecked);
        row->setSortKey(2, job.tanks);
        row->setTextAlignment(2, Qt::AlignRight | Qt::AlignVCenter);
        rows.push_back(std::move(row));
    }
    lblNone->setText(!source        ? dbConnection("User").isOffice() ? Backup::noneOfAnOffice()
                                                                      : "Choose a backup to look inside."
                     : jobs.empty() ? "All of its jobs are in today's data, unchanged."
                                    : "");
    lblNone->setVisible(jobs.empty());
    lvJobs->setEnabled(!jobs.empty());
    cmdRestore->setEnabled(!jobs.empty());
    cmdWhole->setEnabled(source.has_value());
    fillList(lvJobs, {"Job ID", "Compared with today", "Tanks", "Description"}, std::move(rows));
    fillTanks();
}

void frmRestore::fillTanks() {
    ListRows rows;
    const auto chosen = lvJobs->selectedItems();
    if (source && !chosen.isEmpty())
        for (const JobCopies::Tank& tank :
             JobCopies::tanksOf(*source, openDatabase("User"), chosen.first()->text(0)))
            rows.push_back(std::make_unique<ListRow>(
                QStringList{tank.tankID, shown(tank.today), tank.quantity, tank.modelNo}));
    lvTanks->setEnabled(!rows.empty());
    fillList(lvTanks, {"Tank ID", "Compared with today", "Qty", "Model No."}, std::move(rows));
}

QStringList frmRestore::tickedJobs() const {
    QStringList ticked;
    for (int i = 0; i < lvJobs->topLevelItemCount(); ++i)
        if (lvJobs->topLevelItem(i)->checkState(0) == Qt::Checked)
            ticked.append(lvJobs->topLevelItem(i)->text(0));
    return ticked;
}

void frmRestore::restoreJobs() {
    const QStringList ticked = tickedJobs();
    if (ticked.isEmpty()) {
        Dialogs::current().show({.text = "Please tick the jobs in the list!", .title = "Error"});
        return;
    }
    // What the list says may have become another since.
    const QStringList replaced = JobCopies::existing(ticked, openDatabase("User"));
    if (!replaced.isEmpty() && !confirm("These jobs are in your data today and will be replaced:\n" +
                                            replaced.join(", ") + "\nDo you want to replace them?",
                                        windowTitle()))
        return;
    const Hourglass hourglass;
    procedure(".RestoreJobs", [&] {
        const Connection user = openDatabase("User");
        if (!replaced.isEmpty())
            Backup::makeIfPossible(user, Backup::Reason::Restore, source->file());
        JobCopies::Restore(*source, user, ticked, replaced);
    });
    setStatusText((isImport() ? "Imported: " : "Restored: ") + ticked.join(", "));
    const JobCopies::Origin origin = source->origin();
    if (origin == JobCopies::Origin::Foreign) {
        Screens::unload(name());
        return;
    }
    const Connection user = openDatabase("User");
    jobs = JobCopies::changedJobs(*source, user);
    fillJobs();
}

void frmRestore::restoreAll() {
    const Backup::Counts counts = Backup::countsOf(source->data());
    const auto chosen = lvCopies->selectedItems();
    if (chosen.isEmpty() ||
        !confirm(QString("All of your data will be replaced by the backup of %1, with %2 jobs and %3 tanks.\n"
                         "The present data are put aside first, as a backup of their own.\n"
                         "Do you want to restore the whole file?")
                     .arg(chosen.first()->text(Made).simplified(), number(counts.jobs), number(counts.tanks)),
                 windowTitle()))
        return;
    if (!closeOtherScreens(name()))
        return;
    const Hourglass hourglass;
    procedure(".RestoreAll", [&] { JobCopies::restoreAll(*source, openDatabase("User")); });
    setStatusText("Restored the backup of " + chosen.first()->text(Made).simplified());
    source.reset();
    jobs.clear();
    fillJobs();
    fillCopies();
}

void frmRestore::giveHeadersBack() {
    QStringList given;
    procedure(".GiveHeadersBack", [&] {
        const Connection user = openDatabase("User");
        for (const QString& job : DataCheck::latestFindings().orphanJobs)
            if (DataCheck::giveHeaderBack(user, job))
                given.append(job);
        DataCheck::setLatestFindings(DataCheck::check(user));
    });
    setStatusText("Header given back: " + given.join(", "));
    showFindings();
}
