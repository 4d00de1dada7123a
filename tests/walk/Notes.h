#pragma once

#include <QMap>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>

/// Contents of a stored row, or of a screen's boxes, by name; numbers in their shortest form.
using Row = QMap<QString, QString>;

/// Which record a task is about, and how; nothing where unknown.
struct Values {
    std::optional<QString> mode;
    std::optional<QString> job;
    std::optional<QString> tank;
    std::optional<QString> application; // by its display name
};
using Work = std::shared_ptr<Values>;

/// What a window shows of the user's data.
enum class About { Nothing, Job, Line };

/// An open window as a user remembers it.
struct Window {
    Work work;
    Values openedFor;
    About shows = About::Nothing;            // the window closes when this is deleted
    QString line = {};                       // the task's tank when it joined; one to come gets its key later
    std::optional<QString> application = {}; // of its task at that time
    bool handsBack = false;                  // an estimator opened from the conditions
    Row boxes = {};                          // contents of its boxes
    Row asRead = {};                         // its record as it was read
    bool typed = false;
    QStringList list = {}; // its rows by their first column
    int chosen = 0;        // the selected row
};

/// What the walker notes alongside the program, by the rules of the screens alone: what each window is for,
/// and every row that must be stored. It never asks the program.
class Notes {
  public:
    /// Answers a message box: receives its text and buttons, returns the button to press.
    std::function<QString(const QString& text, const QStringList& buttons)> ask;

    QMap<QString, Row> headers; // by job
    QMap<QString, Row> lines;   // by tank
    QMap<QString, Window> windows;
    Work work = std::make_shared<Values>(); // what the front window, or the last one, works on

    bool isOpen(const QString& window) const { return windows.contains(window); }
    Values& valuesOf(const QString& window) { return *windows[window].work; }
    /// The tank lines of a job, in numerical order.
    QStringList tanksOf(const QString& job) const;
    /// The stored tank line of a window; an empty row for one to come.
    Row lineOf(const QString& window) const;

    /// The task that a menu command begins.
    Work begin() const { return std::make_shared<Values>(*work); }
    /// A screen writes a value. Windows of the same task that are about the record being left stay with that
    /// record.
    void set(const Work& task, const QString& writer, std::optional<QString> Values::*name,
             const QString& text);
    /// Opens a window for a task; false if it keeps another record.
    bool open(const QString& window, const Work& task);
    /// Replaces a window with the next one of its task; false if that cannot be opened.
    bool leave(const QString& window, const QString& next);
    /// The user closes a window by its title bar; false if it stays open.
    bool close(const QString& window);
    /// Closes a window without asking.
    void remove(const QString& window) { windows.remove(window); }
    /// Whether a pad or an estimator may write into a screen: the screen must be open for the line that the
    /// pad was opened for.
    bool serves(const QString& pad, const QString& target) const;
    /// Brings a window to the front.
    void refresh(const QString& window);

    /// Saves the job header of the open screen; false if it stays as it is.
    bool saveHeader();
    /// Saves columns of a window's tank line; false if nothing was stored.
    bool saveLine(const QString& window, const Row& columns);
    /// Deletes what the user chose, or what was never finished, and the windows that show it.
    void deleteJob(const QString& job, const QString& deleter = {});
    void deleteTank(const QString& tank);
    /// Cancels the entry of a job.
    void cancelJob(const QString& window);

  private:
    bool closingCheck(const QString& window);
    void fill(const QString& window);
    QStringList listFor(const QString& window) const;
};

/// What a screen shows of its record.
struct Face {
    About about = About::Nothing; // what it is opened for
    bool fresh = false;           // read again at each opening
    const char* job = nullptr;    // the labels of the job and of the tank
    const char* tank = nullptr;
    const char* title = nullptr;  // the text before the job in its title
    const char* serves = nullptr; // the screen it writes into
};
Face faceOf(const QString& window);

/// The parts of the arithmetic and of the catalogue that the notes need.
namespace Reckoning {

/// The catalogue code of a model's application, or its series; empty for an unknown model.
QString applicationOf(const QString& model);
QString seriesOf(const QString& model);
/// The values that the series screen stores for a line.
Row sizes(const Row& line, const QString& series, const Values& values);
/// The options that the options screen offers a line: the columns of each.
QList<Row> options(const Row& line, const Values& values);
/// The values that the shock conditions store; nothing if they are refused.
std::optional<Row> shockSizes(const Row& boxes);
/// All rows of a statement, as the engine writes them.
QList<Row> query(const QString& database, const QString& sql);

} // namespace Reckoning
