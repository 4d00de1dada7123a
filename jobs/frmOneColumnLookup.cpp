#include "jobs/frmOneColumnLookup.h"

#include "core/shell/Fields.h"
#include "core/shell/Lists.h"
#include "core/shell/Screens.h"
#include "core/store/NameList.h"
#include "jobs/NameLookup.h"

#include <algorithm>

namespace {

/// Who asks, and the box that receives the name.
struct HandOver {
    const char* tag;
    const char* screen;
    const char* box;
};

constexpr HandOver handOvers[] = {
    {"frmUserInputContractor", "frmUserInput", "txtCont"},
    {"frmUserInputEngineer", "frmUserInput", "txtEng"},
    {"frmJobHeaderContractor", "frmJobHeader", "txtCont"},
    {"frmJobHeaderEngineer", "frmJobHeader", "txtEng"},
};

} // namespace

void NameLookup::FillListView(const QWidget* /*field*/, const QString& table, const QString& tag) {
    auto* lookup = dynamic_cast<frmOneColumnLookup*>(Screens::load("frmOneColumnLookup"));
    if (!lookup)
        return;
    lookup->Tag = tag;
    lookup->updateHandOver();
    lookup->listNames(table);
    Screens::show(lookup->name());
}

frmOneColumnLookup::frmOneColumnLookup() : Screen("frmOneColumnLookup") {
    setupUi(this);
    prepare();
    setDefault(cmdOK);
    sortByHeadings(lvSearch);
    handsOver(cmdOK, [this] {
        const auto* asking = std::ranges::find_if(
            handOvers, [this](const HandOver& handOver) { return Tag == QLatin1String(handOver.tag); });
        return asking == std::end(handOvers) ? QString() : QString(asking->screen);
    });
    on(cmdOK, ".cmdOK", [this] { confirm(); });
    connect(lvSearch, &QTreeWidget::itemDoubleClicked, this,
            [this] { act(".lvSearch", [this] { confirm(); }); });
}

void frmOneColumnLookup::listNames(const QString& table) {
    ListRows rows;
    for (const QString& listed : NameList::names(table))
        rows.push_back(std::make_unique<ListRow>(QStringList{listed}));
    fillList(lvSearch, {"Name"}, std::move(rows));
}

void frmOneColumnLookup::confirm() {
    const QTreeWidgetItem* selected = lvSearch->currentItem();
    if (!selected || selected->text(0).isEmpty()) {
        Dialogs::current().show({"Please select a value from the list.", "Error"});
        return;
    }
    for (const HandOver& handOver : handOvers)
        if (Tag == handOver.tag)
            Screens::handOver(*this, handOver.screen, handOver.box, selected->text(0));
    Screens::unload(name());
}
