#pragma once

#include <QByteArray>
#include <QString>

/// Reads a picture, an SVG file or resource that stands alone: nothing in it refers to anything outside.
/// Throws Fault 53 when there is no such file and Fault 481 when it is no such picture.
QByteArray ReadPicture(const QString& path);
