#pragma once

#include <QByteArray>
#include <QString>

/// Reads a picture from an SVG file or resource that refers to nothing outside itself. Throws Fault 53 when
/// there is no such file and Fault 481 when it is not such a picture.
QByteArray readPicture(const QString& path);

/// The same for a picture of the user's own, which may also be a PNG or JPEG file: its dots, at most as many
/// as a cover needs, become part of an SVG picture.
QByteArray readOwnPicture(const QString& path);
