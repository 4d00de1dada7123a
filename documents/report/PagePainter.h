#pragma once

#include "documents/report/PictureLabels.h"

#include <array>
#include <functional>

class QPainter;

/// Paints a page; the painter's units must be points.
void paintPage(QPainter& painter, const Page& page);

/// Tells where the lines of a text begin, on their baselines, and which separator follows each.
void placeLines(const PageText& text,
                const std::function<void(QStringView line, const QPointF& at, QChar separator)>& place);
/// Where a text of a picture begins, on its baseline.
QPointF startOf(const PictureLabel& label);
/// A text of a picture at its place on the page; the view is the whole picture in its own units.
PictureLabel onPage(PictureLabel label, const QRectF& view, const QRectF& place);
/// The lines of a check box and of the tick in it, in points.
constexpr double checkWidth = .6;
constexpr double tickWidth = 1.1;
/// The tick in a check box.
std::array<QPointF, 3> tickIn(const QRectF& box);

/// The largest rectangle of a picture's proportions that fits into a place, centred.
QRectF picturePlace(const QSizeF& picture, const QRectF& place);
