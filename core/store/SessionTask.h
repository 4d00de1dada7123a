#pragma once

#include <QString>

#include <functional>
#include <memory>
#include <optional>

/// Whose values stand in the session store. A user has several windows and the store is one: so each piece of
/// work, a task, has values of its own, which stand in the store while one of its screens is at work.
namespace Session {

/// The values of a task; nothing for one that is absent.
struct TaskValues {
    std::optional<QString> mode;
    std::optional<QString> jobID;
    std::optional<QString> tankID;
    std::optional<QString> tankClass;

    bool operator==(const TaskValues&) const = default;
};

/// A task, shared by its screens.
using Task = std::shared_ptr<TaskValues>;

/// The task whose values stand in the store and that the writes belong to; null until one is put to work.
Task taskAtWork();

/// A task that begins with what stands in the store.
Task newTask();

/// Lets the store have the values of a task, absent ones too, and gives it the writes that follow. Null leaves the
/// store as it stands, to be read and written without a task.
void putToWork(const Task& task);

/// Stores the values of the task at work now, which happens by itself a moment after it was put to work.
void storeTask();

/// Sets what hears of a write that changes the task at work, with the values before it.
void onTaskWrite(std::function<void(const Task& task, const TaskValues& before)> listener);

} // namespace Session
