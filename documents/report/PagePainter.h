#pragma once

#include "documents/report/Page.h"

class QPainter;

/// Paints a page with a painter whose units are points.
void PaintPage(QPainter& painter, const Page& page);

/// Where a picture of some proportions comes to lie in a place: as large as it fits, in the middle.
QRectF PicturePlace(const QSizeF& picture, const QRectF& place);
