#pragma once

#include <QByteArray>
#include <QString>

/// Reads a picture from an SVG file or resource that refers to nothing outside itself. Throws Fault 53 when
/// there is no such file and Fault 481 when it is not such a picture.
QByteArray readPicture(const QString& path);
