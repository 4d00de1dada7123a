#include "calculation/PressureCurve.h"

#include "core/base/Numbers.h"
#include "core/base/Text.h"

#include <QPointF>

#include <algorithm>
#include <cmath>
#include <vector>

double pressureOverWater(const PressureCurve& curve, double water) {
    return Divide((curve.atmosphericPressure + curve.emptyPressure) * curve.tankVolume,
                  curve.tankVolume - water) -
           curve.atmosphericPressure;
}

double waterAtPressure(const PressureCurve& curve, double pressure) {
    const double water = curve.tankVolume * (1 - Divide(curve.atmosphericPressure + curve.emptyPressure,
                                                        curve.atmosphericPressure + pressure));
    return curve.tankAcceptance > 0 ? std::min(water, curve.tankAcceptance) : water;
}

bool canBeDrawn(const PressureCurve& curve) {
    return curve.tankVolume > 0 && curve.atmosphericPressure + curve.emptyPressure > 0 &&
           curve.emptyPressure <= curve.minimumPressure && curve.minimumPressure < curve.maximumPressure;
}

namespace {

constexpr double left = 48; // the field of the curve, in points
constexpr double right = 528;
constexpr double top = 14;
constexpr double bottom = 182;
constexpr double above = -2.5; // of a line's name from the line
constexpr double below = 8;
constexpr double lineHeight = 10;

/// About five marks from 0 on for an axis, in whole steps of 1, 2 or 5.
std::vector<double> marksUpTo(double end) {
    const double rough = end / 5;
    double step = std::pow(10, std::floor(std::log10(rough)));
    for (const double factor : {2.0, 2.5, 2.0}) // through 2 and 5 to 10
        if (step < rough)
            step *= factor;
    std::vector<double> marks;
    for (int i = 0; i * step <= end; ++i)
        marks.push_back(i * step);
    return marks;
}

QString coordinate(double value) {
    return QString::number(value, 'f', 2);
}

QString rounded(double value) {
    return shownNumber(QString::number(value, 'g', 4).toDouble());
}

/// Draws in gallons and psig.
class Drawing {
  public:
    explicit Drawing(const PressureCurve& shown)
        : curve(shown), highest(std::max(shown.maximumPressure, shown.workingPressure)),
          mostWater(waterAtPressure(shown, highest) * 1.02) {}

    QByteArray draw() {
        required();
        axes();
        level(curve.minimumPressure, curve.minimumName, {left + 4, below}, "start");
        level(curve.maximumPressure, curve.maximumName, {left + 4, clearOf(curve.workingPressure)}, "start");
        if (curve.workingPressure > 0)
            level(curve.workingPressure, "working pressure of the model",
                  {(left + right) / 2, clearOf(curve.maximumPressure)}, "middle");
        path();
        full();
        return ("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"540\" height=\"216\" viewBox=\"0 0 540 "
                "216\" font-family=\"Liberation Sans\" font-size=\"8\">" +
                svg + "</svg>")
            .toUtf8();
    }

  private:
    double x(double water) const { return left + (right - left) * water / mostWater; }
    double y(double pressure) const {
        const double low = std::min(0.0, curve.emptyPressure);
        return bottom - (bottom - top) * (pressure - low) / (highest * 1.06 - low);
    }

    void line(const QPointF& from, const QPointF& to, const char* look) {
        svg += "<path fill=\"none\" d=\"M" + coordinate(from.x()) + ' ' + coordinate(from.y()) + 'L' +
               coordinate(to.x()) + ' ' + coordinate(to.y()) + "\" " + look + "/>";
    }

    void text(const QPointF& at, const QString& words, const char* anchor) {
        svg += "<text fill=\"#333\" text-anchor=\"" + QString(anchor) + "\" x=\"" + coordinate(at.x()) +
               "\" y=\"" + coordinate(at.y()) + "\">" + words.toHtmlEscaped() + "</text>";
    }

    void axes() {
        const char* const look = "stroke=\"#000\" stroke-width=\".8\"";
        line({left, top}, {left, bottom}, look);
        line({left, bottom}, {right, bottom}, look);
        const char* const mark = "stroke=\"#000\" stroke-width=\".5\"";
        for (const double pressure : marksUpTo(highest)) {
            line({left - 3, y(pressure)}, {left, y(pressure)}, mark);
            text({left - 5, y(pressure) + 3}, rounded(pressure), "end");
        }
        for (const double water : marksUpTo(mostWater)) {
            line({x(water), bottom}, {x(water), bottom + 3}, mark);
            text({x(water), bottom + 12}, rounded(water), "middle");
        }
        text({(left + right) / 2, bottom + 26}, "Water in the tanks, gal", "middle");
        text({2, top - 5}, "Pressure, psig", "start");
    }

    /// The water that the job needs, from the minimum pressure on.
    void required() {
        const double from = waterAtPressure(curve, curve.minimumPressure);
        const double to = std::min(from + curve.requiredAcceptance, mostWater);
        svg += "<rect fill=\"#cfe3f5\" x=\"" + coordinate(x(from)) + "\" y=\"" + coordinate(top) +
               "\" width=\"" + coordinate(x(to) - x(from)) + "\" height=\"" + coordinate(bottom - top) +
               "\"/>";
        const double working = y(curve.workingPressure);
        const double name = working > top && working < top + 14 ? working + 10 : top + 9; // clear of its line
        text({std::min(x(from), right - 150) + 4, name},
             "required acceptance " + rounded(curve.requiredAcceptance) + " gal", "start");
    }

    /// Where the name of the maximum or working pressure is put, so that the line of the other does not
    /// strike it through: above its own line unless the other is just above that.
    double clearOf(double other) const {
        const double own = curve.maximumPressure + curve.workingPressure - other;
        const double gap = y(own) - y(other);
        return gap > 0 && gap < lineHeight ? below : above;
    }

    void level(double pressure, const char* name, const QPointF& label, const char* anchor) {
        line({left, y(pressure)}, {right, y(pressure)},
             "stroke=\"#5a6570\" stroke-width=\".6\" stroke-dasharray=\"4 3\"");
        text({label.x(), y(pressure) + label.y()}, QString(name) + ' ' + rounded(pressure) + " psig", anchor);
    }

    /// Where the tanks take no more, if that is before the highest pressure.
    void full() {
        const double limit = curve.tankAcceptance;
        if (limit <= 0 || waterAtPressure(curve, highest) < limit)
            return;
        line({x(limit), top}, {x(limit), bottom},
             "stroke=\"#5a6570\" stroke-width=\".6\" stroke-dasharray=\"2 2\"");
        text({x(limit) - 4, bottom - 22}, "the tanks take " + rounded(limit) + " gal", "end");
    }

    void path() {
        constexpr int pieces = 80;
        const double end = waterAtPressure(curve, highest);
        QString points;
        for (int piece = 0; piece <= pieces; ++piece) {
            const double water = end * piece / pieces;
            points += (piece == 0 ? "M" : "L") + coordinate(x(water)) + ' ' +
                      coordinate(y(pressureOverWater(curve, water)));
        }
        svg += "<path fill=\"none\" stroke=\"#0b5cad\" stroke-width=\"1.6\" d=\"" + points + "\"/>";
    }

    const PressureCurve& curve;
    double highest; // psig
    double mostWater;
    QString svg;
};

} // namespace

QByteArray curvePicture(const PressureCurve& curve) {
    return Drawing(curve).draw();
}

QString curveInWords(const PressureCurve& curve) {
    const double accepted =
        waterAtPressure(curve, curve.maximumPressure) - waterAtPressure(curve, curve.minimumPressure);
    QString words = "Pressure over water in the tanks: " + rounded(curve.emptyPressure) +
                    " psig without water, " + rounded(curve.minimumPressure) + " psig at the " +
                    curve.minimumName + " and " + rounded(curve.maximumPressure) + " psig at the " +
                    curve.maximumName + ". Between the two the tanks take " + rounded(accepted) +
                    " gal; required are " + rounded(curve.requiredAcceptance) + " gal.";
    if (curve.tankAcceptance > 0)
        words += " They take no more than " + rounded(curve.tankAcceptance) + " gal.";
    if (curve.workingPressure > 0)
        words += " The working pressure of the model is " + rounded(curve.workingPressure) + " psig.";
    return words;
}
