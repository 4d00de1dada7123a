#include "documents/ResultScreen.h"

#include "core/shell/Commands.h"
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
    if (object == enlarged && event->type() == QEvent::MouseButtonRelease)
        trap(".imgDrawing", [this] { UtilityFunctions::ShowLargeDrawing(drawingName()); });
    return Screen::eventFilter(object, event);
}
