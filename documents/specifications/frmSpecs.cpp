#include "documents/specifications/frmSpecs.h"

#include "core/shell/Dialogs.h"
#include "core/shell/Status.h"
#include "core/store/Specification.h"
#include "documents/specifications/Placeholders.h"
#include "documents/specifications/SpecsBox.h"

#include <QButtonGroup>

using namespace Catalogue;
using namespace StatusBar;

namespace {

/// A style of tank: its option button and the key of its specification. RCB2 and JWB2 are left out on
/// purpose.
struct Style {
    const char* option;
    const char* key;
};

constexpr Style styles[] = {
    {"OptRCB1", "RCB1"}, {"OptRCB2", "RCB3"}, {"OptRCBD", "RCBD1"}, {"OptRHB", "RHB1"}, {"OptRGB", "RGB1"},
    {"OptRB", "RB1"},    {"OptGGB", "GGB1"},  {"OptGWB", "GWB1"},   {"OptJW", "JW1"},   {"OptJWG", "JWG1"},
    {"OptJWB1", "JWB1"}, {"OptJWB2", "JWB3"}, {"OptJWB3", "JWB4"},  {"OptSHK", "SHK1"}, {"OptPKG", "PKG1"},
    {"OptPKGD", "PKG2"}, {"OptPKGT", "PKG3"}, {"OptFdm", "PKG4"},
};

Placeholders::Values blanks(const QString& quantity) {
    const QString line = "______";
    return {line, quantity, line, line, line, line, line, line, line, line, line};
}

} // namespace

frmSpecs::frmSpecs() : Screen("frmSpecs") {
    setupUi(this);
    prepare();
    auto* group = new QButtonGroup(this); // one choice across all groups
    for (const Style& style : styles) {
        auto* option = control<QRadioButton>(style.option);
        group->addButton(option);
        on(option, "." + option->objectName(), [this, style] { FillSpecsBox(style.key); });
    }
    connect(cmdCopy, &QPushButton::clicked, this, [this] {
        Dialogs::current().copy(specificationText(txtSpecBox));
        Copied = true;
    });
}

void frmSpecs::Load() {
    setStatusText("Copy & paste specifications to another application");
    FillSpecsBox("0"); // no such key: the box stays empty until the first choice
}

void frmSpecs::FillSpecsBox(const QString& key) {
    procedure(".FillSpecsBox", [&] {
        clearSpecification(txtSpecBox); // after a failed read, no other style's text is left to copy
        const Specification specification = readSpecification(key);
        // The blank for a quantity is shorter in the text than in its last line.
        showSpecification(txtSpecBox, Placeholders::replaced(specification.text, blanks("____")),
                          Placeholders::replaced(specification.lastLine, blanks("______")));
    });
}

bool frmSpecs::QueryUnload() {
    askForClipboard(Copied);
    SetStatusBarText();
    return true;
}
