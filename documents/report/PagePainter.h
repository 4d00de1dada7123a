#pragma once

#include "documents/report/Page.h"

class QPainter;

/// Paints a page; the painter's units must be points.
void PaintPage(QPainter& painter, const Page& page);

/// The largest rectangle of a picture's proportions that fits into a place, centred.
QRectF PicturePlace(const QSizeF& picture, const QRectF& place);
