#pragma once

#include <QString>

#include <functional>
#include <memory>
#include <optional>

/// Which task's values the session store holds. A user has several windows but there is only one store, so
/// each piece of work, a task, has its own values, which are in the store while one of its screens is at
/// work.
namespace Session {

/// The values of a task; nothing for one that is absent.
struct TaskValues {
    std::optional<QString> mode;
    std::optional<QString> jobID;
    std::optional<QString> tankID;
    std::optional<QString> tankClass;

    bool operator==(const TaskValues&) const = default;
};

/// The tank line that a task is about; empty for a new one, which has no key yet. For that the tank picker
/// stores its caption "Add New...".
QString lineOf(const TaskValues& values);

/// A task, shared by its screens.
using Task = std::shared_ptr<TaskValues>;

/// The task whose values are in the store and which receives the writes; null until the first one is put to
/// work.
Task taskAtWork();

/// A task initialised from the store.
Task newTask();

/// Puts a task's values into the store, absent ones included, and directs later writes to it. Null leaves the
/// store as it is, to be read and written without a task.
void putToWork(const Task& task);

/// Stores the values of the task at work now; otherwise this happens shortly after it was put to work.
void storeTask();

/// Sets the listener for writes that change the task at work; it gets the earlier values.
void onTaskWrite(std::function<void(const Task& task, const TaskValues& before)> listener);

} // namespace Session
