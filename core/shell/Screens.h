#pragma once

#include "core/shell/Screen.h"

#include <functional>

class QMdiArea;

/// Opens and closes the screens by name. Nothing else does.
namespace Screens {

/// Registers a screen's factory under its name; a later one replaces it.
void add(const QString& name, const std::function<Screen*()>& factory);
/// Whether a screen of that name is registered, open or not.
bool known(const QString& name);
/// Names of all screens, open or not.
QStringList names();
/// Constructs the screen and runs its Load in the task at work. If it is already loaded for the same job,
/// tank and application, it joins the task instead; if loaded for another, it is closed first, provided its
/// closing check allows. Null if it refuses, or if Load failed or unloaded it again.
Screen* load(const QString& name);
/// Shows a loaded screen and makes it active.
void show(const QString& name);
/// Loads and shows; false if there is nothing to show.
bool open(const QString& name);

/// The outcome of closing.
enum class Closing { Gone, Refused, Failed };
/// Closes a screen unless its closing check refuses or fails.
Closing close(const QString& name);
/// The same; true if it is closed.
bool unload(const QString& name);

/// Removes a screen without asking it.
void drop(const Screen* screen);
/// Whether a screen's job or tank line still exists. If not, reports that and closes the screen, or lets it
/// go on without it.
bool recordExists(Screen* screen);
/// The same for the active screen, for commands that act on its record.
bool activeExists();
/// Shows changes made to the data since a screen was loaded, if the user has entered nothing there. False if
/// its record is gone, and the screen with it.
bool freshen(Screen* screen);
/// Tells that a screen has written what its Load writes and now reads what it shows, which is not filled
/// again for its own writing.
void startReading(const Screen& screen);
/// Freshens the active screen, when the user returns to the main window. Does nothing while a handler
/// waits for the user.
void freshenActive();

/// The loaded screen of that name; null if it is not loaded.
Screen* find(const QString& name);
/// Whether a pad or chooser may write to a screen: that screen must be open for the job and line that the pad
/// was opened for.
bool serves(const Screen& pad, const QString& target);
/// Whether a pad was opened for a different job than a screen.
bool isOfAnotherJob(const Screen& pad, const QString& screen);
/// Writes a text into a box of the screen that a pad serves, as if the user had typed it; a hidden box is
/// left alone. Throws Fault 91 if there is no such box.
void handOver(const Screen& pad, const QString& target, const QString& control, const QString& text);
/// Names of the loaded screens, oldest first.
QStringList loaded();
/// Name of the main window's active screen; empty if there is none.
QString active();
/// Whether a handler, a check or the Load of a screen runs, so that what changes is the program's doing.
bool working();
/// The tank ID or else the job ID of the record that a screen shows; empty if it shows none.
QString recordOf(const Screen& screen);
/// Called when another screen of the main window becomes active.
void setActive(Screen* screen);

/// Sets the main window's area for screens; null when it is destroyed.
void setArea(QMdiArea* area);
/// Whether any screen of the main window is visible.
bool anyVisible();
/// Runs the action of a menu command or a choice on the start page as a new task.
void beginTask(const std::function<void()>& body);
/// Runs a body in a task that no screen has joined, such as work that goes on while the user does something
/// else.
void inTask(const Session::Task& task, const std::function<void()>& body);

/// Marks the task that a screen works for while one of its handlers or checks runs: the session store holds
/// that task's values. On leaving, the previous task gets its values back; the outermost level returns to the
/// active screen's.
class AtWork {
  public:
    explicit AtWork(const Screen* screen);
    ~AtWork();
    AtWork(const AtWork&) = delete;
    AtWork& operator=(const AtWork&) = delete;

  private:
    friend void beginTask(const std::function<void()>& body);
    friend void inTask(const Session::Task& task, const std::function<void()>& body);
    AtWork(const Screen* screen, const Session::Task& task);
    void enter(const Screen* screen, const Session::Task& task);

    const Screen* screenBefore;
    Session::Task taskBefore;
};

/// Sets the function to call when a screen has been opened or closed.
void onChange(const std::function<void()>& changed);
/// The room for a screen within its frame, in pixels.
QSize room(const Screen& screen);
/// Centres those screens again that the user has not moved.
void placeAgain();
/// Sizes a screen and centres it in the main window, or puts it at the top edge if it is taller.
void FormatScreen(const Screen& screen);

} // namespace Screens
