#pragma once

#include "tests/support/ScriptedDialogs.h"

#include <QSize>
#include <QString>

/// Why a line of a story failed.
struct Failure {
    QString what;
};

/// What the commands of a story work on.
struct Stage {
    ScriptedDialogs& dialogs;
    QString shotFolder; // empty for no pictures
    QString homeFolder; // relative paths of a story are below it
    QSize window = {1180, 800}; // of the main window; the display without a display is smaller than users have
    bool started = false;
};

/// Plays the lines of one story on the real screens.
class Player {
  public:
    explicit Player(Stage where) : stage(std::move(where)) {}
    /// Plays one line. Throws Failure.
    void play(const QString& line);
    /// Ends the program, as the story left it.
    void finish();

  private:
    Stage stage;
};
