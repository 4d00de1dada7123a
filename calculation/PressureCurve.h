#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

/// What the curve of a tank line shows. Volumes in gallons for all tanks together, pressures in psig.
struct PressureCurve {
    double tankVolume = 0;
    double tankAcceptance =
        0; // the most water that they take, where a bladder or diaphragm limits it; else 0
    double atmosphericPressure = 0; // psia
    double emptyPressure = 0;       // of the gas before water enters
    double minimumPressure = 0;
    double maximumPressure = 0;
    double workingPressure = 0; // of the model, where the curve ends
    double requiredAcceptance = 0;
    const char* minimumName = "minimum";
    const char* maximumName = "maximum";
    struct Mark {
        double pressure; // psig
        const char* name;
    };
    std::vector<Mark> marks{}; // further pressures of the job
};

/// The pressure at which the gas of empty tanks is pressed together by an amount of water (Boyle's law).
/// Throws Fault 11 when the water fills the tanks.
double pressureOverWater(const PressureCurve& curve, double water);
/// The water in gallons at which a pressure is reached, as long as the tanks take that much. Throws Fault 11
/// for the absolute pressure 0.
double waterAtPressure(const PressureCurve& curve, double pressure);

/// Whether there is a curve to draw: the pressures rise from that of the empty tank.
bool canBeDrawn(const PressureCurve& curve);
/// The curve as an SVG picture of 540 x 216 points.
QByteArray curvePicture(const PressureCurve& curve);
/// The same in words.
QString curveInWords(const PressureCurve& curve);
