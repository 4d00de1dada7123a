#include "core/shell/Help.h"

#include "core/shell/Screens.h"
#include "core/shell/WebPages.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QMenu>

namespace Help {

namespace {

const QString contents = QStringLiteral("100");

int contextOf(const QObject& object) {
    return object.property("helpContext").toInt();
}

QString topicOf(const Screen& screen) {
    const int context = contextOf(screen);
    return context != 0 ? QString::number(context) : screen.name();
}

} // namespace

QString topicAt(QWidget* widget) {
    if (const auto* menu = dynamic_cast<QMenu*>(widget)) {
        const int context = menu->activeAction() ? contextOf(*menu->activeAction()) : 0;
        return context != 0 ? QString::number(context) : contents;
    }
    for (; widget; widget = widget->parentWidget())
        if (const auto* screen = dynamic_cast<Screen*>(widget))
            return topicOf(*screen);
    const Screen* front = Screens::find(Screens::active());
    return front ? topicOf(*front) : contents;
}

void show(QWidget* widget) {
    const QString topic = topicAt(widget);
    while (QWidget* popup = QApplication::activePopupWidget())
        popup->close();
    WebPages::openPage("frmHelp", topic);
}

void pressKey(QWidget* window) {
    QMetaObject::invokeMethod(
        window,
        [window] {
            QWidget* focus = QApplication::focusWidget();
            QKeyEvent key(QEvent::KeyPress, Qt::Key_F1, Qt::NoModifier);
            QApplication::sendEvent(focus ? focus : window, &key);
        },
        Qt::QueuedConnection);
}

} // namespace Help
