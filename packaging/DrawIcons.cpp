// Draws the program's mark into an icon theme, in the theme's sizes and as SVG, so that menu and window show
// the same mark.

#include "core/look/Appearance.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QPalette>
#include <QSvgGenerator>

#include <iostream>

namespace {

constexpr int svgSide = 256;

void draw(QPaintDevice& device, double side) {
    QPainter painter(&device);
    Appearance::drawMark(painter, QRectF(0, 0, side, side),
                         QApplication::palette().color(QPalette::Highlight), Qt::white);
}

/// The path of an icon in the theme, for one size; creates the folder.
QString place(const QString& theme, const QString& size, const QString& file) {
    const QString folder = theme + u'/' + size + QStringLiteral("/apps");
    QDir().mkpath(folder);
    return folder + u'/' + file;
}

bool drawPicture(const QString& theme, const QString& name, int side) {
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    draw(image, side);
    return image.save(place(theme, QStringLiteral("%1x%1").arg(side), name + QStringLiteral(".png")));
}

bool drawScalable(const QString& theme, const QString& name) {
    const QString path = place(theme, QStringLiteral("scalable"), name + QStringLiteral(".svg"));
    QSvgGenerator file;
    file.setFileName(path);
    file.setSize({svgSide, svgSide});
    file.setViewBox(QRect(0, 0, svgSide, svgSide));
    file.setTitle(QStringLiteral("Brennoval"));
    file.setDescription(QStringLiteral("A standing tank"));
    draw(file, svgSide);
    return QFile::exists(path);
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: brennoval-draw-icons FOLDER NAME\n";
        return 2;
    }
    const QString theme = QString::fromLocal8Bit(argv[1]);
    const QString name = QString::fromLocal8Bit(argv[2]);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    Appearance::apply(Appearance::Scheme::Light);
    bool drawn = drawScalable(theme, name);
    for (const int side : {16, 22, 24, 32, 48, 64, 128, 256})
        drawn = drawPicture(theme, name, side) && drawn;
    return drawn ? 0 : 1;
}
