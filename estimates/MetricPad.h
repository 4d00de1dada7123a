#pragma once

#include "core/shell/Screen.h"

#include <QHash>

class QLabel;
class QLineEdit;

/// A pad on which conditions are entered in metric units; its OK writes them, converted, into the boxes of
/// another screen. Beside each box stands what OK will write.
class MetricPad : public Screen {
  public:
    using Screen::Screen;
    bool closesOnEscape() const override { return true; }

  protected:
    /// The shape of the shared conversions: a metric value in U.S. units. Throws Fault 6.
    using Conversion = double (*)(double);

    /// Gives a box its check and its conversion, and shows the converted value with its unit beside it.
    void converts(QLineEdit* box, QLabel* shown, Conversion conversion, const QString& unit);
    /// Writes a box, converted, into one of another screen, unless the box leaves its target alone.
    /// Throws Fault 13 for a text that is no number.
    void handOver(const QLineEdit* box, const QString& screen, const QString& target) const;

    void Load() override;
    bool QueryUnload() override;

  private:
    /// Whether a box that is left empty stays so: else it becomes a 0, like the boxes of the conditions.
    virtual bool emptyStays() const { return true; }
    /// Whether a text of a box leaves its target as it is.
    virtual bool leavesTarget(const QString& text) const { return text.isEmpty(); }
    QString converted(const QString& text, Conversion conversion, const QString& unit) const;

    QHash<const QLineEdit*, Conversion> conversions;
};
