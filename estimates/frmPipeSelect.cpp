#include "estimates/frmPipeSelect.h"

#include "core/base/Fault.h"
#include "core/shell/Fields.h"
#include "core/shell/Lists.h"
#include "core/shell/Screens.h"
#include "core/store/Catalogue.h"
#include "estimates/Pipes.h"

#include <QKeyEvent>
#include <QLineEdit>

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
    {"frmCompare", {"PipeIndex"}},
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
    handsOver(bttnOK, [this] { return lvPipeSizes->selectedItems().isEmpty() ? QString() : Tag; });
    connect(lvPipeSizes, &QTreeWidget::itemSelectionChanged, this, [this] { updateHandOver(); });
    on(bttnOK, ".tbToolbar", [this] { confirm(); });
    onCancel(bttnCancel, ".tbToolbar", [this] { Screens::unload(name()); });
    connect(lvPipeSizes, &QTreeWidget::itemActivated, this,
            [this] { act(".lvPipeSizes", [this] { confirm(); }); });
}

void frmPipeSelect::Load() {
    radSch40->setChecked(true);
    fillSizes();
}

QWidget* frmPipeSelect::firstField() const {
    return lvPipeSizes;
}

/// The pipe that the screen which asks has now.
QString frmPipeSelect::presentKey() const {
    const Screen* opener = Screens::find(Tag);
    for (const HandOver& handOver : handOvers)
        for (const QString& name : Tag == handOver.opener && opener ? handOver.boxes : QStringList())
            if (const auto* box = opener->control<QLineEdit>(name);
                box && box->isVisible() && !box->text().isEmpty()) {
                const QString key = pipeIndexOf(box->text()); // of a metric key
                return key.isEmpty() ? box->text() : key;
            }
    return {};
}

/// Who asks is known only once the chooser has been loaded.
void frmPipeSelect::Activate() {
    if (preselectedFor != Tag)
        preselect();
    preselectedFor = Tag;
}

/// Chooses the pipe that the screen which asks has, in its family, or else the first of the list.
void frmPipeSelect::preselect() {
    const QString key = presentKey();
    for (QRadioButton* family : {radSch40, radSch80, radTypeCu}) {
        family->setChecked(true);
        fillSizes();
        if (const auto rows = lvPipeSizes->findItems(key, Qt::MatchFixedString); !rows.isEmpty()) {
            lvPipeSizes->setCurrentItem(rows.first());
            return;
        }
    }
    Load();
    lvPipeSizes->setCurrentItem(lvPipeSizes->topLevelItem(0));
}

/// Another family, or the other names, keep the size that was chosen, as far as they have it.
void frmPipeSelect::fillSizes() {
    constexpr int size = Qt::UserRole + 1; // such as "1-1/4 in"
    const auto chosen = lvPipeSizes->selectedItems();
    const QVariant chosenSize = chosen.isEmpty() ? QVariant() : chosen.first()->data(0, size);
    const QString schedule = radSch40->isChecked() ? "40" : radSch80->isChecked() ? "80" : "Cu";
    ListRows rows;
    for (const PipeSize& pipe : pipesOf(schedule)) {
        rows.push_back(std::make_unique<ListRow>(
            QStringList{bttnMetric->isChecked() ? pipe.metricIndex : pipe.pipeIndex}));
        rows.back()->setSortKey(0, pipe.bore);
        rows.back()->setData(0, size, pipe.pipeIndex.section(u' ', 0, 1));
    }
    fillList(lvPipeSizes, {"Size"}, std::move(rows), Selected::None);
    for (QTreeWidgetItemIterator row(lvPipeSizes); *row; ++row)
        if ((*row)->data(0, size) == chosenSize)
            lvPipeSizes->setCurrentItem(*row);
}

/// From a family that was just chosen, Return goes on with the row, and a typed size finds it in the list.
void frmPipeSelect::keyPressEvent(QKeyEvent* event) {
    const QString text = event->text();
    const bool onFamily = dynamic_cast<QRadioButton*>(focusWidget());
    if (onFamily && (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter))
        bttnOK->click();
    else if (onFamily && !text.isEmpty() && text[0].isPrint() && event->key() != Qt::Key_Space) {
        lvPipeSizes->setFocus();
        lvPipeSizes->keyboardSearch(text);
    } else
        Screen::keyPressEvent(event);
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
