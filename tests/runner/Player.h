#pragma once

#include "tests/runner/Stage.h"

/// Plays the lines of one scenario on the real screens.
class Player {
  public:
    explicit Player(Stage where) : stage(std::move(where)) {}
    /// Plays one line. Throws Failure.
    void play(const QString& line);
    /// Shuts the program down in whatever state the scenario left it.
    void finish();

  private:
    Stage stage;
};
