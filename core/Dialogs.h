#pragma once

#include <QMessageBox>
#include <QString>

#include <memory>

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
    /// A file name to open, or an empty text when the user cancels.
    virtual QString openFile(const QString& filter, const QString& suggestedName);
    virtual void beep();

    static Dialogs& current();
    static void install(std::unique_ptr<Dialogs> dialogs);
};

/// The hourglass pointer for as long as the object lives.
class Hourglass {
  public:
    Hourglass();
    ~Hourglass();
    Hourglass(const Hourglass&) = delete;
    Hourglass& operator=(const Hourglass&) = delete;
};
