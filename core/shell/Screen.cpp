#include "core/shell/Screen.h"

#include "core/base/Fault.h"
#include "core/look/Appearance.h"
#include "core/shell/BrennovalMain.h"
#include "core/shell/ErrorReport.h"
#include "core/shell/FieldChecks.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QPlainTextEdit>

#include <algorithm>

Screen::Screen(const QString& screenName) : screenName_(screenName) {
    setObjectName(screenName);
}

void Screen::prepare() {
    for (QLineEdit* box : findChildren<QLineEdit*>())
        box->installEventFilter(this);
    for (QPlainTextEdit* box : findChildren<QPlainTextEdit*>())
        box->installEventFilter(this);
    for (QAbstractButton* button : findChildren<QAbstractButton*>())
        if (const QString icon = button->property("iconName").toString(); !icon.isEmpty())
            button->setIcon(Appearance::icon(icon));
}

void Screen::makeUnavailable(QAbstractButton* button) {
    button->setEnabled(false);
    const QString hint = button->toolTip();
    button->setToolTip(hint.isEmpty() ? "Not available yet" : hint + ": Not available yet");
}

void Screen::trap(const QString& procedure, const std::function<void()>& body) const {
    UtilityFunctions::Trap(screenName_ + procedure, body, screenName_ == "frmSplash" ? "Splash" : "");
}

void Screen::procedure(const QString& name, const std::function<void()>& body) const {
    UtilityFunctions::Procedure(screenName_ + name, body);
}

void Screen::on(QAbstractButton* button, const QString& procedure, std::function<void()> handler) {
    connect(button, &QAbstractButton::clicked, this,
            [this, procedure, handler = std::move(handler)] { trap(procedure, handler); });
}

void Screen::opens(QAbstractButton* button, const QString& screen) {
    if (!Screens::known(screen))
        makeUnavailable(button);
    on(button, "." + button->objectName(), [screen] {
        const Hourglass hourglass;
        Screens::open(screen);
    });
}

void Screen::onLeaving(QWidget* field, const QString& procedure, std::function<bool()> check) {
    checks.insert(field, [this, procedure, check = std::move(check)] {
        bool passed = false;
        trap(procedure, [&] { passed = check(); });
        return passed;
    });
}

bool Screen::validateLeaving(QWidget* field) {
    const auto check = checks.constFind(field);
    return check == checks.cend() || (*check)();
}

void Screen::setDefault(QPushButton* button) {
    defaultButton = button;
    button->setDefault(true);
}

void Screen::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) {
        QWidget::keyPressEvent(event);
        return;
    }
    auto* focused = dynamic_cast<QPushButton*>(focusWidget());
    QPushButton* pressed = focused ? focused : defaultButton;
    if (pressed && pressed->isEnabled() && (!focusWidget() || validateLeaving(focusWidget())))
        pressed->click();
}

void Screen::closeEvent(QCloseEvent* event) {
    if (isTopLevel() && Screens::find(screenName_) == this)
        event->setAccepted(Screens::unload(screenName_));
}

bool Screen::eventFilter(QObject* object, QEvent* event) {
    auto* line = dynamic_cast<QLineEdit*>(object);
    if (event->type() == QEvent::FocusIn) {
        if (static_cast<QFocusEvent*>(event)->reason() == Qt::MouseFocusReason)
            enteredByMouse = static_cast<QWidget*>(object);
        else if (auto* text = dynamic_cast<QPlainTextEdit*>(object))
            text->selectAll();
        else if (line)
            line->selectAll();
    } else if (event->type() == QEvent::MouseButtonRelease && object == enteredByMouse) {
        enteredByMouse = nullptr;
        if (line && !line->hasSelectedText())
            line->selectAll();
    }
    return QWidget::eventFilter(object, event);
}

namespace Screens {

namespace {

struct Open {
    Screen* screen;
    QMdiSubWindow* window; // null for a screen of its own
    bool unloading = false;
};

struct Registry {
    QHash<QString, std::function<Screen*()>> factories;
    QList<Open> open;
    Screen* active = nullptr;
};

Registry& registry() {
    static Registry instance;
    return instance;
}

Open* entry(const QString& name) {
    auto& open = registry().open;
    const auto found =
        std::find_if(open.begin(), open.end(), [&](const Open& o) { return o.screen->name() == name; });
    return found == open.end() ? nullptr : &*found;
}

/// Gives the focus to the first field in tab order, or to the screen when it has none.
void focusFirstField(Screen* screen) {
    if (QWidget* wanted = screen->firstField()) {
        wanted->setFocus(Qt::TabFocusReason);
        return;
    }
    for (QWidget* next = screen->nextInFocusChain(); next != screen; next = next->nextInFocusChain())
        if (screen->isAncestorOf(next) && next->isVisible() && next->isEnabled() &&
            (next->focusPolicy() & Qt::TabFocus)) {
            next->setFocus(Qt::TabFocusReason);
            return;
        }
    screen->setFocus();
}

/// Gives the frame of a screen its state: filling the main window, or in its own size.
void applyState(const Screen& screen, QMdiSubWindow* window) {
    if (screen.fillsWindow() && !window->isMaximized())
        window->showMaximized();
    else if (!screen.fillsWindow() && (window->isMaximized() || window->isMinimized()))
        window->showNormal();
}

/// The frame of a screen inside the main window.
class ScreenWindow : public QMdiSubWindow {
  public:
    using QMdiSubWindow::QMdiSubWindow;

  protected:
    void closeEvent(QCloseEvent* event) override {
        auto* screen = dynamic_cast<Screen*>(widget());
        const bool live = screen && Screens::find(screen->name()) == screen;
        event->setAccepted(!live || Screens::unload(screen->name()));
    }
};

} // namespace

void add(const QString& name, const std::function<Screen*()>& factory) {
    registry().factories.insert(name, factory);
}

bool known(const QString& name) {
    return registry().factories.contains(name);
}

Screen* find(const QString& name) {
    const Open* open = entry(name);
    return open ? open->screen : nullptr;
}

QWidget* field(const QString& screen, const QString& control) {
    const Screen* owner = load(screen);
    QWidget* box = owner ? owner->control<QWidget>(control) : nullptr;
    if (!box)
        throw Fault(Fault::ObjectNotSet, "There is no field " + (screen + "." + control).toStdString());
    return box;
}

Screen* load(const QString& name) {
    if (Screen* screen = find(name))
        return screen;
    const auto factory = registry().factories.constFind(name);
    if (factory == registry().factories.cend())
        throw Fault(424, "Object required: " + name.toStdString());
    Screen* screen = (*factory)();
    QMdiSubWindow* window = nullptr;
    if (!screen->isTopLevel() && BrennovalMain::instance()) {
        window = new ScreenWindow;
        window->setWidget(screen);
        window->setWindowTitle(screen->windowTitle());
        window->setWindowIcon(QApplication::windowIcon());
        window->setAttribute(Qt::WA_DeleteOnClose, false);
        BrennovalMain::instance()->area()->addSubWindow(window);
        window->hide();
    }
    registry().open.append({screen, window});
    UtilityFunctions::Trap(
        screen->name() + ".Load", [screen] { screen->Load(); }, name == "frmSplash" ? "Splash" : "");
    return find(name);
}

void show(const QString& name) {
    Open* open = entry(name);
    if (!open)
        return;
    Screen* screen = open->screen;
    QMdiSubWindow* window = open->window;
    if (!window) {
        screen->show();
        return;
    }
    const bool first = !window->isVisible();
    screen->show();
    if (first && !screen->fillsWindow())
        UtilityFunctions::FormatScreen(*screen);
    window->show();
    BrennovalMain::instance()->area()->setActiveSubWindow(window);
    applyState(*screen, window);
    if (first)
        focusFirstField(screen);
}

void open(const QString& name) {
    if (load(name))
        show(name);
}

bool unload(const QString& name) {
    Open* open = entry(name);
    if (!open || open->unloading)
        return true;
    open->unloading = true;
    bool allowed = false; // a check that fails keeps the screen and what the user typed
    Screen* screen = open->screen;
    UtilityFunctions::Trap(name + ".QueryUnload", [&] { allowed = screen->QueryUnload(); });
    open = entry(name);
    if (!allowed) {
        open->unloading = false;
        return false;
    }
    QMdiSubWindow* window = open->window;
    if (registry().active == screen) {
        registry().active = nullptr;
        screen->Deactivate();
    }
    registry().open.removeIf([screen](const Open& o) { return o.screen == screen; });
    if (window) {
        BrennovalMain::instance()->area()->removeSubWindow(window);
        window->hide();
        window->deleteLater();
    } else {
        screen->hide();
        screen->deleteLater();
    }
    return true;
}

QStringList loaded() {
    QStringList names;
    for (const Open& open : registry().open)
        names.append(open.screen->name());
    return names;
}

QString active() {
    const Screen* screen = registry().active;
    return screen ? screen->name() : QString();
}

void setActive(Screen* screen) {
    Registry& state = registry();
    if (!screen || state.active == screen || find(screen->name()) != screen)
        return;
    if (state.active)
        state.active->Deactivate();
    state.active = screen;
    if (const Open* open = entry(screen->name()); open && open->window)
        applyState(*screen, open->window);
    screen->Activate();
}

} // namespace Screens
