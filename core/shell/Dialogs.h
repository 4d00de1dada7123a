#pragma once

#include "core/shell/SystemPrograms.h"

#include <QList>
#include <QMessageBox>
#include <QString>

#include <memory>

class Printer;
class QUrl;

/// The contents of a message box.
struct Message {
    QString text;
    QString title;
    QMessageBox::Icon icon = QMessageBox::Warning;
    QMessageBox::StandardButtons buttons = QMessageBox::Ok;
    QMessageBox::StandardButton defaultButton = QMessageBox::NoButton; // then Yes or OK
    QList<const QWidget*> fields = {}; // that it speaks of; none for the one with the focus
};

/// Shows how far a long operation is, and lets the user stop it.
class Progress {
  public:
    Progress() = default;
    virtual ~Progress() = default;
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    /// Shows how many of its parts are done. False once the user has stopped it. May handle events.
    virtual bool goesOn(qsizetype done, qsizetype all) = 0;
};

/// The one interface to everything outside the screens that waits for the user. Tests and scenarios install
/// their own.
class Dialogs {
  public:
    virtual ~Dialogs() = default;
    virtual QMessageBox::StandardButton show(const Message& message);
    /// A file name to open; empty if the user cancels. Without a title the system uses its own.
    virtual QString openFile(const QString& filter, const QString& suggestedName, const QString& title = {});
    /// A file name to save to; empty if the user cancels. The dialog starts in the user's documents folder
    /// with the suggested name, which may be empty; a name without an extension gets the filter's.
    virtual QString saveFile(const QString& filter, const QString& suggestedName);
    /// A text typed by the user; empty if they cancel.
    virtual QString input(const QString& title, const QString& prompt);
    /// The same for a password, which the box does not show.
    virtual QString password(const QString& title, const QString& prompt);
    /// Shows the printer dialog; false if the user cancels.
    virtual bool printer(Printer& printer);
    /// Starts to show the progress of an operation, once that has taken a while, and stops when the object is
    /// destroyed.
    virtual std::unique_ptr<Progress> progress(const QString& what);
    /// Copies a text to the clipboard; an empty text clears it.
    virtual void copy(const QString& text);
    virtual void beep();
    /// Starts a program by its command line; false if that fails.
    virtual bool startProgram(const QString& commandLine, SystemPrograms::Window window);
    /// Opens a page in the desktop's browser; false if there is none.
    virtual bool openInBrowser(const QUrl& page);
    /// Opens a file with the desktop's program for it; false if there is none.
    virtual bool openFileInProgram(const QString& path);

    static Dialogs& current();
    static void install(std::unique_ptr<Dialogs> dialogs);
};

/// Asks whether to save before what was typed is left: Yes, No or Cancel.
QMessageBox::StandardButton askToSave(const QString& question);
/// Where a message of a size goes: the middle of its window, or clear of the fields that it speaks of. All in
/// pixels of the display.
QRect placeBeside(const QRect& fields, const QSize& size, const QRect& window, const QRect& display);
/// Asks before something is deleted. The default answer is No, in case Return is pressed in haste.
bool confirmDeletion(const QString& question);
