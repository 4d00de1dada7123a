#pragma once

#include <QApplication>

/// Shows the hourglass pointer during its lifetime.
class Hourglass {
  public:
    /// Sets the pointer; nested ones are restored in turn.
    Hourglass() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~Hourglass() { QApplication::restoreOverrideCursor(); }
    Hourglass(const Hourglass&) = delete;
    Hourglass& operator=(const Hourglass&) = delete;
};
