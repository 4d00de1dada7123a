#include "core/shell/Screens.h"

#include "core/shell/Fields.h"
#include "core/shell/Lists.h"
#include "core/shell/ScreenFrame.h"
#include "core/shell/ScreenRegistry.h"
#include "core/shell/Status.h"
#include "core/shell/Trap.h"
#include "core/store/Deletion.h"
#include "core/store/SessionStore.h"

#include <QMdiArea>

#include <algorithm>
#include <utility>

namespace Screens {

namespace {

void detachOtherScreens(const Session::Task& task, const Session::TaskValues& before);
void updateHandOvers();
void dropScreensOf(const QString& jobID, const QString& tankID);

} // namespace

Registry& registry() {
    static Registry instance = [] {
        Session::onTaskWrite(detachOtherScreens);
        Deletion::onDeleted(dropScreensOf);
        return Registry();
    }();
    return instance;
}

Entry* entryOf(const QString& name) {
    auto& entries = registry().entries;
    const auto found = std::find_if(entries.begin(), entries.end(),
                                    [&](const Entry& e) { return e.screen->name() == name; });
    return found == entries.end() ? nullptr : &*found;
}

namespace {

/// The task at work; before there is one, a new task.
Session::Task workingTask() {
    if (!Session::taskAtWork())
        Session::putToWork(Session::newTask());
    return Session::taskAtWork();
}

void join(Entry& entry, const Session::Task& task) {
    entry.task = task;
    entry.line = Session::lineOf(*task);
    entry.application = task->tankClass;
}

/// Pads and choosers are active while the screen that they serve is open.
void updateHandOvers() {
    for (const Entry& entry : registry().entries)
        entry.screen->updateHandOver();
}

/// When a task moves on to another line or job, its other screens stay behind with the old values.
void detachOtherScreens(const Session::Task& task, const Session::TaskValues& before) {
    const Screen* atWork = registry().depth > 0 ? registry().atWork : registry().active;
    const auto kept = std::make_shared<Session::TaskValues>(before);
    for (Entry& entry : registry().entries) {
        if (entry.task != task)
            continue;
        if (entry.line.isEmpty() && entry.line == Session::lineOf(before))
            entry.line = Session::lineOf(*task);
        if (entry.screen != atWork && Subjects::leaves(entry.screen->shownRecord(), before, *task))
            entry.task = kept;
        else // loaded for a new line, which has got its key now
            entry.loadedFor = Subjects::textOf(entry.screen->subject(), *task);
    }
    updateHandOvers();
}

/// The state of the data for a screen. Nothing for a screen without data.
std::optional<Gateway::DataState> stateFor(const Entry& entry) {
    if (!entry.screen->followsData())
        return std::nullopt;
    return Subjects::stateOf(entry.screen->subject(), *entry.task);
}

bool isStored(const Entry& entry, const Gateway::DataState& state) {
    return Subjects::exists(entry.screen->subject(), *entry.task, state);
}

bool createsItsJob(const Entry& entry) {
    return Subjects::createJob(entry.screen->shownRecord(), *entry.task);
}

/// Notes whether a screen's record exists, just after the screen was filled.
void noteRecord(Entry& entry) {
    if (const auto state = stateFor(entry))
        entry.stored = isStored(entry, *state) && !createsItsJob(entry);
}

/// Lets a screen go on without its record, in a task of its own; false if it must close.
bool goesOn(Screen* screen) {
    if (!screen->outlivesRecord())
        return false;
    Entry* entry = entryOf(screen->name());
    join(*entry, Session::newTask());
    entry->stored = false;
    const AtWork work(screen);
    Faults::runTrapped(screen->name() + ".loseRecord", [screen] { screen->loseRecord(); });
    return true;
}

/// Closes the screens of a job, or of one tank line, that was deleted here. The screen at work handles that
/// itself.
void dropScreensOf(const QString& jobID, const QString& tankID) {
    QList<Screen*> going;
    for (Entry& entry : registry().entries) {
        const Subject shown = entry.screen->shownRecord();
        if (!Subjects::isOf(shown, *entry.task, jobID, tankID) || createsItsJob(entry))
            continue;
        entry.stored = false;
        if (entry.screen != registry().atWork)
            going.append(entry.screen);
    }
    for (Screen* screen : going)
        if (!goesOn(screen))
            drop(screen);
}

ScreenFrame* frameFor(Screen* screen) {
    if (screen->isTopLevel() || !registry().area)
        return nullptr;
    const auto mayClose = [screen] { return find(screen->name()) != screen || unload(screen->name()); };
    using Growth = ScreenFrame::Growth;
    const bool grows = screen->growsWithWindow();
    const Growth growth = screen->fillsWindow() ? grows ? Growth::FillsOrScrolls : Growth::Fills
                          : grows               ? Growth::Grows
                                                : Growth::Keeps;
    return new ScreenFrame(*screen, *registry().area, growth, mayClose);
}

/// Removes a screen without asking it.
void discard(const QString& name) {
    const Entry* entry = entryOf(name);
    if (!entry)
        return;
    Screen* screen = entry->screen;
    ScreenFrame* window = entry->window;
    if (registry().active == screen) {
        const AtWork work(screen);
        registry().active = nullptr;
        screen->Deactivate();
    }
    registry().entries.removeIf([screen](const Entry& e) { return e.screen == screen; });
    if (window && registry().area) {
        registry().area->removeSubWindow(window);
        window->hide();
        window->deleteLater();
    } else {
        screen->hide();
        screen->deleteLater();
        if (registry().area) // the user returns to where they came from
            registry().area->window()->activateWindow();
    }
    updateHandOvers();
    registry().changed();
}

/// Closes a screen that is loaded for another record, if its closing check allows. Unlike when the user
/// closes it, the job that it was opened for is kept.
bool closeForOther(const QString& name) {
    Screen* screen = find(name);
    const QString tag = screen->Tag;
    if (tag == u"0")
        screen->Tag = "1";
    if (unload(name))
        return true;
    screen->Tag = tag;
    return false;
}

} // namespace

void drop(const Screen* screen) {
    if (find(screen->name()) != screen)
        return;
    discard(screen->name());
    if (!anyVisible())
        StatusBar::SetStatusBarText();
}

bool recordExists(Screen* screen) {
    Entry* entry = entryOf(screen->name());
    if (!entry || entry->screen != screen || !entry->stored || entry->unloading)
        return true;
    const auto state = stateFor(*entry);
    if (!state || isStored(*entry, *state))
        return true;
    const QString job = entry->task->jobID.value_or(QString());
    const QString tank = state->jobExists ? Session::lineOf(*entry->task) : QString();
    entry->stored = false; // report it only once
    Faults::runTrapped(screen->name(), [&tank] {
        throw RecordGone(tank.isEmpty() ? "This job has been deleted." : "This tank has been deleted.");
    });
    const bool stays = goesOn(screen);
    dropScreensOf(job, tank); // all at once, so that none of them reports it again
    if (!stays)
        drop(screen);
    return false;
}

bool freshen(Screen* screen) {
    Entry* entry = entryOf(screen->name());
    if (!entry || entry->screen != screen || entry->unloading || screen == registry().atWork)
        return true;
    const auto state = stateFor(*entry);
    if (!state || state->version == entry->dataVersion)
        return true;
    if (!recordExists(screen))
        return find(screen->name()) == screen; // which goes on without it
    entry = entryOf(screen->name());
    entry->dataVersion = state->version;
    entry->stored = isStored(*entry, *state) && !createsItsJob(*entry);
    if (screen->hasEntries())
        return true;
    const AtWork work(screen);
    const KeptRows rows(*screen);
    Faults::runTrapped(screen->name() + ".ShowChanges", [screen] { screen->showChanges(); });
    rows.restore();
    screen->setEntered(false);
    entry = entryOf(screen->name());
    if (!entry)
        return false;
    noteRecord(*entry);
    if (ScreenFrame* window = entry->window) // make room for new rows
        window->resize(window->size().expandedTo(window->minimumSizeHint()));
    return true;
}

void startReading(const Screen& screen) {
    Entry* entry = entryOf(screen.name());
    if (const auto state = entry ? stateFor(*entry) : std::nullopt)
        entry->readFrom = state->version;
}

bool activeExists() {
    return !registry().active || recordExists(registry().active);
}

void freshenActive() {
    const Registry& state = registry();
    if (state.depth == 0 && state.active)
        freshen(state.active);
}

void add(const QString& name, const std::function<Screen*()>& factory) {
    registry().factories.insert(name, factory);
}

bool known(const QString& name) {
    return registry().factories.contains(name);
}

QStringList names() {
    QStringList all = registry().factories.keys();
    all.sort();
    return all;
}

Screen* find(const QString& name) {
    const Entry* entry = entryOf(name);
    return entry ? entry->screen : nullptr;
}

Screen* load(const QString& name) {
    const Session::Task task = workingTask();
    if (Entry* entry = entryOf(name)) {
        const QString subject = Subjects::textOf(entry->screen->subject(), *task);
        const bool same =
            entry->loadedFor == subject || (entry->loadedFor.isEmpty() && entry->screen->goesAlong());
        if (same && (!entry->screen->loadsAfresh() || entry->screen->hasEntries())) {
            entry->loadedFor = subject;
            join(*entry, task);
            entry->stored = false; // until the data has been checked for this task
            updateHandOvers();
            return freshen(entry->screen) ? find(name) : nullptr;
        }
        if (!same && !closeForOther(name))
            return nullptr;
        discard(name);
    }
    const auto factory = registry().factories.constFind(name);
    if (factory == registry().factories.cend())
        throw Fault(Fault::ObjectRequired, "Object required: " + name.toStdString());
    Screen* screen = (*factory)();
    registry().entries.append({.screen = screen,
                               .window = frameFor(screen),
                               .loadedFor = Subjects::textOf(screen->subject(), *task),
                               .task = task,
                               .line = Session::lineOf(*task),
                               .application = task->tankClass});
    const auto before = stateFor(registry().entries.last());
    const AtWork work(screen);
    const bool filled = Faults::runTrapped(
        name + ".Load", [screen] { screen->Load(); }, name == u"frmSplash" ? "Splash" : "");
    if (!filled)
        discard(name);
    if (Entry* entry = entryOf(name)) {
        screen->setEntered(false);
        noteRecord(*entry);
        if (before) // so that another instance's change during the load is still shown
            entry->dataVersion = entry->readFrom.value_or(before->version);
    }
    updateHandOvers();
    return find(name);
}

void show(const QString& name) {
    Entry* entry = entryOf(name);
    if (!entry)
        return;
    Screen* screen = entry->screen;
    ScreenFrame* window = entry->window;
    if (!window) {
        screen->show();
        return;
    }
    const bool first = !window->isVisible();
    screen->show();
    if (first && !screen->fillsWindow())
        window->fitAndCentre();
    window->show();
    registry().changed();
    registry().area->setActiveSubWindow(window);
    if (find(name) != screen) // its record was gone
        return;
    window->applyState();
    if (first)
        Fields::focusFirst(*screen, screen->firstField());
}

bool open(const QString& name) {
    if (!load(name))
        return false;
    show(name);
    return true;
}

Closing close(const QString& name) {
    Entry* entry = entryOf(name);
    if (!entry || entry->unloading)
        return Closing::Gone;
    entry->unloading = true;
    Screen* screen = entry->screen;
    bool allowed = false; // a failing check keeps the screen and what the user typed
    bool checked = false;
    const auto check = [&] {
        try {
            allowed = screen->QueryUnload();
        } catch (const RecordGone&) { // nothing left to keep it for
            allowed = true;
            throw;
        }
    };
    {
        const AtWork work(screen);
        checked = Faults::runTrapped(name + ".QueryUnload", check);
    }
    if (entry = entryOf(name); !allowed) {
        if (entry)
            entry->unloading = false;
        return checked ? Closing::Refused : Closing::Failed;
    }
    const bool leavesStatus = screen->leavesStatus();
    discard(name);
    if (!anyVisible() && !leavesStatus) // no task is in progress
        StatusBar::SetStatusBarText();
    return Closing::Gone;
}

bool unload(const QString& name) {
    return close(name) == Closing::Gone;
}

QStringList loaded() {
    QStringList names;
    for (const Entry& entry : registry().entries)
        names.append(entry.screen->name());
    return names;
}

QString active() {
    const Screen* screen = registry().active;
    return screen ? screen->name() : QString();
}

bool working() {
    return registry().depth > 0;
}

QString recordOf(const Screen& screen) {
    const Entry* entry = entryOf(screen.name());
    return entry ? Subjects::keyOf(screen.shownRecord(), *entry->task) : QString();
}

void setActive(Screen* screen) {
    Registry& state = registry();
    if (!screen || state.active == screen || find(screen->name()) != screen)
        return;
    if (state.active) {
        const AtWork work(state.active);
        state.active->Deactivate();
    }
    state.active = screen;
    if (!freshen(screen))
        return;
    const AtWork work(screen);
    if (const Entry* entry = entryOf(screen->name()); entry && entry->window)
        entry->window->applyState();
    screen->Activate();
}

void setArea(QMdiArea* area) {
    registry().area = area;
    if (area)
        return;
    registry().active = nullptr; // goes with the windows
    registry().entries.removeIf([](const Entry& entry) { return entry.window; });
}

bool anyVisible() {
    return std::ranges::any_of(registry().entries,
                               [](const Entry& entry) { return entry.window && entry.window->isVisible(); });
}

void onChange(const std::function<void()>& changed) {
    registry().changed = changed;
}

QSize room(const Screen& screen) {
    const Entry* entry = entryOf(screen.name());
    return entry && entry->window ? entry->window->room() : screen.size();
}

void placeAgain() {
    for (const Entry& entry : registry().entries)
        if (entry.window)
            entry.window->centreAgain();
}

void FormatScreen(const Screen& screen) {
    if (const Entry* entry = entryOf(screen.name()); entry && entry->window)
        entry->window->fitAndCentre();
}

} // namespace Screens
