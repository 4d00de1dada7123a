#include "documents/tags/frmUnitTagData.h"

#include "core/base/Numbers.h"
#include "core/shell/Screens.h"
#include "core/shell/Status.h"
#include "core/store/SessionStore.h"
#include "core/store/TankLine.h"

#include <QEvent>

#include <algorithm>

using namespace Records;
using namespace StatusBar;

namespace {

/// A stored part may be longer than what can be typed; it is kept whole.
void fillBox(QLineEdit* box, const QString& part) {
    box->setMaxLength(std::max(box->maxLength(), int(part.size())));
    box->setText(part);
}

} // namespace

frmUnitTagData::frmUnitTagData() : Screen("frmUnitTagData") {
    setupUi(this);
    prepare();
    setDefault(cmdOK);
    rows = {{{lblUnitNo1_0, txtPrefix1_0, lblHyphen1_0, txtSuffix1_0},
             {lblUnitNo1_1, txtPrefix1_1, lblHyphen1_1, txtSuffix1_1},
             {lblUnitNo1_2, txtPrefix1_2, lblHyphen1_2, txtSuffix1_2},
             {lblUnitNo1_3, txtPrefix1_3, lblHyphen1_3, txtSuffix1_3},
             {lblUnitNo1_4, txtPrefix1_4, lblHyphen1_4, txtSuffix1_4},
             {lblUnitNo1_5, txtPrefix1_5, lblHyphen1_5, txtSuffix1_5},
             {lblUnitNo1_6, txtPrefix1_6, lblHyphen1_6, txtSuffix1_6},
             {lblUnitNo1_7, txtPrefix1_7, lblHyphen1_7, txtSuffix1_7},
             {lblUnitNo1_8, txtPrefix1_8, lblHyphen1_8, txtSuffix1_8},
             {lblUnitNo1_9, txtPrefix1_9, lblHyphen1_9, txtSuffix1_9}}};
    on(cmdOK, ".cmdOK", [this] { Save(); });
}

void frmUnitTagData::Load() {
    setStatusText("Unit Tag ID(s)");
    showRows(readTags());
}

/// Fills the boxes and returns the quantity of the tank line, 0 when there is none.
int frmUnitTagData::readTags() {
    QString tankID;
    if (!Session::TankID.read(tankID))
        return 0;
    asRead = findTankLine(tankID);
    if (!asRead)
        return 0;
    lblTankID->setText(tankID);
    for (std::size_t unit = 0; unit < rows.size(); ++unit) {
        const auto& tag = asRead->tags[unit];
        const UnitTags::Parts parts = UnitTags::isGiven(tag) ? UnitTags::split(*tag) : UnitTags::Parts{};
        fillBox(rows[unit].prefix, parts.prefix);
        fillBox(rows[unit].suffix, parts.suffix);
    }
    return ToInt16(asRead->qty.value_or(0));
}

/// A unit that the line no longer has is hidden and loses its tag at the next save.
void frmUnitTagData::showRows(int quantity) {
    int unit = 0;
    for (const Row& row : rows) {
        const bool visible = unit++ < quantity;
        if (!visible) {
            row.prefix->clear();
            row.suffix->clear();
        }
        for (QWidget* control :
             std::initializer_list<QWidget*>{row.number, row.prefix, row.hyphen, row.suffix})
            control->setVisible(visible);
    }
}

/// The boxes of a column select their texts together.
bool frmUnitTagData::eventFilter(QObject* object, QEvent* event) {
    const bool handled = Screen::eventFilter(object, event);
    if (event->type() == QEvent::FocusIn)
        for (const auto column : {&Row::prefix, &Row::suffix})
            if (std::ranges::any_of(rows, [&](const Row& row) { return row.*column == object; }))
                for (const Row& row : rows)
                    (row.*column)->selectAll();
    return handled;
}

/// Writes all ten columns; a unit without a tag gets a lone hyphen.
void frmUnitTagData::Save() {
    QString tankID;
    bool saved = true;
    if (Session::TankID.read(tankID) && asRead) {
        TankLine line;
        for (std::size_t unit = 0; unit < rows.size(); ++unit)
            line.tags[unit] =
                rows[unit].prefix->text() + rows[unit].hyphen->text() + rows[unit].suffix->text();
        saved = saves([&](Record::IfChanged ifChanged) {
            updateTankLine(tankID, line, TankLine::unitTags(), asRead, ifChanged);
        });
    }
    if (saved)
        Screens::unload(name());
}
