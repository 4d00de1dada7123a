#include "documents/specifications/SpecsBox.h"

#include "core/shell/Dialogs.h"
#include "core/store/Specification.h"

#include <QPlainTextEdit>

namespace {
// The box turns carriage returns into line ends; this property keeps the text as stored.
const char* const shownText = "shownText";
} // namespace

void showSpecification(QPlainTextEdit* box, const QString& text, const QString& lastLine) {
    const QString shown = Specification::shown(text, lastLine);
    box->setPlainText(shown);
    box->setProperty(shownText, shown);
    box->document()->setModified(false);
    box->selectAll();
}

void clearSpecification(QPlainTextEdit* box) {
    box->clear();
    box->setProperty(shownText, QString());
}

QString specificationText(const QPlainTextEdit* box) {
    return box->document()->isModified() ? box->toPlainText() : box->property(shownText).toString();
}

void askForClipboard(bool copied) {
    if (!copied)
        return;
    const auto answer =
        Dialogs::current().show({"Do you wish to keep your selection on the clipboard?", "Save?",
                                 QMessageBox::Question, QMessageBox::Yes | QMessageBox::No});
    if (answer == QMessageBox::No)
        Dialogs::current().copy(QString());
}
