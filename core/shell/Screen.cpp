#include "core/shell/Screen.h"

#include "core/look/Appearance.h"
#include "core/shell/Fields.h"
#include "core/shell/Fitting.h"
#include "core/shell/Screens.h"
#include "core/shell/Status.h"
#include "core/shell/Trap.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QFrame>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QToolButton>

namespace {

/// Headings were designed for a font of 9 points.
void growWithFont(QLabel* label) {
    constexpr double drawnFor = 9;
    QFont font = label->font();
    if (!(font.resolveMask() & QFont::SizeResolved))
        return;
    font.setPointSizeF(font.pointSizeF() * QApplication::font().pointSizeF() / drawnFor);
    label->setFont(font);
}

/// Shows in the lists that stand beside a screen what others have changed.
void freshenLists() {
    for (const QString& name : Screens::loaded())
        if (Screen* screen = Screens::find(name);
            screen && screen->isVisible() && screen->loadsAfresh() && screen->subject() == Subject::Job)
            Screens::freshen(screen);
}

/// Runs a body inside the error trap. A screen whose record turns out to be gone goes with it.
bool attempt(const Screen& screen, const QString& procedure, const std::function<void()>& body) {
    const Screens::AtWork work(&screen);
    bool gone = false;
    const auto watched = [&] {
        try {
            body();
        } catch (const RecordGone&) {
            gone = true;
            throw;
        }
    };
    const bool passed =
        Faults::runTrapped(screen.name() + procedure, watched, screen.name() == "frmSplash" ? "Splash" : "");
    if (gone && !screen.outlivesRecord())
        Screens::drop(&screen);
    return passed;
}

} // namespace

Screen::Screen(const QString& screenName) : screenName_(screenName) {
    setObjectName(screenName);
    statusBefore = StatusBar::statusText();
}

void Screen::prepare() {
    for (QLineEdit* box : findChildren<QLineEdit*>())
        box->installEventFilter(this);
    for (QPlainTextEdit* box : findChildren<QPlainTextEdit*>())
        box->installEventFilter(this);
    for (QComboBox* list : findChildren<QComboBox*>())
        list->installEventFilter(this);
    Fitting::scaleWidths(*this);
    for (QLineEdit* box : findChildren<QLineEdit*>())
        if (box->isReadOnly()) {
            box->setFocusPolicy(Qt::StrongFocus); // a figure that shows can be reached and copied
            Fitting::makeRoomForText(*box);
            connect(box, &QLineEdit::textChanged, box, [box] { Fitting::makeRoomForText(*box); });
        }
    for (QToolButton* button : findChildren<QToolButton*>())
        button->setFocusPolicy(Qt::TabFocus);
    noteEntries();
    for (QLabel* label : findChildren<QLabel*>())
        growWithFont(label);
    for (QAbstractButton* button : findChildren<QAbstractButton*>())
        if (const QString icon = button->property("iconName").toString(); !icon.isEmpty())
            button->setIcon(Appearance::icon(icon));
    for (QFrame* quiet : findChildren<QFrame*>()) // labels and lines
        if (quiet->property("quiet").toBool())
            quiet->setForegroundRole(QPalette::PlaceholderText);
}

/// What the user types or selects counts as an entry, and so does what assistive technology writes into a
/// box, which Qt does not call an edit. What the program displays does not count.
void Screen::noteEntries() {
    const auto note = [this] { entered = true; };
    for (QLineEdit* box : findChildren<QLineEdit*>()) {
        connect(box, &QLineEdit::textEdited, this, note);
        connect(box, &QLineEdit::textChanged, this, [box](const QString& text) {
            if (Fields::isMarked(box)) // the value that was refused is no longer there
                Fields::unmarkField(box);
            if (!Screens::working())
                emit box->textEdited(text);
        });
    }
    for (QPlainTextEdit* box : findChildren<QPlainTextEdit*>())
        connect(box, &QPlainTextEdit::textChanged, this,
                [this, box] { entered = entered || box->hasFocus() || !Screens::working(); });
    for (QComboBox* list : findChildren<QComboBox*>()) {
        connect(list, &QComboBox::activated, this, note);
        connect(list, &QComboBox::currentIndexChanged, this, [this, list] { // chosen by its first letters
            entered = entered || (list->hasFocus() && !Screens::working());
        });
    }
    for (QAbstractButton* button : findChildren<QAbstractButton*>())
        if (button->isCheckable())
            connect(button, &QAbstractButton::clicked, this, note);
}

void Screen::setTitle(const QString& title) {
    setWindowTitle(QString(title).replace("[*]", "[*][*]")); // a single one would mark an unsaved document
}

/// What succeeds takes "Error" back from the status text, but reading the report does not.
bool Screen::trap(const QString& procedure, const std::function<void()>& body) const {
    const int before = Faults::failures();
    const bool passed = attempt(*this, procedure, body);
    if (passed && Faults::failures() == before && !isTopLevel())
        StatusBar::errorIsOver();
    return passed;
}

void Screen::procedure(const QString& procedureName, const std::function<void()>& body) const {
    underName((screenName_ + procedureName).toStdString(), body);
}

void Screen::on(QAbstractButton* button, const QString& procedure, const std::function<void()>& handler) {
    connect(button, &QAbstractButton::clicked, this, [this, procedure, handler] { act(procedure, handler); });
}

void Screen::act(const QString& procedure, const std::function<void()>& handler) {
    if (Screens::recordExists(this) && checkFieldsLeftOtherwise())
        trap(procedure, handler);
}

void Screen::onCancel(QAbstractButton* button, const QString& procedure,
                      const std::function<void()>& handler) {
    cancels.append(button);
    connect(button, &QAbstractButton::clicked, this,
            [this, procedure, handler] { trap(procedure, handler); });
}

void Screen::opens(QAbstractButton* button, const QString& screen) {
    on(button, "." + button->objectName(), [screen] {
        const Hourglass hourglass;
        Screens::open(screen);
    });
}

void Screen::onLeaving(QWidget* field, const QString& procedure, const std::function<bool()>& check) {
    field->installEventFilter(this);
    checks.insert(field, [this, procedure, check] {
        bool passed = false;
        attempt(*this, procedure, [&] { passed = check(); });
        return passed;
    });
}

bool Screen::validateLeaving(QWidget* field) {
    const auto check = checks.constFind(field);
    const bool passed = check == checks.cend() || (*check)();
    if (passed)
        unchecked.removeAll(field);
    return passed;
}

bool Screen::leavesUnchecked(const QWidget* widget) const {
    return cancels.contains(widget);
}

/// A menu, another screen or a press on empty space leaves a field unchecked; this catches up.
bool Screen::checkFieldsLeftOtherwise() {
    const auto fields = unchecked;
    for (const QPointer<QWidget>& field : fields) {
        if (!field || !field->isVisible() || !field->isEnabled() || validateLeaving(field))
            continue;
        field->setFocus();
        return false;
    }
    return true;
}

void Screen::handsOver(QAbstractButton* button, std::function<QString()> target) {
    handOverButton = button;
    handOverTarget = std::move(target);
}

void Screen::updateHandOver() {
    if (handOverButton)
        handOverButton->setEnabled(Screens::serves(*this, handOverTarget()));
}

void Screen::resetStatus() const {
    StatusBar::SetStatusBarText();
    if (Screens::find(fillsIn()))
        StatusBar::setStatusText(statusBefore);
}

bool Screen::saves(const std::function<void(Record::IfChanged)>& save) {
    try {
        save(Record::IfChanged::Refuse);
        return true;
    } catch (const RecordChanged& changed) {
        freshenLists();
        if (Dialogs::current().show({.text = QString::fromUtf8(changed.what()),
                                     .title = "Save?",
                                     .icon = QMessageBox::Question,
                                     .buttons = QMessageBox::Yes | QMessageBox::No,
                                     .defaultButton = QMessageBox::No}) != QMessageBox::Yes)
            return false;
    }
    save(Record::IfChanged::Overwrite);
    return true;
}

bool Screen::leaveFor(const QString& screen) {
    Tag = "1";
    if (!Screens::load(screen)) {
        Tag = "0";
        return false;
    }
    const QString status = StatusBar::statusText(); // set by the next screen; unload would reset it
    Screens::unload(name());
    StatusBar::setStatusText(status);
    Screens::show(screen);
    return true;
}

void Screen::setDefault(QPushButton* button) {
    if (defaultButton && defaultButton != button)
        defaultButton->setDefault(false); // or both are painted as the one that Return presses
    defaultButton = button;
    button->setDefault(true);
}

void Screen::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && closesOnEscape()) {
        Screens::unload(name());
        return;
    }
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) {
        QWidget::keyPressEvent(event);
        return;
    }
    auto* focused = dynamic_cast<QAbstractButton*>(focusWidget());
    const auto* option = dynamic_cast<QRadioButton*>(focused);
    const bool chosen = (option && option->isChecked()) || // Return then moves on with that choice
                        dynamic_cast<QCheckBox*>(focused); // which Space ticks
    QAbstractButton* pressed = focused && !chosen ? focused : defaultButton;
    if (!pressed || !pressed->isEnabled())
        return;
    // Return does not leave its box. An empty one would become 0 by that, where the press asks for an entry.
    const auto* box = dynamic_cast<QLineEdit*>(focusWidget());
    const bool empty = box && box->text().isEmpty();
    if (empty)
        unchecked.removeAll(focusWidget());
    if (leavesUnchecked(pressed) || !focusWidget() || empty || validateLeaving(focusWidget()))
        pressed->click();
}

void Screen::closeEvent(QCloseEvent* event) {
    if (isTopLevel() && Screens::find(screenName_) == this)
        event->setAccepted(Screens::unload(screenName_));
}

/// Whether a key goes on with the text that is being typed to find an entry of a list. Qt would open the list
/// at a space.
bool Screen::continuesSearch(QComboBox& list, const QKeyEvent& key) {
    const auto isText = [](const QString& text) { return !text.isEmpty() && text[0].isPrint(); };
    const bool typing = lastTyped.isValid() && lastTyped.elapsed() < QApplication::keyboardInputInterval();
    if (list.isEditable() || key.modifiers() & ~Qt::ShiftModifier || !isText(key.text()) ||
        (key.key() == Qt::Key_Space && !typing)) {
        lastTyped.invalidate();
        return false;
    }
    lastTyped.start();
    return key.key() == Qt::Key_Space;
}

bool Screen::eventFilter(QObject* object, QEvent* event) {
    if (auto* list = dynamic_cast<QComboBox*>(object); list && event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (continuesSearch(*list, *key)) {
            list->view()->keyboardSearch(key->text());
            list->setCurrentIndex(list->view()->currentIndex().row());
            return true;
        }
    }
    auto* line = dynamic_cast<QLineEdit*>(object);
    if (event->type() == QEvent::ToolTipChange && line && Fields::isMarked(line)) {
        Fields::describeMark(line); // another range is in force
    } else if (event->type() == QEvent::FocusIn) {
        auto* field = static_cast<QWidget*>(object);
        if (checks.contains(field) && !unchecked.contains(field))
            unchecked.append(field);
        if (static_cast<QFocusEvent*>(event)->reason() == Qt::MouseFocusReason)
            enteredByMouse = field;
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
