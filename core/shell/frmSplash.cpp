#include "core/shell/frmSplash.h"

#include "core/base/Fault.h"
#include "core/base/Numbers.h"
#include "core/look/Appearance.h"
#include "core/shell/BrennovalMain.h"
#include "core/shell/Screens.h"
#include "core/store/Gateway.h"
#include "core/store/Schema.h"

#include <QApplication>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QScreen>

#include <utility>

namespace {
constexpr int tickMilliseconds = 500;
constexpr int maxWait = 200;  // milliseconds for a lock: the window must not freeze; the next tick retries
constexpr int quietTicks = 8; // while locked: another instance may be upgrading older data

/// The flag that brings up the getting-started screen if it is 0; 2 for an empty table. Upgrades older data
/// to this program's version first.
int firstTimeFlag() {
    Connection connection = Gateway::dbConnection("User");
    connection.setBusyTimeout(maxWait);
    if (connection.isOffice())
        Gateway::openDatabase("Sys"); // a folder that is wrong would otherwise show at the first search
    connection.Open();
    Schema::upgrade(connection);
    Recordset rows;
    rows.Open("tblFirstTime", connection, CursorType::Keyset, CommandType::Table);
    return rows.atEnd() ? 2 : ToInt16(rows["FirstTime"].number());
}

/// The failure of an earlier tick is over, so its window becomes an ordinary one.
void calmError() {
    if (Screen* error = Screens::find("frmError"); error && error->Tag == "Splash")
        error->Tag = "0";
}
} // namespace

frmSplash::frmSplash() : Screen("frmSplash") {
    setupUi(this);
    setWindowFlags(Qt::SplashScreen | Qt::FramelessWindowHint);
    lblHint->hide();                  // before the window is painted, or it would be painted twice
    setAttribute(Qt::WA_QuitOnClose); // the dialog above it must not end the program
    Image2->setPixmap(Appearance::splashPicture(Image2->size(), devicePixelRatioF()));
    connect(&Timer1, &QTimer::timeout, this, [this] { trap(".Timer", [this] { timer1Elapsed(); }); });
}

void frmSplash::setTimerInterval(int interval) {
    lblHint->setVisible(interval == 0);
    if (interval == 0)
        Timer1.stop();
    else
        Timer1.start(interval);
}

void frmSplash::goOnAfterRefusal() {
    if (std::exchange(refusedData, false))
        setTimerInterval(tickMilliseconds);
}

void frmSplash::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
        QApplication::exit(0);
    else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        setTimerInterval(tickMilliseconds);
}

/// A click must not bring the picture before the dialog that asks for the data.
bool frmSplash::event(QEvent* event) {
    const bool handled = Screen::event(event);
    if (event->type() == QEvent::WindowActivate || event->type() == QEvent::MouseButtonPress)
        if (Screen* dialog = Screens::find("frmDatabasePath"); dialog && dialog->isVisible()) {
            dialog->raise();
            dialog->activateWindow();
        }
    return handled;
}

void frmSplash::Load() {
    adjustSize();
    move(screen()->availableGeometry().center() - rect().center());
    show();
    setTimerInterval(tickMilliseconds);
}

void frmSplash::timer1Elapsed() {
    if (opening) // the box that asks for a password lets the timer go on
        return;
    const QScopedValueRollback<bool> once(opening, true);
    const Hourglass hourglass;
    int flag = 2;
    try {
        flag = firstTimeFlag();
    } catch (const DataLocked&) {
        if (++lockedTicks > quietTicks)
            throw;
        return;
    } catch (const RefusedData& refused) { // not for the technical report: the user can do something about it
        setTimerInterval(0);
        refusedData = true;
        Dialogs::current().show({QString::fromUtf8(refused.what()), "Brennoval"});
        Screens::open("frmDatabasePath");
        return;
    } catch (const DatabaseFault& fault) {
        if (fault.number() != DatabaseFault::NoDataSource)
            throw;                        // keep trying behind the error dialog: a lock may clear
        Screens::open("frmDatabasePath"); // the next tick tries again behind it
        return;
    }
    calmError();
    auto* window = new BrennovalMain;
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->show();
    Screens::unload(name());
    setTimerInterval(0); // the rest may wait for the user, and the timer would go on ticking
    window->beginStartWork();
    if (flag == 0 && Screens::known("frmFirstTime"))
        Screens::open("frmFirstTime");
}
