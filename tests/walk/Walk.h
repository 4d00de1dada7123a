#pragma once

#include "tests/runner/Player.h"
#include "tests/walk/Notes.h"

#include <QWidget>

#include <random>

/// A step that was taken: its row in the table of steps, and what its choices are drawn from.
struct Taken {
    int step = 0;
    unsigned seed = 0;
};

/// A walk over the menus, screens and windows of the program, with notes of what must come of it. Each step
/// is a few lines of a story, which a player plays with mouse and keys.
class Walk {
  public:
    explicit Walk(const Stage& stage);

    Notes notes;
    QStringList story; // the lines that were played

    /// Takes a step and compares the program with the notes; a step that is not possible now does nothing
    /// and is false. Throws Failure.
    bool take(const Taken& taken);

    /// The window in front, as a user sees it; an empty text when there is none.
    QString inFront() const;

    /// The means of the steps.
    int below(int limit) { return std::uniform_int_distribution(0, limit - 1)(random); }
    bool chance(int in) { return below(in) == 0; }
    QString oneOf(const QStringList& choices) { return choices[below(int(choices.size()))]; }
    /// A number between two, to hundredths, which is not the one that stands there.
    QString number(double low, double high, const QString& present);
    void say(const QString& line);
    void answer(const QString& button, const QString& text);
    /// Brings a window to the front, in one of the ways that a user has.
    void front(const QString& window);
    /// Makes sure that a user could press a control: where it does not show, its window comes to the front.
    void reach(const QString& window, const QString& control);
    /// A press of a button; the notes must know by now what it does.
    void press(const QString& window, const QString& button);
    void type(const QString& window, const QString& box, const QString& text);
    /// A command of the menu, also by its tool; the notes must know by now what it does.
    void command(const QString& menu, const Work& begun, const QString& tool = {});

  private:
    void compare() const;
    void compareRows(const QString& table, const QString& key, const QMap<QString, Row>& noted) const;
    void compareWindow(const QString& window) const;
    void compareFront(const QString& window) const;

    Player player;
    std::mt19937 random;
};

/// A row of the table of steps.
struct Step {
    const char* name;
    int weight;         // how often it is tried
    const char* window; // in which it is taken; an empty text for none
    void (*act)(Walk& walk, const QString& window);
};
const QList<Step>& AllSteps();
