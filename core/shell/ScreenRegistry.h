#pragma once

#include "core/store/SessionTask.h"

#include <QHash>
#include <QList>

#include <functional>
#include <optional>

class QMdiArea;
class Screen;
class ScreenFrame;

/// What the units of Screens share; nothing else includes this.
namespace Screens {

/// A loaded screen.
struct Entry {
    Screen* screen;
    ScreenFrame* window; // null for a top-level screen
    QString loadedFor;
    Session::Task task;
    QString line = {}; // the task's line when the screen joined it; a new line gets its key later
    std::optional<QString> application = {}; // the task's at that time
    bool unloading = false;
    quint32 dataVersion = 0;              // version of the data shown
    std::optional<quint32> readFrom = {}; // the version after what its Load writes itself
    bool stored = false;                  // whether its job or tank line is known to exist
};

/// All screens, registered and loaded.
struct Registry {
    QHash<QString, std::function<Screen*()>> factories;
    QList<Entry> entries;
    Screen* active = nullptr;
    const Screen* atWork = nullptr; // whose handler or check is running
    int depth = 0;                  // nesting depth of handlers and checks
    QMdiArea* area = nullptr;
    std::function<void()> changed = [] {};
};

/// The only registry.
Registry& registry();

/// The entry of a loaded screen; null if it is not loaded. Valid until a screen is opened or closed.
Entry* entryOf(const QString& name);

} // namespace Screens
