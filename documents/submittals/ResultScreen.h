#pragma once

#include "core/shell/Screen.h"
#include "core/store/Model.h"
#include "core/store/TankLine.h"
#include "documents/submittals/SizingNotes.h"

class QFocusFrame;
class QLabel;
class QToolButton;

/// What the screens that show a finished tank have in common: the picture, the submittal, their commands in
/// the main window, and the next steps.
class ResultScreen : public Screen {
  public:
    /// The report that the screen previews and prints: by default the submittal of its model.
    virtual QString reportName() const;
    /// Why the screen has nothing to print yet, for the user; empty when it has.
    virtual QString nothingToPrint() const { return {}; }

  protected:
    using Screen::Screen;

    /// The text of the screen's model field.
    virtual QString modelText() const { return {}; }

    /// A press on the picture opens the drawing that the function names at full size.
    void enlarges(QLabel* picture, std::function<QString()> drawing);
    /// Makes the two buttons preview and print this screen's submittal.
    void offersSubmittal(QToolButton* preview, QToolButton* print);
    /// Makes a button show the calculation sheet of the tank line.
    void offersCalculation(QToolButton* button);
    /// Shows the notes on a tank in a label, which is hidden when there are none.
    static void showNotes(QLabel* label, const SizingNotes::Facts& facts);
    /// Begins another tank line and opens a screen for it.
    void addMore(const QString& screen);

    /// Enables or disables Print and Preview in the main window.
    static void enablePrinting(bool enabled);
    /// Does the same, and shows or hides the Schedule.
    static void showResultCommands(bool shown);

    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    QLabel* enlarged = nullptr;
    QFocusFrame* ring = nullptr; // around the picture while it has focus
    std::function<QString()> drawingName;
};

namespace Submittals {

/// Prints the report of a screen after the printer dialog; beeps when the screen has none.
void PrintSubmittal(const QString& screen);

/// Shows the report of a screen in the viewer; beeps when the screen has none.
void PreviewSubmittal(const QString& screen);

/// Shows a report of the session's record in the viewer.
void showReport(const QString& report);

} // namespace Submittals

/// Registers the main window's Print and Preview commands.
void registerPrinting();
