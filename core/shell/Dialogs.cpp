#include "core/shell/Dialogs.h"

#include "core/shell/Printer.h"

#include <QApplication>
#include <QClipboard>
#include <QFileDialog>
#include <QInputDialog>
#include <QProgressDialog>
#include <QScreen>
#include <QStandardPaths>

#include <algorithm>
#include <optional>

namespace {
std::unique_ptr<Dialogs>& installed() {
    static std::unique_ptr<Dialogs> dialogs = std::make_unique<Dialogs>();
    return dialogs;
}

/// Shows the default pointer while a dialog waits for the user, even during an hourglass.
class DefaultPointer {
  public:
    DefaultPointer() { QApplication::setOverrideCursor(Qt::ArrowCursor); }
    ~DefaultPointer() { QApplication::restoreOverrideCursor(); }
    DefaultPointer(const DefaultPointer&) = delete;
    DefaultPointer& operator=(const DefaultPointer&) = delete;
};

/// A dialog in front of the window with a button to stop the work.
class ProgressBox : public Progress {
  public:
    explicit ProgressBox(const QString& what)
        : box(what, QCoreApplication::translate("Dialogs", "&Stop"), 0, 0, QApplication::activeWindow()) {
        constexpr int patience = 800; // milliseconds before it shows
        box.setWindowModality(Qt::WindowModal);
        box.setMinimumDuration(patience);
        box.setWindowTitle(QStringLiteral("Brennoval"));
        box.setMaximum(1);
        box.setValue(0); // its clock starts at this value only, whatever is done already
    }
    bool goesOn(qsizetype done, qsizetype all) override {
        box.setMaximum(int(all));
        box.setValue(int(done));
        if (box.isVisible() && !pointer)
            pointer.emplace();
        return !box.wasCanceled();
    }

  private:
    QProgressDialog box;
    std::optional<DefaultPointer> pointer;
};

/// The place of some fields on the display, or else of the one with the focus; null if there is nothing to
/// keep clear of.
QRect placeOf(QList<const QWidget*> fields) {
    if (fields.isEmpty())
        fields = {QApplication::focusWidget()};
    QRect place;
    for (const QWidget* field : fields)
        if (field && field->isVisible() && field->window() == QApplication::activeWindow())
            place |= QRect(field->mapToGlobal(QPoint()), field->size());
    return place;
}

/// Qt would take the first button in sight, which is No or Cancel.
QMessageBox::StandardButton defaultOf(const Message& message) {
    if (message.defaultButton != QMessageBox::NoButton)
        return message.defaultButton;
    return message.buttons.testFlag(QMessageBox::Yes) ? QMessageBox::Yes : QMessageBox::Ok;
}
} // namespace

QRect placeBeside(const QRect& fields, const QSize& size, const QRect& window, const QRect& display) {
    constexpr int titleBar = 40; // pixels, which the window manager puts above the message
    constexpr int gap = 8;
    QRect place(QPoint(), size);
    place.moveCenter(window.center());
    if (place.adjusted(0, -titleBar, 0, 0).intersects(fields)) {
        place.moveTop(fields.bottom() + titleBar + gap);
        if (place.bottom() > display.bottom())
            place.moveBottom(fields.top() - gap);
        if (place.top() < display.top() + titleBar) { // neither below nor above
            place.moveTop(window.center().y() - size.height() / 2);
            place.moveLeft(fields.right() + gap);
            if (place.right() > display.right())
                place.moveRight(fields.left() - gap);
        }
    }
    const int rightmost = std::max(display.left(), display.right() + 1 - size.width());
    place.moveLeft(std::clamp(place.left(), display.left(), rightmost));
    place.moveTop(std::max(place.top(), display.top() + titleBar));
    return place;
}

QMessageBox::StandardButton Dialogs::show(const Message& message) {
    const DefaultPointer pointer;
    QMessageBox box(message.icon, message.title, message.text, message.buttons, QApplication::activeWindow());
    box.setDefaultButton(defaultOf(message));
    if (const QRect fields = placeOf(message.fields); !fields.isNull()) {
        box.ensurePolished();
        box.adjustSize();
        const QWidget* window = QApplication::activeWindow();
        box.move(placeBeside(fields, box.size(), QRect(window->mapToGlobal(QPoint()), window->size()),
                             window->screen()->availableGeometry())
                     .topLeft());
    }
    return static_cast<QMessageBox::StandardButton>(box.exec());
}

QString Dialogs::openFile(const QString& filter, const QString& suggestedName, const QString& title) {
    const DefaultPointer pointer;
    return QFileDialog::getOpenFileName(QApplication::activeWindow(), title, suggestedName, filter);
}

QString Dialogs::saveFile(const QString& filter, const QString& suggestedName) {
    const DefaultPointer pointer;
    QFileDialog dialog(QApplication::activeWindow(), {},
                       QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation), filter);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(filter.section(u'.', -1).chopped(1));
    if (!suggestedName.isEmpty())
        dialog.selectFile(suggestedName + u'.' + dialog.defaultSuffix());
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

QString Dialogs::input(const QString& title, const QString& prompt) {
    const DefaultPointer pointer;
    return QInputDialog::getText(QApplication::activeWindow(), title, prompt);
}

QString Dialogs::password(const QString& title, const QString& prompt) {
    const DefaultPointer pointer;
    return QInputDialog::getText(QApplication::activeWindow(), title, prompt, QLineEdit::Password);
}

bool Dialogs::printer(Printer& printer) {
    const DefaultPointer pointer;
    return printer.ask(QApplication::activeWindow());
}

std::unique_ptr<Progress> Dialogs::progress(const QString& what) {
    return std::make_unique<ProgressBox>(what);
}

void Dialogs::copy(const QString& text) {
    if (text.isEmpty())
        QApplication::clipboard()->clear();
    else
        QApplication::clipboard()->setText(text);
}

void Dialogs::beep() {
    QApplication::beep();
}

bool Dialogs::startProgram(const QString& commandLine, SystemPrograms::Window window) {
    return SystemPrograms::start(commandLine, window);
}

bool Dialogs::openInBrowser(const QUrl& page) {
    return SystemPrograms::openInBrowser(page);
}

bool Dialogs::openFileInProgram(const QString& path) {
    return SystemPrograms::openFile(path);
}

Dialogs& Dialogs::current() {
    return *installed();
}
void Dialogs::install(std::unique_ptr<Dialogs> dialogs) {
    installed() = std::move(dialogs);
}

QMessageBox::StandardButton askToSave(const QString& question) {
    return Dialogs::current().show({.text = question,
                                    .title = "Save?",
                                    .icon = QMessageBox::Question,
                                    .buttons = QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel});
}

bool confirmDeletion(const QString& question) {
    return Dialogs::current().show({.text = question,
                                    .title = "Delete?",
                                    .icon = QMessageBox::Question,
                                    .buttons = QMessageBox::Yes | QMessageBox::No,
                                    .defaultButton = QMessageBox::No}) == QMessageBox::Yes;
}
