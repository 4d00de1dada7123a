#include "documents/ResultScreen.h"

#include "core/shell/Commands.h"
#include "core/store/SessionStore.h"
#include "documents/Submittals.h"
#include "documents/drawings/frmDrawing.h"

#include <QAction>
#include <QCoreApplication>
#include <QFocusFrame>
#include <QKeyEvent>
#include <QLabel>
#include <QToolButton>

namespace {

/// Whether an event presses the widget that it is sent to, by mouse or by keyboard.
bool presses(const QEvent* event) {
    if (event->type() != QEvent::KeyPress)
        return event->type() == QEvent::MouseButtonRelease;
    const int key = static_cast<const QKeyEvent*>(event)->key();
    return key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter;
}

} // namespace

QString ResultScreen::reportName() const {
    return UtilityFunctions::SetReport(modelText());
}

void ResultScreen::enlarges(QLabel* picture, std::function<QString()> drawing) {
    enlarged = picture;
    drawingName = std::move(drawing);
    picture->installEventFilter(this);
    picture->setFocusPolicy(Qt::TabFocus);
    picture->setAccessibleName(QCoreApplication::translate("ResultScreen", "Enlarge drawing"));
    ring = new QFocusFrame(picture);
}

void ResultScreen::offersSubmittal(QToolButton* preview, QToolButton* print) {
    on(preview, ".tbToolbar", [this] { UtilityFunctions::PreviewSubmittal(name()); });
    on(print, ".tbToolbar", [this] { UtilityFunctions::PrintSubmittal(name()); });
}

void ResultScreen::addMore(const QString& screen) {
    Session::TankID.write("");
    Session::Mode.write(Session::Modes::New);
    leaveFor(screen);
}

void ResultScreen::enablePrinting(bool enabled) {
    for (const char* command : {"mnuPrint", "mnuPrintPreview"})
        Commands::setEnabled(command, enabled);
}

void ResultScreen::showResultCommands(bool shown) {
    enablePrinting(shown);
    Commands::setVisible("mnuSchedule", shown);
}

bool ResultScreen::eventFilter(QObject* object, QEvent* event) {
    if (object == enlarged && (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut))
        ring->setWidget(event->type() == QEvent::FocusIn ? enlarged : nullptr);
    if (object != enlarged || !presses(event))
        return Screen::eventFilter(object, event);
    trap(".imgDrawing", [this] { ShowLargeDrawing(drawingName()); });
    return true;
}
