#pragma once

#include "documents/report/Page.h"

class QPainter;

/// Paints a page; the painter's units must be points.
void paintPage(QPainter& painter, const Page& page);

/// The largest rectangle of a picture's proportions that fits into a place, centred.
QRectF picturePlace(const QSizeF& picture, const QRectF& place);
