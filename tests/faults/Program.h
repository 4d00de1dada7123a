#pragma once

#include "core/shell/BrennovalMain.h"
#include "core/shell/Dialogs.h"
#include "core/shell/Screens.h"
#include "core/store/Gateway.h"
#include "tests/TemporaryHome.h"

#include <QAction>
#include <QInputMethodEvent>
#include <QtTest/QTest>

#include <functional>

/// Answers every message box at once and remembers the last.
class QuietDialogs : public Dialogs {
  public:
    QMessageBox::StandardButton show(const Message& message) override {
        lastText() = message.text;
        return choose()(message);
    }
    QString openFile(const QString&, const QString&) override { return {}; }
    void beep() override {}

    static QString& lastText() {
        static QString text;
        return text;
    }
    static std::function<QMessageBox::StandardButton(const Message&)>& choose() {
        static std::function<QMessageBox::StandardButton(const Message&)> chooser = [](const Message& m) {
            return m.buttons & QMessageBox::Yes ? QMessageBox::No : QMessageBox::Ok;
        };
        return chooser;
    }
};

/// The whole program on data of its own, driven through its screens.
class Program {
  public:
    /// Makes the screens known and brings up the main window, without the splash.
    static void start();
    /// Closes all screens and the main window.
    static void stop();

    static void settle() {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    static void command(const char* name) {
        BrennovalMain::instance()->command(name)->trigger();
        settle();
    }

    template<typename Control = QWidget>
    static Control* control(const char* screen, const char* name) {
        Screen* found = Screens::find(screen);
        return found ? found->control<Control>(name) : nullptr;
    }

    /// Replaces the text of a box as an input method does: through the handlers of typing, all at once.
    static void enter(const char* screen, const char* name, const QString& text) {
        auto* box = control(screen, name);
        if (!box || !box->isEnabled() || !box->isVisible())
            return;
        if (!box->isActiveWindow()) { // an error dialog may have been in front
            box->activateWindow();
            settle();
        }
        box->setFocus();
        QTest::keyClick(box, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(box, Qt::Key_Delete);
        QInputMethodEvent event;
        event.setCommitString(text);
        QCoreApplication::sendEvent(box, &event);
    }

    /// Presses a button as the mouse does: the field that has the focus is checked first.
    static void press(const char* screen, const char* name) {
        if (auto* button = control(screen, name); button && button->isEnabled() && button->isVisible())
            QTest::mouseClick(button, Qt::LeftButton, {}, {12, button->height() / 2});
        settle();
    }

    static bool isOpen(const char* screen) { return Screens::find(screen) != nullptr; }

    /// The conditions of an expansion tank that fits the catalogue.
    static void enterConditions(const QString& volume = "500") {
        enter("frmJobConditions", "txtSOTMin", "40");
        enter("frmJobConditions", "txtAtmPressure", "14.7");
        enter("frmJobConditions", "txtTotSysFluid", volume);
        enter("frmJobConditions", "txtSOTMax", "180");
        enter("frmJobConditions", "txtSOPMin", "12");
        enter("frmJobConditions", "txtSOPMax", "30");
    }
};
