#pragma once

#include "core/shell/Dialogs.h"

#include <QAbstractButton>
#include <QHash>
#include <QPushButton>
#include <QWidget>

#include <functional>

/// A screen of the program: one instance, opened and closed by name through Screens. Its controls are the
/// members of its Ui class.
class Screen : public QWidget {
  public:
    explicit Screen(const QString& screenName);

    /// "0" until a button has taken over, then "1": a closing with another text is the user's.
    QString Tag = "0";

    virtual void Load() {}
    virtual void Activate() {}
    virtual void Deactivate() {}
    /// The closing check; false refuses the closing.
    virtual bool QueryUnload() { return true; }
    /// The field that has the focus at first; null for the first in tab order.
    virtual QWidget* firstField() const { return nullptr; }
    /// Screens that fill the main window; the others stand in their own size when they come to the front.
    virtual bool fillsWindow() const { return false; }
    /// Screens that stand outside the main window.
    virtual bool isTopLevel() const { return false; }

    const QString& name() const { return screenName_; }
    /// Runs the check of a field that is about to lose the focus; false keeps the focus there.
    bool validateLeaving(QWidget* field);
    /// An entry box or other control by its name.
    template<typename Control>
    Control* control(const QString& controlName) const {
        return findChild<Control*>(controlName);
    }

  protected:
    /// Connects a click under the error trap; the procedure names it in a report, such as ".cmdNext".
    void on(QAbstractButton* button, const QString& procedure, std::function<void()> handler);
    /// Makes a button open a screen, or unavailable while that screen does not stand yet.
    void opens(QAbstractButton* button, const QString& screen);
    /// Sets the check that runs before the focus leaves a field; false vetoes the leaving.
    void onLeaving(QWidget* field, const QString& procedure, std::function<bool()> check);
    void trap(const QString& procedure, const std::function<void()>& body) const;
    /// Runs a procedure of a handler: a failure is reported under its name, such as ".SaveRecord", and ends
    /// the handler.
    void procedure(const QString& name, const std::function<void()>& body) const;
    /// Marks a button whose screen or routine does not stand yet.
    static void makeUnavailable(QAbstractButton* button);
    /// The button that Return presses.
    void setDefault(QPushButton* button);
    /// Prepares the controls after setupUi: text boxes select their text on focus, and a button with a
    /// property iconName gets that icon.
    void prepare();

    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    QString screenName_;
    QHash<QWidget*, std::function<bool()>> checks;
    QPushButton* defaultButton = nullptr;
    QWidget* enteredByMouse = nullptr;
};

/// Opens and closes the screens by name. Nothing else does.
namespace Screens {

void add(const QString& name, const std::function<Screen*()>& factory);
bool known(const QString& name);
/// Constructs the screen and runs its Load, unless it is loaded. Null when its Load unloaded it again.
Screen* load(const QString& name);
/// Shows a loaded screen and makes it the active one.
void show(const QString& name);
/// Loads and shows.
void open(const QString& name);
/// Closes a screen unless its closing check refuses; true when it is gone.
bool unload(const QString& name);
Screen* find(const QString& name);
/// An entry box of a screen, which is loaded when it is not. Throws Fault 91 when there is none.
QWidget* field(const QString& screen, const QString& control);
/// Names of the loaded screens, the oldest first.
QStringList loaded();
/// Name of the active screen of the main window; an empty text when there is none.
QString active();
/// Tells that another screen of the main window has become the active one.
void setActive(Screen* screen);

} // namespace Screens
