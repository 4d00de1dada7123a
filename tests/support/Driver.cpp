#include "tests/support/Driver.h"

#include "app/Register.h"
#include "core/shell/BrennovalMain.h"
#include "core/shell/Fields.h"
#include "setup/InstallerFiles.h"

#include <QCheckBox>
#include <QInputMethodEvent>
#include <QRadioButton>
#include <QScrollArea>
#include <QWindow>

namespace Driver {

ScriptedDialogs& start() {
    registerAll();
    InstallerFiles::setInstallerFolder(QDir::tempPath() + "/no-installer-has-been-here");
    ScriptedDialogs& dialogs = ScriptedDialogs::install();
    dialogs.rule = ScriptedDialogs::decline;
    auto* window = new BrennovalMain; // stop() deletes it
    window->resize(1180, 800);        // the offscreen display is smaller than any that users have
    window->show();
    window->activateWindow();
    settle();
    return dialogs;
}

void stop() {
    for (int round = 0; round < 3 && !Screens::loaded().isEmpty(); ++round)
        for (const QString& name : Screens::loaded())
            Screens::unload(name);
    delete BrennovalMain::instance();
    Dialogs::install(std::make_unique<Dialogs>());
    settle();
}

void settle() {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void command(const QString& name) {
    Commands::action(name)->trigger();
    settle();
}

bool isOpen(const QString& screen) {
    return Screens::find(screen) != nullptr;
}

QString pressAt(QWidget* target, const QPoint& point, bool twice) {
    if (!target->isVisible())
        return target->objectName() + " is not visible";
    QWidget* window = target->window();
    if (!window->isActiveWindow()) { // a press brings its window to the front
        const QPointer<QWidget> there = target;
        window->activateWindow();
        settle();
        if (!there) // its record and its screen are gone
            return {};
    }
    for (QWidget* parent = target->parentWidget(); parent; parent = parent->parentWidget())
        if (auto* area = dynamic_cast<QScrollArea*>(parent)) { // users scroll to what they press
            const QPoint there = target->mapTo(area->widget(), point);
            area->ensureVisible(there.x(), there.y());
        }
    const QPoint place = target->mapTo(window, point);
    const QWidget* top = window->childAt(place);
    if (top && top != target && !target->isAncestorOf(top) && top->isEnabled())
        return target->objectName() + " is covered by " + top->objectName();
    if (twice)
        QTest::mouseDClick(window->windowHandle(), Qt::LeftButton, {}, place);
    else
        QTest::mouseClick(window->windowHandle(), Qt::LeftButton, {}, place);
    return {};
}

QPoint pressPoint(const QWidget* widget) {
    if (dynamic_cast<const QRadioButton*>(widget) || dynamic_cast<const QCheckBox*>(widget))
        return {12, widget->height() / 2}; // only the indicator and the text react to clicks
    return widget->rect().center();
}

void press(const QString& screen, const QString& name) {
    auto* button = control(screen, name);
    if (button && button->isEnabled() && button->isVisible()) {
        if (!button->isActiveWindow())
            button->activateWindow();
        QTest::mouseClick(button, Qt::LeftButton, {}, pressPoint(button));
    }
    settle();
}

void enter(const QString& screen, const QString& name, const QString& text) {
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

void enterConditions(const QString& volume) {
    const std::pair<const char*, QString> values[] = {{"txtSOTMin", "40"},        {"txtAtmPressure", "14.7"},
                                                      {"txtTotSysFluid", volume}, {"txtSOTMax", "180"},
                                                      {"txtSOPMin", "12"},        {"txtSOPMax", "30"}};
    for (const auto& [box, text] : values)
        enter("frmJobConditions", box, text);
}

QString report() {
    const auto* box = control("frmError", "lblTechSupport");
    return box ? Fields::fieldText(box) : QString();
}

} // namespace Driver
