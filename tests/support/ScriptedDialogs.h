#pragma once

#include "core/shell/Dialogs.h"
#include "core/shell/Printer.h"

#include <QCoreApplication>
#include <QHash>
#include <QPagedPaintDevice>
#include <QStringList>
#include <QUrl>

#include <functional>
#include <memory>

/// The single stand-in for the dialogs in all tests. It gives prepared answers, or those of a rule.
class ScriptedDialogs : public Dialogs {
  public:
    /// Replaces the dialogs with a new one.
    static ScriptedDialogs& install() {
        auto scripted = std::make_unique<ScriptedDialogs>();
        ScriptedDialogs& installed = *scripted;
        Dialogs::install(std::move(scripted));
        return installed;
    }

    struct Answer {
        QString button;
        QString text;
        bool anyText;
    };
    using Rule = std::function<QMessageBox::StandardButton(const Message&)>;

    /// A file to print to, and the pages, 0 for all.
    struct Print {
        QString file;
        int first;
        int last;
        QPageSize::PageSizeId paper = QPageSize::LastPageSize; // none: that of the pages
    };

    QMessageBox::StandardButton show(const Message& message) override {
        last = message;
        if (answers.isEmpty() && rule)
            return rule(message);
        if (answers.isEmpty()) {
            problem = "a message box came that nobody answers: \"" + message.text + "\"";
            return message.buttons & QMessageBox::Cancel ? QMessageBox::Cancel : QMessageBox::Ok;
        }
        const Answer answer = answers.takeFirst();
        if (!answer.anyText && answer.text != message.text)
            problem = "the message box shows \"" + message.text + "\" instead of \"" + answer.text + "\"";
        const QHash<QString, QMessageBox::StandardButton> buttons = {{"OK", QMessageBox::Ok},
                                                                     {"Cancel", QMessageBox::Cancel},
                                                                     {"Yes", QMessageBox::Yes},
                                                                     {"No", QMessageBox::No}};
        const auto button = answer.button == "Default" // what Return would press
                                ? message.defaultButton
                                : buttons.value(answer.button, QMessageBox::NoButton);
        if (!(message.buttons & button))
            problem = "the message box has no button " + answer.button;
        return button;
    }

    QString openFile(const QString&, const QString&, const QString&) override { return nextFile(); }
    QString saveFile(const QString&, const QString& suggested) override {
        suggestedName = suggested;
        return nextFile();
    }
    QString input(const QString&, const QString& prompt) override {
        if (inputs.isEmpty()) {
            if (!files.isEmpty() && files.first().isNull()) // a cancel applies to whichever box comes
                files.removeFirst();
            else if (!rule)
                problem = "an input box came that nobody answers: \"" + prompt + "\"";
            return {};
        }
        const Answer typed = inputs.takeFirst();
        if (!typed.anyText && typed.text != prompt)
            problem = "the input box says \"" + prompt + "\" instead of \"" + typed.text + "\"";
        return typed.button;
    }
    QString password(const QString& title, const QString& prompt) override { return input(title, prompt); }
    bool printer(Printer& printer) override {
        if (prints.isEmpty()) {
            problem = "a printer dialog came that nobody answers";
            return false;
        }
        const Print print = prints.takeFirst();
        printer.choose({.first = print.first, .last = print.last, .file = print.file});
        if (print.paper != QPageSize::LastPageSize)
            printer.paper().setPageSize(QPageSize(print.paper));
        return !print.file.isEmpty();
    }
    std::unique_ptr<Progress> progress(const QString& what) override;
    void beep() override { ++beeps; }
    bool startProgram(const QString& commandLine, SystemPrograms::Window /*window*/) override {
        opened.append(commandLine);
        return true;
    }
    bool openInBrowser(const QUrl& page) override {
        if (hasBrowser)
            opened.append(page.toString());
        return hasBrowser;
    }
    bool openFileInProgram(const QString& path) override {
        opened.append(path);
        return true;
    }

    /// The next file name; an empty one cancels the dialog.
    QString nextFile() {
        if (!files.isEmpty())
            return files.takeFirst();
        problem = "a file dialog came that nobody answers";
        return {};
    }

    /// Agrees to nothing: No if available, otherwise OK.
    static QMessageBox::StandardButton decline(const Message& message) {
        return message.buttons & QMessageBox::Yes ? QMessageBox::No : QMessageBox::Ok;
    }

    QList<Answer> answers;
    Rule rule;             // answers when no answer is prepared
    Message last;          // the last one shown
    QList<Answer> inputs;  // the button holds what is typed
    QStringList files;     // a null text cancels
    QList<Print> prints;   // for the next printer dialogs
    QList<int> stops;      // how many parts of the next works may be done before each is stopped
    QString suggestedName; // of the last save dialog
    QStringList opened;    // web addresses, files and programs
    bool hasBrowser = true;
    QString problem;
    int beeps = 0;
};

/// Presses Stop in time. Handles events meanwhile, as a progress in front of the window does.
class ScriptedProgress : public Progress {
  public:
    explicit ScriptedProgress(ScriptedDialogs& asked) : dialogs(asked) {}
    bool goesOn(qsizetype done, qsizetype /*all*/) override {
        if (!dialogs.stops.isEmpty() && done >= dialogs.stops.first()) {
            dialogs.stops.removeFirst();
            stopped = true;
        }
        QCoreApplication::processEvents();
        return !stopped;
    }

  private:
    ScriptedDialogs& dialogs;
    bool stopped = false;
};

inline std::unique_ptr<Progress> ScriptedDialogs::progress(const QString& /*what*/) {
    return std::make_unique<ScriptedProgress>(*this);
}
