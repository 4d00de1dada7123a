#include "calculation/PressureCurve.h"

#include "core/base/Numbers.h"
#include "core/base/Text.h"

#include <QPointF>
#include <QRectF>

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
constexpr double middle = (left + right) / 2;
constexpr double fontSize = 8;
constexpr double above = -2.5; // a name's baseline from the line that it names
constexpr double below = 8;
constexpr double across = 2.8;

/// The values from one on in steps, which may lead down, as far as a limit.
std::vector<double> steps(double from, double limit, double step) {
    std::vector<double> all;
    const int count = int(std::floor((limit - from) / step));
    for (int i = 0; i <= count; ++i)
        all.push_back(from + i * step);
    return all;
}

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
        : curve(shown), highest(highestOf(shown)),
          mostWater(waterAtPressure(shown, highest) * 1.02), levels{{shown.minimumPressure, shown.minimumName,
                                                                     below, left + 4},
                                                                    {shown.maximumPressure, shown.maximumName,
                                                                     above, left + 4}} {
        if (shown.workingPressure > 0)
            levels.push_back({shown.workingPressure, "working pressure of the model", above, middle});
        for (const PressureCurve::Mark& mark : shown.marks)
            levels.push_back({mark.pressure, mark.name, above, middle});
    }

    QByteArray draw() {
        required();
        axes();
        path();
        full();
        for (const Level& level : levels)
            line({left, y(level.pressure)}, {right, y(level.pressure)},
                 "stroke=\"#5a6570\" stroke-width=\".6\" stroke-dasharray=\"4 3\"");
        nameLevels();
        nameFields();
        return ("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"540\" height=\"216\" viewBox=\"0 0 540 "
                "216\" font-family=\"Liberation Sans\" font-size=\"8\">" +
                svg + "</svg>")
            .toUtf8();
    }

  private:
    struct Level {
        double pressure; // psig
        const char* name;
        double side; // where the name reads best
        double at;
    };

    static double highestOf(const PressureCurve& shown) {
        double most = std::max(shown.maximumPressure, shown.workingPressure);
        for (const PressureCurve::Mark& mark : shown.marks)
            most = std::max(most, mark.pressure);
        return most;
    }

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
    }

    /// The space that one line of text needs at most: each letter counts as a wide one.
    static QRectF spaceOf(const QPointF& at, const QString& words) {
        return {at.x(), at.y() - fontSize * .75, double(words.size()) * fontSize * .56, fontSize};
    }

    /// Whether a name there runs into another, into a line or into the curve.
    bool isFree(const QRectF& space) const {
        const auto within = [&](const QPointF& point) { return space.contains(point); };
        const bool struck = std::any_of(levels.begin(), levels.end(), [&](const Level& level) {
            return space.top() < y(level.pressure) && y(level.pressure) < space.bottom();
        });
        const double limit = isFull() ? x(curve.tankAcceptance) : right;
        return !struck && space.right() < right && (limit < space.left() || limit >= space.right()) &&
               space.top() > top && space.bottom() < bottom &&
               std::none_of(curvePoints.begin(), curvePoints.end(), within) &&
               std::none_of(taken.begin(), taken.end(),
                            [&](const QRectF& other) { return other.intersects(space); });
    }

    /// Writes a name at the first place that is free.
    bool name(const QString& words, const std::vector<QPointF>& places) {
        const auto place = std::find_if(places.begin(), places.end(),
                                        [&](const QPointF& at) { return isFree(spaceOf(at, words)); });
        if (place == places.end())
            return false;
        taken.push_back(spaceOf(*place, words));
        text(*place, words, "start");
        return true;
    }

    /// Names each level beside its line. Where the lines are too close to each other for that, the name
    /// interrupts its own.
    void nameLevels() {
        for (const Level& level : levels) {
            const QString words = QString(level.name) + ' ' + rounded(level.pressure) + " psig";
            const double line = y(level.pressure);
            std::vector<QPointF> places{{level.at, line + level.side}};
            for (const double side : {level.side, below + above - level.side})
                for (const double at : steps(left + 4, right, 20))
                    places.emplace_back(at, line + side);
            if (!name(words, places))
                nameAcross(words, line + across);
        }
    }

    void nameAcross(const QString& words, double baseline) {
        for (const double at : steps(left + 4, right, 20)) {
            const QRectF space = spaceOf({at, baseline}, words);
            const auto covers = [&](const QRectF& other) { return other.intersects(space); };
            if (space.right() < right && std::none_of(taken.begin(), taken.end(), covers)) {
                taken.push_back(space);
                svg += "<rect fill=\"#fff\" x=\"" + coordinate(space.x() - 2) + "\" y=\"" +
                       coordinate(space.y()) + "\" width=\"" + coordinate(space.width() + 4) +
                       "\" height=\"" + coordinate(space.height()) + "\"/>";
                text({at, baseline}, words, "start");
                return;
            }
        }
    }

    /// Names the water that the job needs, and where the tanks are full.
    void nameFields() {
        const auto places = [](double from, double first, double step) {
            std::vector<QPointF> all;
            for (const double baseline : steps(first, step > 0 ? bottom : top, step))
                for (const double at : steps(from, left + 4, -40))
                    all.emplace_back(at, baseline);
            return all;
        };
        constexpr double step = 5;
        const double from = x(waterAtPressure(curve, curve.minimumPressure));
        name("required acceptance " + rounded(curve.requiredAcceptance) + " gal",
             places(std::min(from, right - 150) + 4, top + 9, step));
        const QString words = "the tanks take " + rounded(curve.tankAcceptance) + " gal";
        if (isFull())
            name(words, places(x(curve.tankAcceptance) - 4 - spaceOf({}, words).width(), bottom - 22, -step));
    }

    bool isFull() const {
        return curve.tankAcceptance > 0 && waterAtPressure(curve, highest) >= curve.tankAcceptance;
    }

    /// Where the tanks take no more, if that is before the highest pressure.
    void full() {
        if (isFull())
            line({x(curve.tankAcceptance), top}, {x(curve.tankAcceptance), bottom},
                 "stroke=\"#5a6570\" stroke-width=\".6\" stroke-dasharray=\"2 2\"");
    }

    void path() {
        constexpr int pieces = 160;
        const double end = waterAtPressure(curve, highest);
        QString points;
        for (int piece = 0; piece <= pieces; ++piece) {
            const double water = end * piece / pieces;
            curvePoints.emplace_back(x(water), y(pressureOverWater(curve, water)));
            points += (piece == 0 ? "M" : "L") + coordinate(curvePoints.back().x()) + ' ' +
                      coordinate(curvePoints.back().y());
        }
        svg += "<path fill=\"none\" stroke=\"#0b5cad\" stroke-width=\"1.6\" d=\"" + points + "\"/>";
    }

    const PressureCurve& curve;
    double highest; // psig
    double mostWater;
    std::vector<Level> levels;
    std::vector<QPointF> curvePoints;
    std::vector<QRectF> taken; // by names
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
    for (const PressureCurve::Mark& mark : curve.marks)
        words += QString(" The ") + mark.name + " is " + rounded(mark.pressure) + " psig.";
    if (curve.workingPressure > 0)
        words += " The working pressure of the model is " + rounded(curve.workingPressure) + " psig.";
    return words;
}
