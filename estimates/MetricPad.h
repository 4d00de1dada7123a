#pragma once

#include "core/shell/Screen.h"

#include <QHash>

class QLabel;
class QLineEdit;

/// A pad for entering conditions in metric units. Its OK converts them and writes them into the boxes of
/// another screen. The value that OK will write is shown beside each box.
class MetricPad : public Screen {
  public:
    using Screen::Screen;
    bool closesOnEscape() const override { return true; }
    /// Sets the screen whose boxes OK fills in.
    void setTarget(const QString& screen);

  protected:
    /// A shared conversion: metric value in, U.S. value out. Throws Fault 6.
    using Conversion = double (*)(double);

    /// Gives a box its check and its conversion, and shows the converted value and its unit beside it.
    void converts(QLineEdit* box, QLabel* shown, Conversion conversion, const QString& unit);
    /// Converts a box's value and writes it into a box of the target, unless the box leaves that alone.
    /// Throws Fault 13 for text that is not a number.
    void handOver(const QLineEdit* box, const QString& targetBox) const;
    const QString& target() const { return targetScreen; }

    void Load() override;
    bool QueryUnload() override;

  private:
    /// Whether an empty box stays empty when left; otherwise it becomes 0, as on the conditions screens.
    virtual bool emptyStays() const { return true; }
    /// Whether a text leaves the target unchanged.
    virtual bool leavesTarget(const QString& text) const { return text.isEmpty(); }
    QString converted(const QString& text, Conversion conversion, const QString& unit) const;

    /// Hides what the target does not have.
    virtual void adaptToTarget() {}

    QString targetScreen;
    QHash<const QLineEdit*, Conversion> conversions;
};

/// Opens a pad for a screen.
void openMetricPad(const QString& pad, const QString& target);
