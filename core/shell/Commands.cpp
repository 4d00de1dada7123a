#include "core/shell/Commands.h"

#include <QAction>
#include <QHash>
#include <QPointer>

namespace Commands {

namespace {

struct Command {
    std::function<void()> handler;
    QPointer<QAction> action;
};

QHash<QString, Command>& commands() {
    static QHash<QString, Command> all;
    return all;
}

} // namespace

void set(const QString& name, const std::function<void()>& handler) {
    commands()[name].handler = handler;
}

std::function<void()> handlerOf(const QString& name) {
    return commands().value(name).handler;
}

void addAction(const QString& name, QAction* action) {
    commands()[name].action = action;
}

QAction* action(const QString& name) {
    return commands().value(name).action;
}

void setEnabled(const QString& name, bool enabled) {
    if (QAction* found = action(name))
        found->setEnabled(enabled);
}

void setVisible(const QString& name, bool visible) {
    if (QAction* found = action(name))
        found->setVisible(visible);
}

} // namespace Commands
