#include "core/shell/Status.h"

#include "core/base/Program.h"

#include <QLabel>
#include <QPointer>
#include <QToolButton>

#include <utility>

using namespace Program;

namespace StatusBar {

namespace {
QPointer<QLabel>& statusPanel() {
    static QPointer<QLabel> panel;
    return panel;
}

QPointer<QToolButton>& statusButton() {
    static QPointer<QToolButton> button;
    return button;
}

const QString errorText = QStringLiteral("Error");

struct Question {
    QString text;   // empty for none
    QString before; // what the text said
};

Question& question() {
    static Question asked;
    return asked;
}
} // namespace

void setStatusText(const QString& text) {
    if (statusPanel())
        statusPanel()->setText(text);
    if (statusButton())
        statusButton()->hide();
}

void ask(const QString& text) {
    if (question().text.isEmpty() || question().text != statusText())
        question().before = statusText();
    question().text = text;
    setStatusText(text);
}

void stopAsking() {
    const Question asked = std::exchange(question(), {});
    if (!asked.text.isEmpty() && statusText() == asked.text)
        setStatusText(asked.before);
}

void sayError() {
    ask(errorText);
}

void errorIsOver() {
    if (question().text == errorText)
        stopAsking();
}

void offer(const QString& caption, const std::function<void()>& run) {
    if (!statusButton())
        return;
    statusButton()->setText(caption);
    statusButton()->disconnect();
    QObject::connect(statusButton(), &QToolButton::clicked, statusButton(), run);
    statusButton()->show();
}

void SetStatusBarText() {
    setStatusText(QStringLiteral("Ordwick Company Brennoval Version ") + programVersion());
}

QString statusText() {
    return statusPanel() ? statusPanel()->text() : QString();
}

void setStatusPanel(QLabel* panel, QToolButton* button) {
    statusPanel() = panel;
    statusButton() = button;
}

} // namespace StatusBar
