#pragma once

#include "core/shell/Screen.h"
#include "ui_frmDrawing.h"

#include <QTimer>

/// A drawing at full size; a click closes it.
class frmDrawing : public Screen, private Ui::frmDrawing {
  public:
    frmDrawing();
    Subject subject() const override { return Subject::None; }
    Subject shownRecord() const override { return Subject::TankLine; }
    bool closesOnEscape() const override { return true; }
    /// Shows the drawing of that name.
    void showDrawing(const QString& drawing);

  protected:
    void mouseReleaseEvent(QMouseEvent* event) override;

  private:
    void Load() override;
    QTimer Timer1;
    QSize largeSize; // in pixels; smaller where the main window has less room
};

/// Opens the full-size view of a drawing.
void showLargeDrawing(const QString& drawing);
