#pragma once

#include "core/shell/Dialogs.h"
#include "core/shell/Hourglass.h"
#include "core/shell/Subject.h"
#include "core/store/Record.h"

#include <QAbstractButton>
#include <QElapsedTimer>
#include <QHash>
#include <QPointer>
#include <QPushButton>
#include <QWidget>

#include <functional>

class QComboBox;

/// A screen of the program. There is one instance of each, which Screens opens and closes by name. The
/// controls are members of its Ui class.
class Screen : public QWidget {
  public:
    explicit Screen(const QString& screenName);

    /// "0" until one of the screen's buttons has taken over, then "1". Closing with anything but "1" comes
    /// from the user.
    QString Tag = "0";

    /// Fills the screen. If it throws, the screen is not shown.
    virtual void Load() {}
    virtual void Activate() {}
    virtual void Deactivate() {}
    /// The closing check; false refuses to close.
    virtual bool QueryUnload() { return true; }
    /// The field to focus first; null for the first in tab order.
    virtual QWidget* firstField() const { return nullptr; }
    /// Whether the screen fills the main window. Others appear at their own size when they come to the front.
    virtual bool fillsWindow() const { return false; }
    /// Whether a larger frame helps. If so, the screen has a maximise button.
    virtual bool growsWithWindow() const { return false; }
    /// Whether the screen is outside the main window.
    virtual bool isTopLevel() const { return false; }
    virtual Subject subject() const { return Subject::TankLine; }
    /// The record that the screen shows; most close when that is deleted. This is more than it is loaded for
    /// if it shows another screen's result, such as a report.
    virtual Subject shownRecord() const { return subject(); }
    /// Whether what the screen shows is of use without its record: when that is deleted, `loseRecord`
    /// takes its place for closing.
    virtual bool outlivesRecord() const { return false; }
    /// Goes on as for a new record.
    virtual void loseRecord() {}
    /// Whether each opening loads again, as for lists and finished results.
    virtual bool loadsAfresh() const { return false; }
    /// Shows changes made to the data since loading. A list keeps its selected row. Not called for a screen
    /// in which something was typed, so entries stay.
    virtual void showChanges() { Load(); }
    /// Whether the screen shows user data, and so must show changes that others make to it.
    virtual bool followsData() const { return subject() != Subject::None; }
    /// Whether the user has entered or selected something not yet stored.
    virtual bool hasEntries() const { return entered; }
    /// Whether Escape closes the screen: true for look-ups, pads and views.
    virtual bool closesOnEscape() const { return false; }

    /// Whether closing the screen leaves the status text unchanged.
    virtual bool leavesStatus() const { return false; }

    /// An entry handed over from another screen counts as the user's.
    void setEntered(bool isEntered) { entered = isEntered; }

    /// Whether a screen opened without a job, such as an estimate, joins the first job that uses it.
    virtual bool goesAlong() const { return false; }
    /// Enables the button of a pad or chooser only while the screen that it fills in is open for the same
    /// record.
    void updateHandOver();
    /// The screen that a pad or chooser fills in; empty for none.
    QString fillsIn() const { return handOverTarget ? handOverTarget() : QString(); }

    const QString& name() const { return screenName_; }
    /// Runs the check of a field about to lose the focus; false keeps the focus there.
    bool validateLeaving(QWidget* field);
    /// Whether pressing a widget may leave a field unchecked, because it is a Cancel button.
    bool leavesUnchecked(const QWidget* widget) const;
    /// An entry box or other control by name.
    template<typename Control>
    Control* control(const QString& controlName) const {
        return findChild<Control*>(controlName);
    }

  protected:
    /// Connects a click, inside the error trap; `procedure`, such as ".cmdNext", names it in a report. Fields
    /// left through a menu or another screen are checked first.
    void on(QAbstractButton* button, const QString& procedure, const std::function<void()>& handler);
    /// Runs the action of a button or a list row in the same way.
    void act(const QString& procedure, const std::function<void()>& handler);
    /// The same for a Cancel button, which checks no field.
    void onCancel(QAbstractButton* button, const QString& procedure, const std::function<void()>& handler);
    /// Makes a button open a screen.
    void opens(QAbstractButton* button, const QString& screen);
    /// Sets the check to run before the focus leaves a field; false vetoes it.
    void onLeaving(QWidget* field, const QString& procedure, const std::function<bool()>& check);
    /// Runs a body inside the error trap; true on success.
    bool trap(const QString& procedure, const std::function<void()>& body) const;
    /// Runs a procedure of a handler: a failure ends the handler and is reported under the procedure's name,
    /// such as ".SaveRecord".
    void procedure(const QString& procedureName, const std::function<void()>& body) const;
    /// Sets the button that hands over what was entered here, and the screen that receives it; an empty name
    /// means none.
    void handsOver(QAbstractButton* button, std::function<QString()> target);
    /// Runs a save. If someone else has changed the data in the meantime, the user decides whether to
    /// overwrite it; false if they do not, and their entries stay on the screen.
    static bool saves(const std::function<void(Record::IfChanged)>& save);
    /// Moves on to another screen. If that fails to load, this one stays open and the result is false.
    bool leaveFor(const QString& screen);
    /// The button that Return presses.
    void setDefault(QPushButton* button);
    /// Says on closing that the task is over; a pad or estimate gives back what its screen had said.
    void resetStatus() const;
    /// The window title, which may contain any text from the user.
    void setTitle(const QString& title);
    /// Prepares the controls after setupUi: text boxes select their text on focus, a button with the property
    /// iconName gets that icon, and a label or line with the property quiet, such as a unit, is dimmed.
    void prepare();

    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    bool checkFieldsLeftOtherwise();
    void noteEntries();
    bool continuesSearch(QComboBox& list, const QKeyEvent& key);

    QString screenName_;
    QHash<QWidget*, std::function<bool()>> checks;
    QList<QPointer<QWidget>> unchecked; // fields that have had the focus and not passed their check since
    QList<const QWidget*> cancels;
    QPushButton* defaultButton = nullptr;
    QAbstractButton* handOverButton = nullptr;
    std::function<QString()> handOverTarget;
    QString statusBefore; // what the status bar said when this screen was made
    bool entered = false;
    QWidget* enteredByMouse = nullptr;
    QElapsedTimer lastTyped; // since the last letter typed to find an entry of a list
};
