#include "jobs/frmDelete.h"

#include "core/shell/Lists.h"
#include "core/store/Gateway.h"
#include "core/store/SessionStore.h"
#include "core/store/SqlText.h"

using namespace UtilityFunctions;

namespace {

/// A list line of a tank, with its tick box. Its ID sorts by the tank's number.
std::unique_ptr<ListRow> lineOf(Recordset& tank) {
    const QDate created = tank["DateCreated"].date();
    auto line =
        std::make_unique<ListRow>(QStringList{tank["TankID"].text(), tank["ModelNo"].text(),
                                              tank["TankClass"].text(), created.toString("MM/dd/yy")});
    line->setCheckState(0, Qt::Unchecked);
    line->setSortKey(0, tank["TankNo"].number());
    line->setSortKey(3, created);
    return line;
}

} // namespace

frmDelete::frmDelete() : Screen("frmDelete") {
    setupUi(this);
    prepare();
    SortByHeadings(lvOptions);
    on(bttnDelete, ".tbToolbar", [this] { DeleteRecords(); });
    on(bttnSearch, ".tbToolbar", [this] { leaveFor("frmjobsearchdialog"); });
    // The space bar ticks the tick box, which stands in the first column.
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
        Rows tank("User", "SELECT * FROM tblJobData WHERE JobID = '" + SqlEscape(lblJobID->text()) + "'");
        for (; !tank.AtEnd(); tank->MoveNext())
            lines.push_back(lineOf(*tank));
        FillList(lvOptions, {"Tank ID", "Model No.", "App", "Date Created"}, std::move(lines));
    });
}

void frmDelete::DeleteRecords() {
    if (!ConfirmDeletion(
            "The selected item(s) will be deleted!\nDo you want to delete the selected item(s)?"))
        return;
    const Hourglass hourglass;
    procedure(".DeleteRecords", [this] {
        if (optJob->isChecked())
            DeleteJob(SqlEscape(lblJobID->text()));
        else
            DeleteTickedTanks();
    });
    FillListView();
}

/// The header goes last: a deletion that stops halfway leaves a job that can still be found.
void frmDelete::DeleteJob(const QString& jobID) {
    Execute("User", "DELETE * FROM tblJobData WHERE JobID = '" + jobID + "'");
    Execute("User", "DELETE * FROM tblJobHeader WHERE JobID = '" + jobID + "'");
}

void frmDelete::DeleteTickedTanks() {
    for (int i = 0; i < lvOptions->topLevelItemCount(); ++i) {
        const QTreeWidgetItem* line = lvOptions->topLevelItem(i);
        if (line->checkState(0) == Qt::Checked)
            Execute("User", "DELETE * FROM tblJobData WHERE TankID ='" + SqlEscape(line->text(0)) + "'");
    }
}
