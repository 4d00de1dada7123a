#pragma once

#include "core/shell/Screen.h"
#include "core/store/SessionTask.h"

#include <functional>

class QMdiArea;

/// Opens and closes the screens by name. Nothing else does.
namespace Screens {

void add(const QString& name, const std::function<Screen*()>& factory);
bool known(const QString& name);
/// Names of all screens, open or not.
QStringList names();
/// Constructs the screen and runs its Load in the task at work, unless it is loaded for the same job, tank
/// and application: then it joins the task. Loaded for another, it goes first, if its closing check lets it.
/// Null when it stays for that, when its Load failed or unloaded it again.
Screen* load(const QString& name);
/// Shows a loaded screen and makes it the active one.
void show(const QString& name);
/// Loads and shows; false when there is nothing to show.
bool open(const QString& name);

/// What became of a closing.
enum class Closing { Gone, Refused, Failed };
/// Closes a screen unless its closing check refuses or fails.
Closing close(const QString& name);
/// The same; true when it is gone.
bool unload(const QString& name);

/// Takes a screen away without asking it.
void drop(const Screen* screen);
/// Whether the job or tank line of a screen is still there. One that is gone is told of, and its screen goes.
bool stands(Screen* screen);
/// The same of the active screen, for commands that act on its record.
bool activeStands();
/// Shows what has changed in the data since a screen was loaded, if the user has entered nothing there. False
/// when its record is gone and the screen with it.
bool freshen(Screen* screen);
/// The same for the active screen, when the user comes back to the main window. Not while a handler waits for
/// him.
void freshenActive();

Screen* find(const QString& name);
/// Whether a pad or chooser may write into a screen: it stands open for the job and line for which the pad
/// was opened.
bool serves(const Screen& pad, const QString& target);
/// Whether a pad was opened for another job than that of a screen.
bool isOfAnotherJob(const Screen& pad, const QString& screen);
/// Writes a text into a box of the screen that a pad serves, as if the user had typed it; a box that the
/// screen hides stays as it is. Throws Fault 91 when there is no such box.
void handOver(const Screen& pad, const QString& target, const QString& control, const QString& text);
/// Names of the loaded screens, the oldest first.
QStringList loaded();
/// Name of the active screen of the main window; an empty text when there is none.
QString active();
/// Tells that another screen of the main window has become the active one.
void setActive(Screen* screen);

/// The area in which the screens stand, from the main window; null when that goes.
void setArea(QMdiArea* area);
/// Whether a screen of the main window shows.
bool anyVisible();
/// Runs what a command of the menu or a choice on the start page does, as a task of its own.
void beginTask(const std::function<void()>& body);

/// Whose work a screen does while one of its handlers or checks runs: its task's values stand in the session
/// store. What ran before gets its own back; in the end they are those of the active screen.
class AtWork {
  public:
    explicit AtWork(const Screen* screen);
    ~AtWork();
    AtWork(const AtWork&) = delete;
    AtWork& operator=(const AtWork&) = delete;

  private:
    friend void beginTask(const std::function<void()>& body);
    AtWork(const Screen* screen, const Session::Task& task);
    void enter(const Screen* screen, const Session::Task& task);

    const Screen* screenBefore;
    Session::Task taskBefore;
};

/// Sets what runs when a screen has come or gone.
void onChange(const std::function<void()>& changed);
/// The room for a screen within its frame, in pixels.
QSize room(const Screen& screen);
/// Puts the screens that the user has not moved back into the middle of the area.
void placeAgain();

} // namespace Screens

namespace Screens {

/// Gives a screen its size and places it in the middle of the main window, at its top edge when it is taller.
void FormatScreen(Screen& screen);

} // namespace Screens
