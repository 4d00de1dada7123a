#include "core/shell/frmSplash.h"

#include "core/base/Fault.h"
#include "core/base/Numbers.h"
#include "core/shell/BrennovalMain.h"
#include "core/shell/ErrorReport.h"
#include "core/store/Gateway.h"

#include <QApplication>
#include <QScreen>

namespace {
constexpr int tickMilliseconds = 500;

/// The flag that asks for the getting-started screen when it is 0; 2 for an empty table.
int firstTimeFlag() {
    int flag = 2;
    Connection connection = UtilityFunctions::openDatabase("User");
    Recordset rows;
    rows.Open("tblFirstTime", connection, CursorType::Keyset, LockType::Optimistic, CommandType::Table);
    if (!rows.AtEnd())
        flag = ToInt16(rows["FirstTime"].number());
    return flag;
}
} // namespace

frmSplash::frmSplash() : Screen("frmSplash") {
    setupUi(this);
    setWindowFlags(Qt::SplashScreen | Qt::FramelessWindowHint);
    connect(&Timer1, &QTimer::timeout, this, [this] { trap(".Timer", [this] { Timer1_Timer(); }); });
}

void frmSplash::setTimerInterval(int interval) {
    if (interval == 0)
        Timer1.stop();
    else
        Timer1.start(interval);
}

void frmSplash::Load() {
    adjustSize();
    move(screen()->availableGeometry().center() - rect().center());
    show();
    setTimerInterval(tickMilliseconds);
}

void frmSplash::Timer1_Timer() {
    const Hourglass hourglass;
    int flag = 2;
    try {
        flag = firstTimeFlag();
    } catch (const DatabaseFault& fault) {
        if (fault.number() != DatabaseFault::NoDataSource)
            throw;                        // the tick goes on behind the error dialog: a lock may pass
        Screens::open("frmDatabasePath"); // the next tick tries again behind it
        return;
    }
    auto* window = new BrennovalMain;
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->show();
    Screens::unload(name());
    if (flag == 0 && Screens::known("frmFirstTime"))
        Screens::open("frmFirstTime");
}
