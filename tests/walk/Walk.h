#pragma once

#include "tests/runner/Player.h"
#include "tests/walk/Notes.h"

#include <QWidget>

#include <random>

/// A step taken: its row in the table of steps, and the seed of its choices.
struct Taken {
    int step = 0;
    unsigned seed = 0;
};

/// A walk over the program's menus, screens and windows, with notes of what must result. Each step is a few
/// scenario lines, which a player plays with mouse and keys.
class Walk {
  public:
    explicit Walk(const Stage& stage);

    Notes notes;
    QStringList story; // the lines played

    /// Takes a step and compares the program with the notes. A step that is impossible now does nothing and
    /// returns false. Throws Failure.
    bool take(const Taken& taken);

    /// The window in front, as a user sees it; empty if there is none.
    QString inFront() const;

    /// What the steps are made of.
    int below(int limit) { return std::uniform_int_distribution(0, limit - 1)(random); }
    bool chance(int in) { return below(in) == 0; }
    QString oneOf(const QStringList& choices) { return choices[below(int(choices.size()))]; }
    /// A number between two others, to hundredths, that differs from the present one.
    QString number(double low, double high, const QString& present);
    void say(const QString& line);
    void answer(const QString& button, const QString& text);
    /// Brings a window to the front in one of the ways available to a user.
    void front(const QString& window);
    /// Makes sure that a user could press a control: if it is covered, brings its window to the front.
    void reach(const QString& window, const QString& control);
    /// Presses a button; the notes must already reflect what it does.
    void press(const QString& window, const QString& button);
    void type(const QString& window, const QString& box, const QString& text);
    /// Runs a menu command, possibly through its tool; the notes must already reflect what it does.
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
    const char* window; // the window in which it is taken; empty for none
    void (*act)(Walk& walk, const QString& window);
};
const QList<Step>& allSteps();
