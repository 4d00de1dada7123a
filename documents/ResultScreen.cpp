#include "documents/ResultScreen.h"

#include "core/shell/BrennovalMain.h"
#include "core/store/SessionStore.h"
#include "documents/Submittals.h"
#include "documents/drawings/Drawings.h"

#include <QAction>
#include <QEvent>
#include <QLabel>
#include <QToolButton>

QString ResultScreen::reportName() const {
    return UtilityFunctions::SetReport(modelText());
}

void ResultScreen::enlarges(QLabel* picture, std::function<QString()> drawing) {
    enlarged = picture;
    drawingName = std::move(drawing);
    picture->installEventFilter(this);
}

void ResultScreen::offersSubmittal(QToolButton* preview, QToolButton* print) {
    on(preview, ".tbToolbar", [this] { UtilityFunctions::PreviewSubmittal(name()); });
    on(print, ".tbToolbar", [this] { UtilityFunctions::PrintSubmittal(name()); });
}

void ResultScreen::leaveFor(const QString& screen) {
    Tag = "1";
    Screens::unload(name());
    Screens::open(screen);
}

void ResultScreen::addMore(const QString& screen) {
    Session::TankID.write("");
    Session::Mode.write("New");
    leaveFor(screen);
}

void ResultScreen::enablePrinting(bool enabled) {
    for (const char* command : {"mnuPrint", "mnuPrintPreview"})
        BrennovalMain::instance()->command(command)->setEnabled(enabled);
}

void ResultScreen::showResultCommands(bool shown) {
    enablePrinting(shown);
    BrennovalMain::instance()->command("mnuSchedule")->setVisible(shown);
}

bool ResultScreen::eventFilter(QObject* object, QEvent* event) {
    if (object == enlarged && event->type() == QEvent::MouseButtonRelease)
        trap(".imgDrawing", [this] { UtilityFunctions::ShowLargeDrawing(drawingName()); });
    return Screen::eventFilter(object, event);
}
