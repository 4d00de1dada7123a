#pragma once

#include <QMap>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>

/// What holds something of a stored row, or of the boxes of a screen, by its name; numbers in their shortest
/// text.
using Row = QMap<QString, QString>;

/// Whose record a piece of work is about, and how; nothing for what is not known.
struct Values {
    std::optional<QString> mode;
    std::optional<QString> job;
    std::optional<QString> tank;
    std::optional<QString> application; // by its display name
};
using Work = std::shared_ptr<Values>;

/// What a window shows of the user's data.
enum class About { Nothing, Job, Line };

/// An open window, as a user remembers it.
struct Window {
    Work work;
    Values openedFor;
    About shows = About::Nothing; // what goes when it is deleted
    QString line = {};            // the tank of its work when it joined that; one to come gets its key later
    std::optional<QString> application = {}; // of its work at that time
    bool handsBack = false;                  // an estimator that the conditions opened
    Row boxes = {};                          // what its boxes show
    Row asRead = {};                         // its record, as it read it
    bool typed = false;
    QStringList list = {}; // its rows by their first column
    int chosen = 0;        // the row of the list
};

/// What the walker writes down beside the program, by the rules of the screens alone: what each window is
/// for, and every row that must be stored. It never asks the program what it thinks.
class Notes {
  public:
    /// How a message box is answered: told its text and its buttons, gives the button that will be pressed.
    std::function<QString(const QString& text, const QStringList& buttons)> ask;

    QMap<QString, Row> headers; // by job
    QMap<QString, Row> lines;   // by tank
    QMap<QString, Window> windows;
    Work work = std::make_shared<Values>(); // what the window in front, or the last one, works on

    bool isOpen(const QString& window) const { return windows.contains(window); }
    Values& valuesOf(const QString& window) { return *windows[window].work; }
    /// The tank lines of a job, in the order of their numbers.
    QStringList tanksOf(const QString& job) const;
    /// The stored tank line that a window is about; an empty row for one to come.
    Row lineOf(const QString& window) const;

    /// What a command of the menu begins.
    Work begin() const { return std::make_shared<Values>(*work); }
    /// A screen writes a value: windows of the same work that are about the record which it leaves stay with
    /// that.
    void set(const Work& task, const QString& writer, std::optional<QString> Values::*name,
             const QString& text);
    /// Opens a window for a piece of work; false when another record stays in it.
    bool open(const QString& window, const Work& task);
    /// A window gives way to the next one of its work; false when that cannot be opened.
    bool leave(const QString& window, const QString& next);
    /// The user closes a window by its title bar; false when it stays.
    bool close(const QString& window);
    /// A window goes without being asked.
    void remove(const QString& window) { windows.remove(window); }
    /// Whether a pad or an estimator may write into a screen: it stands open for the line that it was opened
    /// for.
    bool serves(const QString& pad, const QString& target) const;
    /// A window comes to the front.
    void refresh(const QString& window);

    /// Saves the job header of the open screen; false when it stays as it is.
    bool saveHeader();
    /// Saves columns of the tank line of a window; false when nothing was stored.
    bool saveLine(const QString& window, const Row& columns);
    /// Deletes what the user has chosen to, or what was never finished, and the windows that show it.
    void deleteJob(const QString& job, const QString& deleter = {});
    void deleteTank(const QString& tank);
    /// The Cancel of a job's entry.
    void cancelJob(const QString& window);

  private:
    bool closingCheck(const QString& window);
    void fill(const QString& window);
    QStringList listFor(const QString& window) const;
};

/// What a screen shows of its record.
struct Face {
    About about = About::Nothing; // what it is opened for
    bool fresh = false;           // read anew at each opening
    const char* job = nullptr;    // the label with the job, with the tank
    const char* tank = nullptr;
    const char* title = nullptr;  // what stands before the job in its title
    const char* serves = nullptr; // the screen that it writes into
};
Face FaceOf(const QString& window);

/// The pages of the arithmetic and of the catalogue that the notes need.
namespace Reckoning {

/// The catalogue code of a model's application, or its series; an empty text for a model that is not there.
QString applicationOf(const QString& model);
QString seriesOf(const QString& model);
/// What the series screen stores for a line.
Row sizes(const Row& line, const QString& series, const Values& values);
/// What the options screen offers a line: each option's columns.
QList<Row> options(const Row& line, const Values& values);
/// What the shock conditions store; nothing when they are refused.
std::optional<Row> shockSizes(const Row& boxes);
/// All rows of a statement in the engine's own words.
QList<Row> query(const QString& database, const QString& sql);

} // namespace Reckoning
