#pragma once

#include <QByteArray>
#include <QImage>

#include <algorithm>

/// The width up to which a page of the help shows its pictures. Larger ones are reduced, and enlarge at a
/// click.
inline constexpr int helpPictureWidth = 550;

/// A picture as a page shows it: reduced to its width, with all the dots that the display has there.
inline QImage helpPicture(const QByteArray& bytes, double dotsPerPixel) {
    QImage picture = QImage::fromData(bytes);
    if (picture.width() <= helpPictureWidth)
        return picture;
    const int width = std::min(picture.width(), int(helpPictureWidth * dotsPerPixel));
    picture = picture.scaledToWidth(width, Qt::SmoothTransformation);
    picture.setDevicePixelRatio(double(width) / helpPictureWidth);
    return picture;
}
