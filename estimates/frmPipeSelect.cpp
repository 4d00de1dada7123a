#include "estimates/frmPipeSelect.h"

#include "core/base/Fault.h"
#include "core/shell/Fields.h"
#include "core/shell/Lists.h"
#include "core/shell/Screens.h"
#include "core/store/Catalogue.h"
#include "estimates/Pipes.h"

using namespace Catalogue;
using namespace Pipes;

namespace {

/// The boxes of an opening screen that receive the chosen pipe.
struct HandOver {
    const char* opener;
    QStringList boxes;
};

const HandOver handOvers[] = {
    {"frmJobConditionsSHK", {"PipeIndex"}},
    {"frmCalcExpTSF", {"txtPipeSizeItemized", "PipeIndexCom", "PipeIndex"}},
    {"frmcalcThmTSF", {"PipeIndex"}},
    {"frmMetricSHK", {"txtPipeIndex"}},
};

} // namespace

frmPipeSelect::frmPipeSelect() : Screen("frmPipeSelect") {
    setupUi(this);
    prepare();
    sortByHeadings(lvPipeSizes);
    for (QRadioButton* family : {radSch40, radSch80, radTypeCu})
        on(family, "." + family->objectName(), [this] { fillSizes(); });
    on(bttnMetric, ".tbToolbar", [this] { fillSizes(); });
    handsOver(bttnOK, [this] { return Tag; });
    on(bttnOK, ".tbToolbar", [this] { confirm(); });
    onCancel(bttnCancel, ".tbToolbar", [this] { Screens::unload(name()); });
    connect(lvPipeSizes, &QTreeWidget::itemActivated, this,
            [this] { act(".lvPipeSizes", [this] { confirm(); }); });
}

void frmPipeSelect::Load() {
    radSch40->setChecked(true);
    fillSizes();
}

void frmPipeSelect::fillSizes() {
    const QString schedule = radSch40->isChecked() ? "40" : radSch80->isChecked() ? "80" : "Cu";
    ListRows rows;
    for (const PipeSize& pipe : pipesOf(schedule)) {
        rows.push_back(std::make_unique<ListRow>(
            QStringList{bttnMetric->isChecked() ? pipe.metricIndex : pipe.pipeIndex}));
        rows.back()->setSortKey(0, pipe.bore);
    }
    fillList(lvPipeSizes, {"Size"}, std::move(rows), Selected::None);
}

/// Always the U.S. key, whichever the list shows.
QString frmPipeSelect::selectedKey() const {
    const auto selected = lvPipeSizes->selectedItems();
    if (selected.isEmpty())
        throw Fault(Fault::ObjectNotSet, "Object variable or With block variable not set");
    const QString text = selected.first()->text(0);
    return bttnMetric->isChecked() ? pipeIndexOf(text) : text;
}

void frmPipeSelect::confirm() {
    const QString key = selectedKey();
    for (const HandOver& handOver : handOvers)
        if (Tag == handOver.opener)
            for (const QString& box : handOver.boxes)
                Screens::handOver(*this, handOver.opener, box, key);
    Screens::unload(name());
}
