#pragma once

#include "core/store/Model.h"

#include <QByteArray>
#include <QString>

/// A model's own dimensions in inches, for the places that its drawing keeps at A, B and C. Empty ones leave
/// their place empty.
struct DrawingFigures {
    QString diameter{};   // A; of a package its width
    QString height{};     // B; of a lying tank its length
    QString connection{}; // C
    bool operator==(const DrawingFigures&) const = default;
};

/// The figures as the table of the submittal has them, with the sign for inches.
DrawingFigures figuresOf(const Model& model);

/// Writes figures into an SVG drawing, at its texts of the classes figure-A, figure-B and figure-C.
QByteArray withFigures(QByteArray svg, const DrawingFigures& figures);
