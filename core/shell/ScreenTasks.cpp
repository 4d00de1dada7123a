#include "core/base/Fault.h"
#include "core/shell/FieldChecks.h"
#include "core/shell/Fields.h"
#include "core/shell/ScreenRegistry.h"
#include "core/shell/Screens.h"
#include "core/store/SessionStore.h"

#include <utility>

namespace Screens {

AtWork::AtWork(const Screen* screen) {
    const Entry* entry = screen ? entryOf(screen->name()) : nullptr;
    enter(screen, entry && entry->screen == screen ? entry->task : Session::taskAtWork());
}

AtWork::AtWork(const Screen* screen, const Session::Task& task) {
    enter(screen, task);
}

void AtWork::enter(const Screen* screen, const Session::Task& task) {
    Registry& state = registry();
    screenBefore = std::exchange(state.atWork, screen);
    taskBefore = Session::taskAtWork();
    ++state.depth;
    if (task)
        Session::putToWork(task);
}

AtWork::~AtWork() {
    Registry& state = registry();
    state.atWork = screenBefore;
    --state.depth;
    if (state.depth > 0)
        Session::putToWork(taskBefore);
    else if (const Entry* entry = state.active ? entryOf(state.active->name()) : nullptr)
        Session::putToWork(entry->task);
}

void beginTask(const std::function<void()>& body) {
    const AtWork work(nullptr, Session::newTask());
    body();
}

void inTask(const Session::Task& task, const std::function<void()>& body) {
    const AtWork around(nullptr, Session::taskAtWork()); // which comes back, even without a screen
    const AtWork work(nullptr, task);
    body();
}

bool serves(const Screen& pad, const QString& target) {
    const Entry* own = entryOf(pad.name());
    const Entry* other = entryOf(target);
    if (!own || !other)
        return false;
    const Subject subject = other->screen->subject();
    const QString job = own->task->jobID.value_or(QString());
    const bool sameTask = own->task == other->task;
    if (subject == Subject::None)
        return true;
    if (job != other->task->jobID.value_or(QString()) || (job.isEmpty() && !sameTask))
        return false;
    return subject == Subject::Job ||
           (own->line == Session::lineOf(*other->task) && own->application == other->task->tankClass &&
            (!own->line.isEmpty() || sameTask));
}

bool isOfAnotherJob(const Screen& pad, const QString& screen) {
    const Entry* own = entryOf(pad.name());
    const Entry* other = entryOf(screen);
    const QString job = own ? own->task->jobID.value_or(QString()) : QString();
    return !job.isEmpty() && other && job != other->task->jobID.value_or(QString());
}

void handOver(const Screen& pad, const QString& target, const QString& control, const QString& text) {
    if (!serves(pad, target))
        return;
    Screen* owner = find(target);
    auto* box = owner->control<QWidget>(control);
    if (!box)
        throw Fault(Fault::ObjectNotSet, "There is no field " + (target + "." + control).toStdString());
    if (box->isHidden())
        return;
    Fields::setFieldText(box, text);
    Fields::unmarkOrdered(box);
    owner->setEntered(true);
}

} // namespace Screens
