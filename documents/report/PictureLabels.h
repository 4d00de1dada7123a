#pragma once

#include "documents/report/Page.h"

/// A text in a picture, in the picture's own coordinates.
struct PictureLabel {
    QString text;
    QPointF at; // its baseline: left end, middle or right end, by the alignment of the style
    TextStyle style;
};

/// A picture and its texts apart: Qt's SVG draws texts as outlines, in which no reader of a file finds a
/// word.
struct LabelledPicture {
    QByteArray svg; // without the texts
    QList<PictureLabel> labels;
};
/// Takes the texts out of an SVG picture, but for those that are turned, scaled or in another font.
LabelledPicture labelledPicture(const QByteArray& svg);
