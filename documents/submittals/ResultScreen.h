#pragma once

#include "core/shell/Screen.h"

class QFocusFrame;
class QLabel;
class QToolButton;

/// What the screens that show a finished tank have in common: its picture, its submittal, the commands of the
/// main window that belong to it, and the ways on.
class ResultScreen : public Screen {
  public:
    /// The report that the screen previews and prints: the submittal of its model, unless it has one of its
    /// own.
    virtual QString reportName() const;

  protected:
    using Screen::Screen;

    /// The text of the screen's model field.
    virtual QString modelText() const { return {}; }

    /// A press on the picture opens the drawing that the function names at its larger size.
    void enlarges(QLabel* picture, std::function<QString()> drawing);
    /// The two buttons preview and print the submittal of this screen.
    void offersSubmittal(QToolButton* preview, QToolButton* print);
    /// Begins a further tank line and leaves for a screen.
    void addMore(const QString& screen);

    /// Switches Print and Preview of the main window.
    static void enablePrinting(bool enabled);
    /// The same, and shows or hides the Schedule.
    static void showResultCommands(bool shown);

    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    QLabel* enlarged = nullptr;
    QFocusFrame* ring = nullptr; // around the picture while it has the focus
    std::function<QString()> drawingName;
};

namespace Submittals {

/// Prints the report of a screen, after the printer dialog; a beep when the screen has none.
void PrintSubmittal(const QString& screen);

/// Shows the report of a screen in the viewer; a beep when the screen has none.
void PreviewSubmittal(const QString& screen);

} // namespace Submittals

/// The commands Print and Preview of the main window.
void registerPrinting();
