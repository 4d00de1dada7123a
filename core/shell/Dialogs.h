#pragma once

#include "core/shell/SystemPrograms.h"

#include <QMessageBox>
#include <QString>

#include <memory>

class QPrinter;
class QUrl;

/// What a message box shows.
struct Message {
    QString text;
    QString title;
    QMessageBox::Icon icon = QMessageBox::Warning;
    QMessageBox::StandardButtons buttons = QMessageBox::Ok;
    QMessageBox::StandardButton defaultButton = QMessageBox::NoButton;
};

/// The one seam to everything that waits for the user outside the screens. Tests and scenarios install
/// their own.
class Dialogs {
  public:
    virtual ~Dialogs() = default;
    virtual QMessageBox::StandardButton show(const Message& message);
    /// A file name to open, or an empty text when the user cancels. Without a title the system gives its own.
    virtual QString openFile(const QString& filter, const QString& suggestedName, const QString& title = {});
    /// A file name to save under, or an empty text when the user cancels. The dialog begins in the folder of
    /// the user's documents with a name, which may be empty; a name without an ending gets that of the
    /// filter.
    virtual QString saveFile(const QString& filter, const QString& suggestedName);
    /// A text that the user types, or an empty one when he cancels.
    virtual QString input(const QString& title, const QString& prompt);
    /// Shows the printer dialog; false when the user cancels.
    virtual bool printer(QPrinter& printer);
    /// Puts a text on the clipboard; an empty one clears it.
    virtual void copy(const QString& text);
    virtual void beep();
    /// Starts a program by its command line; false when that cannot be done.
    virtual bool startProgram(const QString& commandLine, SystemPrograms::Window window);
    /// Opens a page in the desktop's browser; false when there is none.
    virtual bool openInBrowser(const QUrl& page);

    static Dialogs& current();
    static void install(std::unique_ptr<Dialogs> dialogs);
};

/// Asks before something is deleted; No is the answer of a hasty Return.
bool ConfirmDeletion(const QString& question);
