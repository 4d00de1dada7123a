#pragma once

#include "documents/report/Page.h"

class QPainter;

/// Paints a page with a painter whose units are points.
void PaintPage(QPainter& painter, const Page& page);

/// The rectangle that a picture of some proportions takes in a place: as large as it fits, in the middle.
QRectF PicturePlace(const QSizeF& picture, const QRectF& place);
