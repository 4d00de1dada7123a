#include "jobs/frmDelete.h"

#include "core/shell/DisplayFields.h"
#include "core/shell/Lists.h"
#include "core/store/Deletion.h"
#include "core/store/SessionStore.h"
#include "core/store/TankLine.h"

using namespace Deletion;
using namespace Records;

namespace {

/// The list row of a tank, with a tick box. Its ID sorts by tank number.
std::unique_ptr<ListRow> lineOf(const TankLine& tank) {
    const QDate created = tank.dateCreated.value_or(QDateTime()).date();
    auto line = std::make_unique<ListRow>(QStringList{shownText(tank.tankID), shownText(tank.modelNo),
                                                      shownText(tank.tankClass), shownDate(created)});
    line->setCheckState(0, Qt::Unchecked);
    line->setSortKey(0, tank.tankNo.value_or(0));
    line->setSortKey(3, created);
    return line;
}

} // namespace

frmDelete::frmDelete() : Screen("frmDelete") {
    setupUi(this);
    prepare();
    sortByHeadings(lvOptions);
    on(bttnDelete, ".tbToolbar", [this] { DeleteRecords(); });
    connect(optJob, &QRadioButton::toggled, this, [this] { showChoice(); });
    on(bttnSearch, ".tbToolbar", [this] { leaveFor("frmjobsearchdialog"); });
    // The space bar toggles the tick box, which is in the first column.
    connect(lvOptions, &QTreeWidget::currentItemChanged, this, [this](QTreeWidgetItem* line) {
        if (line && lvOptions->currentColumn() != 0)
            lvOptions->setCurrentItem(line, 0);
    });
}

void frmDelete::Load() {
    QString jobID;
    if (!Session::JobID.read(jobID))
        return;
    lblJobID->setText(jobID);
    FillListView();
}

void frmDelete::FillListView() {
    procedure(".FillListView", [this] {
        ListRows lines;
        for (const TankLine& tank : tankLinesOf(lblJobID->text()))
            lines.push_back(lineOf(tank));
        fillList(lvOptions, {"Tank ID", "Model No.", "App", "Date Created"}, std::move(lines));
        if (optJob->isChecked())
            showChoice();
    });
}

/// With the whole job all its tanks are deleted, and none can be chosen.
void frmDelete::showChoice() {
    const bool whole = optJob->isChecked();
    for (int i = 0; i < lvOptions->topLevelItemCount(); ++i)
        lvOptions->topLevelItem(i)->setCheckState(0, whole ? Qt::Checked : Qt::Unchecked);
    lvOptions->setEnabled(!whole);
}

void frmDelete::DeleteRecords() {
    if (!confirmDeletion(
            "The selected item(s) will be deleted!\nDo you want to delete the selected item(s)?"))
        return;
    const Hourglass hourglass;
    procedure(".DeleteRecords", [this] {
        if (optJob->isChecked())
            deleteJob(lblJobID->text());
        else
            deleteTickedTanks();
    });
    FillListView();
}

void frmDelete::deleteTickedTanks() {
    QStringList ticked;
    for (int i = 0; i < lvOptions->topLevelItemCount(); ++i)
        if (const QTreeWidgetItem* line = lvOptions->topLevelItem(i); line->checkState(0) == Qt::Checked)
            ticked.append(line->text(0));
    deleteTankLines(ticked);
}
