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

  protected:
    /// A shared conversion: metric value in, U.S. value out. Throws Fault 6.
    using Conversion = double (*)(double);

    /// Gives a box its check and its conversion, and shows the converted value and its unit beside it.
    void converts(QLineEdit* box, QLabel* shown, Conversion conversion, const QString& unit);
    /// Converts a box's value and writes it into a box of another screen, unless the box leaves its target
    /// alone. Throws Fault 13 for text that is not a number.
    void handOver(const QLineEdit* box, const QString& screen, const QString& target) const;

    void Load() override;
    bool QueryUnload() override;

  private:
    /// Whether an empty box stays empty when left; otherwise it becomes 0, as on the conditions screens.
    virtual bool emptyStays() const { return true; }
    /// Whether a text leaves the target unchanged.
    virtual bool leavesTarget(const QString& text) const { return text.isEmpty(); }
    QString converted(const QString& text, Conversion conversion, const QString& unit) const;

    QHash<const QLineEdit*, Conversion> conversions;
};
