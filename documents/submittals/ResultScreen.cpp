#include "documents/submittals/ResultScreen.h"

#include "core/shell/Commands.h"
#include "core/shell/Hourglass.h"
#include "core/shell/Screens.h"
#include "core/shell/Trap.h"
#include "core/store/SessionStore.h"
#include "documents/drawings/frmDrawing.h"
#include "documents/report/Reports.h"
#include "documents/submittals/SizingFacts.h"
#include "documents/submittals/Submittals.h"
#include "documents/viewer/Printing.h"
#include "documents/viewer/ReportOutput.h"

#include <QAction>
#include <QCoreApplication>
#include <QFocusFrame>
#include <QKeyEvent>
#include <QLabel>
#include <QToolButton>

using namespace Faults;

namespace {

/// Whether an event presses the widget it is sent to, by mouse or keyboard.
bool presses(const QEvent* event) {
    if (event->type() != QEvent::KeyPress)
        return event->type() == QEvent::MouseButtonRelease;
    const int key = static_cast<const QKeyEvent*>(event)->key();
    return key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter;
}

/// The report of a screen; null when it has none.
const ReportKind* reportOf(const QString& screenName) {
    const auto* screen = dynamic_cast<const ResultScreen*>(Screens::find(screenName));
    const ReportKind* report = screen ? findReport(screen->reportName()) : nullptr;
    return report && report->of != ReportOf::Catalogue ? report : nullptr;
}

/// Makes the report of a screen and passes it on; beeps when the screen has none. A screen whose record is
/// not stored as it is shown says so instead.
void withReport(const QString& screen, void (*use)(const Document&)) {
    const Hourglass hourglass;
    if (const auto* shown = dynamic_cast<const ResultScreen*>(Screens::find(screen)))
        if (const QString reason = shown->nothingToPrint(); !reason.isEmpty()) {
            Dialogs::current().show({.text = reason, .title = "Print"});
            return;
        }
    const ReportKind* kind = reportOf(screen);
    if (!kind)
        return Dialogs::current().beep();
    use(Report(*kind).Run());
}

/// The name of the front screen if Print or Preview knows it, else an empty text.
QString activeScreen(const QStringList& known) {
    const QString name = Screens::active();
    return known.contains(name) ? name : QString();
}

void print() {
    const QString name = activeScreen({"frmReportViewer", "frmResults", "frmResultSHK", "frmPKGSelect"});
    if (!name.isEmpty() && Screens::activeExists()) // over the viewer it ends in the beep; the viewer has a
                                                    // print button of its own
        Submittals::PrintSubmittal(name);
}

void preview() {
    const QString name = activeScreen({"frmResults", "frmResultSHK", "frmPKGSelect"});
    if (!name.isEmpty() && Screens::activeExists())
        Submittals::PreviewSubmittal(name);
}

} // namespace

QString ResultScreen::reportName() const {
    return Submittals::SetReport(modelText());
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
    on(preview, ".tbToolbar", [this] { Submittals::PreviewSubmittal(name()); });
    on(print, ".tbToolbar", [this] { Submittals::PrintSubmittal(name()); });
}

void ResultScreen::offersCalculation(QToolButton* button) {
    on(button, ".tbToolbar", [this] {
        if (const QString reason = nothingToPrint(); !reason.isEmpty())
            Dialogs::current().show({.text = reason, .title = "Calculation sheet"});
        else
            Submittals::showReport("rptCalculation");
    });
}

void ResultScreen::showNotes(QLabel* label, const SizingNotes::Facts& facts) {
    const QStringList notes = SizingNotes::textsOf(facts);
    label->setText(notes.join(u'\n'));
    label->setVisible(!notes.isEmpty());
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
    trap(".imgDrawing", [this] { showLargeDrawing(drawingName()); });
    return true;
}

namespace Submittals {

void PrintSubmittal(const QString& screen) {
    runTrapped("PrintSubmittal", [&] { withReport(screen, printDocument); });
}

void PreviewSubmittal(const QString& screen) {
    runTrapped("PreviewSubmittal", [&] { withReport(screen, showDocument); });
}

void showReport(const QString& report) {
    const Hourglass hourglass;
    if (const ReportKind* kind = findReport(report))
        showDocument(Report(*kind).Run());
}

} // namespace Submittals

void registerPrinting() {
    Commands::set("mnuPrint", print);
    Commands::set("mnuPrintPreview", preview);
}
