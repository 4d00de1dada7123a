#include "setup/OwnDetailsBox.h"

#include "core/base/Fault.h"
#include "core/shell/Dialogs.h"
#include "core/shell/DisplayFields.h"
#include "core/store/OwnDetails.h"
#include "documents/drawings/Drawings.h"
#include "documents/report/Picture.h"
#include "ui_frmUserInput.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QSvgRenderer>

using namespace Records;

namespace {

QString translated(const char* text) {
    return QCoreApplication::translate("frmUserInput", text);
}

} // namespace

void OwnDetailsBox::fill() {
    const OwnDetails::Sizes sizes = ownDetailsSizes();
    ui.txtOwnName->setMaxLength(sizes.name);
    ui.txtOwnAddress1->setMaxLength(sizes.address1);
    ui.txtOwnAddress2->setMaxLength(sizes.address2);
    ui.txtOwnPhone->setMaxLength(sizes.phoneNo);
    const OwnDetails own = readOwnDetails();
    ui.txtOwnName->setText(shownText(own.name));
    ui.txtOwnAddress1->setText(shownText(own.address1));
    ui.txtOwnAddress2->setText(shownText(own.address2));
    ui.txtOwnPhone->setText(shownText(own.phoneNo));
    showLogo(shownText(own.logo).toUtf8());
}

void OwnDetailsBox::save() const {
    const auto given = [](const QString& text) {
        return text.trimmed().isEmpty() ? std::nullopt : std::optional(text.trimmed());
    };
    const OwnDetails typed{.name = given(ui.txtOwnName->text()),
                           .address1 = given(ui.txtOwnAddress1->text()),
                           .address2 = given(ui.txtOwnAddress2->text()),
                           .phoneNo = given(ui.txtOwnPhone->text()),
                           .logo = given(QString::fromUtf8(logo))};
    if (typed != readOwnDetails())
        saveOwnDetails(typed);
}

bool OwnDetailsBox::chooseLogo() {
    const QString path = Dialogs::current().openFile(translated("Pictures") + " (*.svg *.png *.jpg *.jpeg)",
                                                     {}, translated("Choose a logo"));
    if (path.isEmpty())
        return false;
    try {
        showLogo(readOwnPicture(path));
        return true;
    } catch (const Fault&) {
        ui.lblOwnFailed->setText(translated("%1 is not a picture that can be used, or is too large.")
                                     .arg(QFileInfo(path).fileName()));
        return false;
    }
}

void OwnDetailsBox::showLogo(const QByteArray& picture) {
    logo = picture;
    ui.lblOwnFailed->clear();
    ui.cmdOwnNoLogo->setEnabled(!logo.isEmpty());
    if (logo.isEmpty())
        return ui.lblOwnLogo->setText(translated("none"));
    constexpr int edge = 6; // pixels around it
    const QSize room = ui.lblOwnLogo->maximumSize() - QSize(edge, edge);
    const QSize size = QSvgRenderer(logo).defaultSize().scaled(room, Qt::KeepAspectRatio);
    ui.lblOwnLogo->setPixmap(Drawings::onPaper(logo, size, ui.lblOwnLogo->devicePixelRatioF()));
}
