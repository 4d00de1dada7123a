#pragma once

#include "core/shell/Dialogs.h"
#include "core/shell/Hourglass.h"
#include "core/store/Record.h"

#include <QAbstractButton>
#include <QHash>
#include <QPointer>
#include <QPushButton>
#include <QWidget>

#include <functional>

/// What a screen is loaded for. Opened for another, it loads anew, so that it never shows one job and saves
/// into another.
enum class Subject { TankLine, Job, None };

/// A screen of the program: one instance, opened and closed by name through Screens. Its controls are the
/// members of its Ui class.
class Screen : public QWidget {
  public:
    explicit Screen(const QString& screenName);

    /// "0" until a button has taken over, then "1": a closing with another text is the user's.
    QString Tag = "0";

    /// Fills the screen. One that throws is not shown.
    virtual void Load() {}
    virtual void Activate() {}
    virtual void Deactivate() {}
    /// The closing check; false refuses the closing.
    virtual bool QueryUnload() { return true; }
    /// The field that has the focus at first; null for the first in tab order.
    virtual QWidget* firstField() const { return nullptr; }
    /// Screens that fill the main window; the others stand in their own size when they come to the front.
    virtual bool fillsWindow() const { return false; }
    /// Screens that gain from being larger have a maximise button.
    virtual bool growsWithWindow() const { return false; }
    /// Screens that stand outside the main window.
    virtual bool isTopLevel() const { return false; }
    virtual Subject subject() const { return Subject::TankLine; }
    /// What a screen shows, which goes when that is deleted; more than it is loaded for when it shows what
    /// another screen made, such as a report.
    virtual Subject shownRecord() const { return subject(); }
    /// Screens that list or show finished figures load anew at each opening.
    virtual bool loadsAfresh() const { return false; }
    /// Shows what has changed in the data since. A list keeps its row, and what the user typed stays: a
    /// screen in which something was typed is not asked.
    virtual void ShowChanges() { Load(); }
    /// Screens that show something of the user's data, and so what others change in them.
    virtual bool followsData() const { return subject() != Subject::None; }
    /// Whether the user has entered or chosen something that is not stored.
    virtual bool hasEntries() const { return entered; }
    /// Look-ups, pads and views go when Escape is pressed.
    virtual bool closesOnEscape() const { return false; }

    /// Screens whose closing leaves the status text as it stands.
    virtual bool leavesStatus() const { return false; }

    /// An entry that another screen hands over counts as the user's.
    void setEntered(bool isEntered) { entered = isEntered; }

    /// What is begun without a job, such as an estimate, goes along with the first one that takes it up.
    virtual bool goesAlong() const { return false; }
    /// Lets the button of a pad or chooser act only while the screen that it writes into stands open for the
    /// same record.
    void updateHandOver();

    const QString& name() const { return screenName_; }
    /// Runs the check of a field that is about to lose the focus; false keeps the focus there.
    bool validateLeaving(QWidget* field);
    /// Whether a press on a widget may leave a field without its check: it is a Cancel.
    bool leavesUnchecked(const QWidget* widget) const;
    /// An entry box or other control by its name.
    template<typename Control>
    Control* control(const QString& controlName) const {
        return findChild<Control*>(controlName);
    }

  protected:
    /// Connects a click under the error trap; the procedure names it in a report, such as ".cmdNext". A field
    /// that was left by way of a menu or another screen is checked first.
    void on(QAbstractButton* button, const QString& procedure, const std::function<void()>& handler);
    /// The same for a Cancel, which checks no field.
    void onCancel(QAbstractButton* button, const QString& procedure, const std::function<void()>& handler);
    /// Makes a button open a screen.
    void opens(QAbstractButton* button, const QString& screen);
    /// Sets the check that runs before the focus leaves a field; false vetoes the leaving.
    void onLeaving(QWidget* field, const QString& procedure, const std::function<bool()>& check);
    /// Runs a body under the error trap; true when nothing failed.
    bool trap(const QString& procedure, const std::function<void()>& body) const;
    /// Runs a procedure of a handler: a failure ends the handler and is reported under the procedure's name,
    /// such as ".SaveRecord".
    void procedure(const QString& procedureName, const std::function<void()>& body) const;
    /// Sets the button that hands over what was entered here, and the screen that takes it: none when its
    /// name is empty.
    void handsOver(QAbstractButton* button, std::function<QString()> target);
    /// Runs a save. When someone else has changed since what it would write over, the user decides; false
    /// when he keeps that, and what he typed.
    static bool saves(const std::function<void(Record::IfChanged)>& save);
    /// Leaves on purpose for another screen. When that cannot load, this one stays; false then.
    bool leaveFor(const QString& screen);
    /// The button that Return presses.
    void setDefault(QPushButton* button);
    /// The window title, which may hold any text of the user's.
    void setTitle(const QString& title);
    /// Prepares the controls after setupUi: text boxes select their text on focus, a button with a property
    /// iconName gets that icon, and a label or line with a property quiet, such as a unit's, stands back.
    void prepare();

    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    bool checkFieldsLeftOtherwise();
    void noteEntries();

    QString screenName_;
    QHash<QWidget*, std::function<bool()>> checks;
    QList<QPointer<QWidget>> unchecked; // fields that had the focus and whose check has not passed since
    QList<const QWidget*> cancels;
    QPushButton* defaultButton = nullptr;
    QAbstractButton* handOverButton = nullptr;
    std::function<QString()> handOverTarget;
    bool entered = false;
    QWidget* enteredByMouse = nullptr;
};
