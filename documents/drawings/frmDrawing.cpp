#include "documents/drawings/frmDrawing.h"

#include "core/shell/Screens.h"
#include "core/store/SessionStore.h"
#include "documents/drawings/Drawings.h"

#include <QCoreApplication>
#include <QMouseEvent>

namespace {
constexpr QSize fullSize(511, 448);
constexpr int fallbackMilliseconds = 2000;
} // namespace

frmDrawing::frmDrawing() : Screen("frmDrawing") {
    setupUi(this);
    txtDrawing->hide();
    Timer1.setSingleShot(true);
    connect(&Timer1, &QTimer::timeout, this, [this] { txtDrawing->setVisible(!imgDrawing->isVisible()); });
}

void frmDrawing::Load() {
    largeSize = fullSize;
    if (const QSize room = Screens::room(*this);
        room.width() < largeSize.width() || room.height() < largeSize.height())
        largeSize.scale(room, Qt::KeepAspectRatio);
    setMinimumSize(largeSize);
    imgDrawing->setGeometry(QRect({0, 0}, largeSize));
    Timer1.start(fallbackMilliseconds);
}

void frmDrawing::showDrawing(const QString& drawing) {
    txtDrawing->setText(drawing);
    imgDrawing->setGeometry(QRect({0, 0}, largeSize)); // or the box drifts between drawings
    QString path;
    const bool loaded =
        Drawings::LoadDrawing(imgDrawing, largeSize.width(), largeSize.height(), drawing, path);
    imgDrawing->setVisible(loaded);
    txtDrawing->setText(path);
    const QString tankID = Session::tankLine();
    imgDrawing->setToolTip(
        tankID.isEmpty() ? QString() : QCoreApplication::translate("frmDrawing", "Tank %1").arg(tankID));
    if (!loaded)
        return;
    imgDrawing->move(0, 0);
    setMinimumSize(imgDrawing->size());
    setMaximumSize(imgDrawing->size());
    Screens::FormatScreen(*this);
}

void frmDrawing::mouseReleaseEvent(QMouseEvent* event) {
    if (imgDrawing->isVisible() && imgDrawing->geometry().contains(event->pos()))
        trap(".imgDrawing", [this] { Screens::unload(name()); });
}

void showLargeDrawing(const QString& drawing) {
    if (Screen* screen = Screens::load("frmDrawing")) {
        Screens::show("frmDrawing");
        static_cast<frmDrawing*>(screen)->showDrawing(drawing);
    }
}
