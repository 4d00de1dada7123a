#pragma once

#include "core/shell/DisplayFields.h"
#include "core/shell/Screen.h"

class QLabel;
class QToolButton;

/// What the screens that show a finished tank have in common: its picture, its submittal, the commands of the
/// main window that belong to it, and the ways on.
class ResultScreen : public Screen {
  protected:
    using Screen::Screen;

    /// A click on the picture opens the drawing that the function names at its larger size.
    void enlarges(QLabel* picture, std::function<QString()> drawing);
    /// The two buttons preview and print the submittal of this screen.
    void offersSubmittal(QToolButton* preview, QToolButton* print);
    /// Shows columns of the session's tank line; without one the boxes keep their samples.
    static void showTankLine(std::initializer_list<DisplayField> fields);
    /// Begins a further tank line and leaves for a screen.
    void addMore(const QString& screen);

    /// Switches Print and Preview of the main window.
    static void enablePrinting(bool enabled);
    /// The same, and shows or hides the Schedule.
    static void showResultCommands(bool shown);

    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    QLabel* enlarged = nullptr;
    std::function<QString()> drawingName;
};
